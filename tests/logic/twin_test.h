#pragma once

#include "logic_test.h"

namespace kirolane::tests {

/// A test of what the movie's transport and list have in common with the sound's, run for each. Files are
/// named without their tails: of each there are a movie and a sound.
class TwinTest : public LogicTest, public ::testing::WithParamInterface<bool> {
protected:
    /// What a person sees of a transport, by name:
    /// file, mode, time and max (its read-outs), bar (the position slider), loop and type (their labels);
    /// at: the position in seconds, behind a slash the audience's where it is another;
    /// rate: the slider, its text, the player's, behind a slash the audience's where it is another;
    /// vol: the label, the bar, what is heard, "muted" where both are disabled;
    /// list: the counter below it, and the numbers of the marked rows, as "2 / 3 ●1".
    using Seen = std::map<std::string, std::string>;
    /// What is done, and what that changes: "mode 再生中, at 0". All else must stay as it was. The sound's
    /// changes where they are others.
    struct Step {
        std::string act;
        std::string changes;
        std::string ofSound = changes;
    };

    static bool IsSound() { return GetParam(); }
    template <class T> static T Either(T movie, T sound) { return IsSound() ? sound : movie; }

    void Script(const std::string& name, const headless::ScriptedMovie& movie);

    static Window& Form(bool sound = IsSound());
    template <class T> static Ref<T> In(std::string_view control) { return Form().Control<T>(control); }
    static Ref<MoviePlayer> Player() { return In<MoviePlayer>("QTM"); }
    /// A control of the console that has a twin, whose name begins with "m".
    template <class T> static Ref<T> Own(const std::string& name, bool sound = IsSound()) {
        return Console().Control<T>((sound ? "m" : "") + name);
    }
    static Ref<Listbox> List() { return Own<Listbox>("StrGrid"); }
    static std::vector<std::string> Listed();
    static std::int32_t& TheListOpenedLast() { return Console().GetListIndex_Flag; }

    static Seen State(bool sound = IsSound());
    static std::string Shown(const std::string& name) { return State().at(name); }

    /// Acts, with "; " between them: "open 2" (a row), "select 2", "wait 1500" (ms), "at 5.5 6.5" (puts the
    /// console's player, and the audience's, or the sound's), "drag 20" (the position slider), "rate 9"
    /// (its slider), "level 55" (the volume), "point 66" (over its bar), "list a b" (scans a new folder of
    /// such files), "button", or a command, with "monitor" before it or not.
    void Act(const std::string& acts);
    void Walk(std::initializer_list<Step> steps);

    /// Lists the folder, and waits for the end of it.
    void Scan(const std::string& folder);

private:
    void ActOnce(const std::string& act);
    int m_folders = 0;
};

inline std::string TwinName(const ::testing::TestParamInfo<bool>& info) {
    return info.param ? "Sound" : "Movie";
}

} // namespace kirolane::tests
