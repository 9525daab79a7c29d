#include "twin_test.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace kirolane::tests {

namespace {

std::string Stem(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

std::vector<std::string> Parts(std::string text, const std::string& separator) {
    std::vector<std::string> parts;
    for (std::size_t end = 0; !text.empty(); text.erase(0, end)) {
        end = std::min(text.find(separator), text.size());
        parts.push_back(text.substr(0, end));
        end += std::min(separator.size(), text.size() - end);
    }
    return parts;
}

} // namespace

void TwinTest::Script(const std::string& name, const headless::ScriptedMovie& movie) {
    for (const char* tail : {".mov", ".wav"})
        Media().Script(name + tail, movie);
}

Window& TwinTest::Form(bool sound) {
    return sound ? static_cast<Window&>(Sound()) : Console();
}

std::vector<std::string> TwinTest::Listed() {
    std::vector<std::string> stems;
    for (const std::string& name : Names(List()))
        stems.push_back(Stem(name));
    return stems;
}

TwinTest::Seen TwinTest::State(bool sound) {
    ExpectWhole();
    Window& form = Form(sound);
    const auto text = [&](const char* label) { return form.Control<StaticText>(label)->Caption(); };
    const auto player = form.Control<MoviePlayer>("QTM");
    const auto audience = sound ? player : Monitor().QTM();
    const auto both = [&](float (*read)(const Ref<MoviePlayer>&)) {
        const std::string own = Str(read(player));
        const std::string other = Str(read(audience));
        return own == other ? own : own + "/" + other;
    };
    const auto bar = form.Control<ProgressBar>("VolumeProgress");
    const bool muted = !bar->Enabled() && !form.Control<StaticText>("VolumeLabel")->Enabled();
    std::string list = Own<StaticText>("FileNumberLabel", sound)->Caption();
    for (const std::int32_t row : Marked(Own<Listbox>("StrGrid", sound)))
        list += " " + kMark + Str(row);
    return {
        {"file", Stem(text("FileLabel"))},
        {"mode", text("PlayModeLabel")},
        {"time", text(sound ? "PosTime" : "PosTIme")},
        {"max", text("MaxTime") + " " + Str(form.Control<Slider>("QTM_PosBar")->Maximum())},
        {"bar", Str(form.Control<Slider>("QTM_PosBar")->Value())},
        {"loop", Own<StaticText>("LoopLabel", sound)->Caption()},
        {"type", text("MediaType")},
        {"at",
         both([](const auto& p) { return static_cast<float>(std::round(p->Position() * 1000.0) / 1000.0); })},
        {"rate", Str(form.Control<Slider>("Rate")->Value()) + " " + text("RateText").substr(7) + " " +
                     both([](const auto& p) { return static_cast<float>(p->Rate()); })},
        {"vol", text("VolumeLabel").substr(9) + " " + Str(bar->Value()) + " " + Str(audience->Volume()) +
                    (muted ? " muted" : "")},
        {"list", list},
    };
}

void TwinTest::Act(const std::string& acts) {
    for (const std::string& act : Parts(acts, "; "))
        ActOnce(act);
}

void TwinTest::ActOnce(const std::string& act) {
    std::istringstream words(act);
    std::string word;
    words >> word;
    const auto number = [&] {
        double value = 0.0;
        words >> value;
        return value;
    };
    const auto whole = [&] { return static_cast<std::int32_t>(number()); };
    if (word == "open") {
        IsSound() ? OpenSound(whole()) : Open(whole());
    } else if (word == "select") {
        List()->ReportSelection(whole());
    } else if (word == "wait") {
        Advance(whole());
    } else if (word == "at") {
        Do([&] { Player()->SetPosition(number()); });
        if (!IsSound())
            Do([&] { Monitor().QTM()->SetPosition(number()); });
    } else if (word == "drag") {
        In<Slider>("QTM_PosBar")->ReportPressAndValue(3, 3, whole());
    } else if (word == "rate") {
        In<Slider>("Rate")->ReportValue(whole());
    } else if (word == "level") {
        Do([&] {
            (IsSound() ? Console().mVolume_Flag : Console().Volume_Flag) = whole();
            IsSound() ? Console().mVolumeSave_Func() : Console().VolumeSave_Func();
        });
    } else if (word == "point") {
        In<ProgressBar>("VolumeProgress")->ReportMouseMove(5, 5, whole());
    } else if (word == "list") {
        const std::string folder = "list" + std::to_string(++m_folders);
        while (words >> word)
            MakeFiles(folder, {word});
        Scan(MakeFiles(folder, {}));
    } else if (word == "button") {
        In<BevelButton>("QTM_PlayButton")->ReportClick();
    } else if (word == "monitor") {
        words >> word;
        Monitor().ReportMenuChosen((IsSound() ? "m" : "") + word);
    } else {
        Choose((IsSound() ? "m" : "") + word);
    }
}

void TwinTest::Walk(std::initializer_list<Step> steps) {
    const Seen other = State(!IsSound());
    Seen wanted = State();
    for (const Step& step : steps) {
        Act(step.act);
        for (const std::string& change : Parts(IsSound() ? step.ofSound : step.changes, ", ")) {
            const std::size_t name = std::min(change.find(' '), change.size());
            wanted[change.substr(0, name)] = name < change.size() ? change.substr(name + 1) : "";
        }
        const Seen seen = State();
        for (const auto& [name, text] : wanted)
            EXPECT_EQ(seen.count(name) == 1 ? seen.at(name) : "no such name", text)
                << name << " after " << step.act;
        wanted = seen;
    }
    EXPECT_EQ(State(!IsSound()), other) << "the other transport";
}

void TwinTest::Scan(const std::string& folder) {
    BeginScan(folder, IsSound());
    Settle();
}

} // namespace kirolane::tests
