#include "contract/numbers.h"
#include "contract/screen.h"
#include "logic/display/monitorform.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

namespace kirolane {

namespace {

struct Size {
    std::int32_t width;
    std::int32_t height;
};

/// The player is this much higher than what it fills; its lowest strip is never seen.
constexpr std::int32_t kStrip = MoviePlayer::kHiddenStrip;
constexpr std::int32_t kGapBelowConsole = 6;
constexpr Size kConsolePlayer = {320, 240 + kStrip};

/// A screen higher than `above` gives this size of the windowed monitor.
struct SizeRow {
    std::int32_t above;
    Size window;
};

// clang-format off
/// The windowed monitor at start, and its player at each open while dual display is off.
constexpr SizeRow kWindowed[] = {
    {1199, {800, 600}},
    {1023, {640, 480}},
    {  -1, {320, 240}},
};

/// The player at each open while dual display is on with a single screen. The first threshold differs from
/// the one above, so a player can be larger than the window that the start has made.
constexpr SizeRow kDualOnOneScreen[] = {
    {1024, {800, 600}},
    {1023, {640, 480}},
    {  -1, {320, 240}},
};
// clang-format on

template <std::size_t N> Size SizeFor(const SizeRow (&rows)[N], std::int32_t screenHeight) {
    for (const SizeRow& row : rows)
        if (screenHeight > row.above)
            return row.window;
    return rows[N - 1].window;
}

void Resize(const Ref<MoviePlayer>& player, Size size) {
    player->SetWidth(size.width);
    player->SetHeight(size.height);
}

void Cover(const Ref<MonitorForm>& monitor, const Screen& screen) {
    monitor->SetFullScreen(true);
    monitor->FillScreen(screen.Width(), screen.Height());
}

} // namespace

/// The console's picture gives the size from which the place of this one is reckoned, though the two differ a
/// little.
void MonitorForm::FillScreen(std::int32_t width, std::int32_t height) {
    const auto consolePicture = Instance<Mainform>()->DummyQTM();
    DummyBack()->SetTop(0);
    DummyBack()->SetLeft(0);
    DummyBack()->SetWidth(width + 1);
    DummyBack()->SetHeight(height + 1);
    DummyQTM()->SetTop(ToInteger(height / 2.0 - consolePicture->Height() / 2.0));
    DummyQTM()->SetLeft(ToInteger(width / 2.0 - consolePicture->Width() / 2.0));
    Resize(QTM(), {width, height + kStrip});
}

void Mainform::PlaceOnSecondScreen() {
    const auto monitor = Instance<MonitorForm>();
    const Screen screen(1);
    monitor->SetTop(screen.Top()); // before it goes full screen, so that it stands on that screen
    monitor->SetLeft(screen.Left());
    Cover(monitor, screen);
}

void Mainform::PlaceOnFirstScreen() {
    Cover(Instance<MonitorForm>(), Screen(0));
}

void Mainform::PlaceBelowConsole() {
    const auto monitor = Instance<MonitorForm>();
    const Size size = SizeFor(kWindowed, Screen(0).Height());
    monitor->SetWidth(size.width);
    monitor->SetHeight(size.height);
    monitor->DummyBack()->SetWidth(size.width);
    monitor->DummyBack()->SetHeight(size.height);
    Resize(monitor->QTM(), {size.width, size.height + kStrip});
    FollowConsole();
    monitor->DummyBack()->SetTop(0);
    monitor->DummyBack()->SetLeft(0);
    monitor->DummyQTM()->SetTop(ToInteger(monitor->Height() / 2.0 - DummyQTM()->Height() / 2.0));
    monitor->DummyQTM()->SetLeft(ToInteger(monitor->Width() / 2.0 - DummyQTM()->Width() / 2.0));
}

void Mainform::FollowConsole() {
    const auto monitor = Instance<MonitorForm>();
    monitor->SetTop(Top() + Height() + kGapBelowConsole);
    monitor->SetLeft(Left());
}

/// At each open of a movie. The settings are read afresh, so a save acts here before the next start; texts
/// other than "true" and "false" leave the monitor's player as it is.
void Mainform::SizePlayers() {
    Resize(QTM(), kConsolePlayer);
    const auto player = Instance<MonitorForm>()->QTM();
    const auto resize = [&](Size window) { Resize(player, {window.width, window.height + kStrip}); };
    if (Equals(Setting_Data(line::kDualDisplay), "true")) {
        if (ScreenCount() > 1)
            resize({Screen(1).Width(), Screen(1).Height()});
        else
            resize(SizeFor(kDualOnOneScreen, Screen(0).Height()));
    } else if (Equals(Setting_Data(line::kDualDisplay), "false")) {
        if (Equals(Setting_Data(line::kFullScreen), "true"))
            resize({Screen(0).Width(), Screen(0).Height()});
        else if (Equals(Setting_Data(line::kFullScreen), "false"))
            resize(SizeFor(kWindowed, Screen(0).Height()));
    }
}

} // namespace kirolane
