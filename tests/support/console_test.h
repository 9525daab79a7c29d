#pragma once

#include "contract/window.h"
#include "support/contract_test.h"

#include <string>
#include <utility>
#include <vector>

/// Small forms for tests of the contract: one with a control of each kind that has rules, and three of the
/// roles that the rules about windows tell apart. Each keeps the names of its events.
namespace kirolane::tests {

using Names = std::vector<std::string>;

inline constexpr WindowDesign kConsoleDesign{
    .title = "Console", .role = WindowRole::Console, .width = 400, .height = 300};
inline constexpr WindowDesign kAudienceDesign{.title = "Audience", .role = WindowRole::Audience};
inline constexpr WindowDesign kToolDesign{.title = "Tool", .visible = false};
inline constexpr WindowDesign kPaletteDesign{
    .title = "Palette", .role = WindowRole::Palette, .visible = false};

inline constexpr ControlDesign kConsoleControls[] = {
    {.name = "Grid", .kind = ControlKind::Listbox, .columnWidths = "18,348,50"},
    {.name = "Push", .kind = ControlKind::PushButton},
    {.name = "A", .kind = ControlKind::MoviePlayer},
    {.name = "B", .kind = ControlKind::MoviePlayer},
    {.name = "Clock", .kind = ControlKind::Timer, .period = 1000, .mode = 2},
    {.name = "First", .kind = ControlKind::Thread},
    {.name = "Second", .kind = ControlKind::Thread},
};

class TestForm : public Window {
public:
    using Window::Window;

    /// The events since the last call.
    Names TakeLog() { return std::exchange(m_log, {}); }
    void Log(std::string entry) { m_log.push_back(std::move(entry)); }

    void Event_Open() override { Log("Open"); }
    void Event_Close() override { Log("Close"); }
    void Event_Moved() override { Log("Moved"); }
    void Event_Activate() override { Log("Activate"); }
    void Event_Deactivate() override { Log("Deactivate"); }
    void Event_Restore() override { Log("Restore"); }

private:
    Names m_log;
};

class ConsoleForm : public TestForm {
public:
    ConsoleForm() : TestForm("Console", kConsoleDesign) {}

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(kConsoleControls); }
};

template <const WindowDesign& design> class BareForm : public TestForm {
public:
    BareForm() : TestForm(design.title, design) {}
};
using AudienceForm = BareForm<kAudienceDesign>;
using ToolForm = BareForm<kToolDesign>;
using PaletteForm = BareForm<kPaletteDesign>;

/// With the console of the tests on a small desktop, and nothing under way.
class ConsoleTest : public ContractTest {
protected:
    ConsoleTest() {
        Windows().UseDesktop();
        m_form = StartWith<ConsoleForm>();
        Settle();
        m_form->TakeLog();
    }
    ConsoleForm& Form() { return *m_form; }
    template <class T> T& Get(const char* name) { return *m_form->Control<T>(name); }

private:
    Ref<ConsoleForm> m_form;
};

} // namespace kirolane::tests
