#include "twin_test.h"

#include <cmath>
#include <sstream>

namespace kirolane::tests {

namespace {
constexpr std::size_t kTail = 4; ///< characters of ".mov" and ".wav"
} // namespace

void TwinTest::StartWithFiles(std::initializer_list<std::string> names) {
    const std::string media = MakeFiles("media", names);
    WriteSettings({{22, media}, {33, media}});
    Start();
}

void TwinTest::Script(const std::string& name, const headless::ScriptedMovie& movie) {
    for (const char* tail : {".mov", ".wav"})
        Media().Script(name + tail, movie);
}

Window& TwinTest::Form() {
    return IsSound() ? static_cast<Window&>(Sound()) : Console();
}

std::vector<std::string> TwinTest::Listed() {
    std::vector<std::string> stems;
    for (const std::string& name : Names(List()))
        stems.push_back(name.substr(0, name.size() - kTail));
    return stems;
}

std::string TwinTest::Counter() {
    std::string text = Own<StaticText>("FileNumberLabel")->Caption();
    for (const std::int32_t row : Marked(List()))
        text += " " + kMark + Str(row);
    return text;
}

std::string TwinTest::State() {
    ExpectWhole();
    const std::string file = Text("FileLabel");
    if (Player()->Movie().IsNil())
        return "closed" + file;
    const auto seconds = [](const Ref<MoviePlayer>& player) {
        return Str(static_cast<float>(std::round(player->Position() * 1000.0) / 1000.0));
    };
    std::string at = seconds(Player());
    if (!IsSound() && seconds(Monitor().QTM()) != at)
        at += "/" + seconds(Monitor().QTM());
    return Text("PlayModeLabel") + " " + file.substr(0, file.size() - kTail) + " " + at + " bar " +
           Str(In<Slider>("QTM_PosBar")->Value());
}

void TwinTest::Act(std::string_view act) {
    std::istringstream words{std::string(act)};
    std::string word;
    words >> word;
    double number = 0.0;
    if (word == "open") {
        words >> number;
        IsSound() ? OpenSound(static_cast<std::int32_t>(number)) : Open(static_cast<std::int32_t>(number));
    } else if (word == "wait") {
        words >> number;
        Advance(static_cast<std::int64_t>(number));
    } else if (word == "at") {
        words >> number;
        Do([&] { Player()->SetPosition(number); });
        if (words >> number; !IsSound())
            Do([&] { Monitor().QTM()->SetPosition(number); });
    } else if (word == "drag") {
        words >> number;
        In<Slider>("QTM_PosBar")->ReportPressAndValue(3, 3, static_cast<std::int32_t>(number));
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
    for (const Step& step : steps) {
        Act(step.act);
        EXPECT_EQ(State(), IsSound() ? step.sound : step.state) << step.act;
    }
}

void TwinTest::Scan(const std::string& folder) {
    BeginScan(folder, IsSound());
    Settle();
}

} // namespace kirolane::tests
