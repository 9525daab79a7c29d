#pragma once

#include "logic_test.h"

namespace kirolane::tests {

/// A test of what the movie's transport and list have in common with the sound's, run for each. Files are
/// named without their tails: of each there are a movie and a sound.
class TwinTest : public LogicTest, public ::testing::WithParamInterface<bool> {
protected:
    /// What is done, and the State behind it; the sound's where it is another.
    struct Step {
        std::string_view act;
        std::string state;
        std::string sound = state;
    };

    static bool IsSound() { return GetParam(); }
    template <class T> static T Either(T movie, T sound) { return IsSound() ? sound : movie; }

    /// Starts with a folder of such files in both lists.
    void StartWithFiles(std::initializer_list<std::string> names);
    void Script(const std::string& name, const headless::ScriptedMovie& movie);

    static Window& Form();
    template <class T> static Ref<T> In(std::string_view control) { return Form().Control<T>(control); }
    static std::string Text(std::string_view label) { return In<StaticText>(label)->Caption(); }
    static Ref<MoviePlayer> Player() { return In<MoviePlayer>("QTM"); }
    /// A control of the console that has a twin, whose name begins with "m".
    template <class T> static Ref<T> Own(const std::string& name) {
        return Console().Control<T>((IsSound() ? "m" : "") + name);
    }
    static Ref<Listbox> List() { return Own<Listbox>("StrGrid"); }
    static std::vector<std::string> Listed();
    static std::int32_t Count() { return Either(Console().File_Count, Console().mFile_Count); }
    /// The counter below the list, and the numbers of the marked rows: "2 / 3 ●1".
    static std::string Counter();
    /// As "再生中 a 5.7 bar 5", or "closed"; behind a slash the audience's position where it is another.
    static std::string State();

    /// "open 2" (a row), "wait 1500" (ms), "at 5.5 6.5" (puts the console's player, and the audience's, or
    /// the sound's), "drag 20" (the position slider), "button", or a command, with "monitor" before it or
    /// not.
    void Act(std::string_view act);
    void Walk(std::initializer_list<Step> steps);

    /// Lists the folder, and waits for the end of it.
    void Scan(const std::string& folder);
};

inline std::string TwinName(const ::testing::TestParamInfo<bool>& info) {
    return info.param ? "Sound" : "Movie";
}

} // namespace kirolane::tests
