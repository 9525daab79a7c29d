#pragma once

#include "contract/window.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Small forms for tests of the contract: one with a control of each kind that has rules, and three of the
/// roles that the rules about windows tell apart. Each keeps the names of its events.
namespace kirolane::tests {

inline constexpr WindowDesign kConsoleDesign{
    .title = "Console", .role = WindowRole::Console, .width = 400, .height = 300};
inline constexpr WindowDesign kAudienceDesign{
    .title = "Audience", .role = WindowRole::Audience, .width = 320, .height = 240};
inline constexpr WindowDesign kToolDesign{.title = "Tool", .width = 200, .height = 100, .visible = false};
inline constexpr WindowDesign kPaletteDesign{
    .title = "Palette", .role = WindowRole::Palette, .width = 200, .height = 100, .visible = false};

inline constexpr ControlDesign kConsoleControls[] = {
    {.name = "Tabs", .kind = ControlKind::TabPanel, .text = "One\nTwo"},
    {.name = "Label", .kind = ControlKind::StaticText, .parent = "Tabs", .page = 1, .text = "text"},
    {.name = "Grid", .kind = ControlKind::Listbox, .parent = "Tabs", .page = 1, .columnWidths = "18,348,50"},
    {.name = "Bar",
     .kind = ControlKind::Slider,
     .minimum = 2,
     .maximum = 10,
     .value = 5,
     .liveScroll = false},
    {.name = "Progress", .kind = ControlKind::ProgressBar, .maximum = 100},
    {.name = "Box", .kind = ControlKind::CheckBox, .text = "check"},
    {.name = "Choice", .kind = ControlKind::PopupMenu},
    {.name = "Push", .kind = ControlKind::PushButton, .text = "push"},
    {.name = "Bevel", .kind = ControlKind::BevelButton, .text = "bevel", .enabled = false},
    {.name = "Field", .kind = ControlKind::EditField},
    {.name = "Arrows", .kind = ControlKind::UpDownArrows},
    {.name = "A", .kind = ControlKind::MoviePlayer},
    {.name = "B", .kind = ControlKind::MoviePlayer},
    {.name = "Clock", .kind = ControlKind::Timer, .period = 1000, .mode = 2},
    {.name = "Off", .kind = ControlKind::Timer, .period = 10, .mode = 0},
    {.name = "First", .kind = ControlKind::Thread},
    {.name = "Second", .kind = ControlKind::Thread},
};

class TestForm : public Window {
public:
    using Window::Window;

    /// The events since the last call.
    std::vector<std::string> TakeLog() { return std::exchange(m_log, {}); }
    void Log(std::string entry) { m_log.push_back(std::move(entry)); }

    void Event_Open() override { Log("Open"); }
    void Event_Close() override { Log("Close"); }
    void Event_Moved() override { Log("Moved"); }
    void Event_Activate() override { Log("Activate"); }
    void Event_Deactivate() override { Log("Deactivate"); }
    void Event_Restore() override { Log("Restore"); }

private:
    std::vector<std::string> m_log;
};

/// The console of the tests, to be made first.
class ConsoleForm : public TestForm {
public:
    ConsoleForm() : TestForm("Console", kConsoleDesign) {}

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(kConsoleControls); }
};

class AudienceForm : public TestForm {
public:
    AudienceForm() : TestForm("Audience", kAudienceDesign) {}
};

class ToolForm : public TestForm {
public:
    ToolForm() : TestForm("Tool", kToolDesign) {}
};

class PaletteForm : public TestForm {
public:
    PaletteForm() : TestForm("Palette", kPaletteDesign) {}
};

} // namespace kirolane::tests
