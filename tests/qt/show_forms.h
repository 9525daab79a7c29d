#pragma once

#include "contract/window.h"
#include "logic/about/verform_controls.h"
#include "logic/display/monitorform_controls.h"
#include "logic/settings/settingform_controls.h"
#include "logic/shell/mainform_controls.h"
#include "logic/sound/musicform_controls.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Forms with the program's own tables of controls and none of its logic: what happens to them is written
/// down.
namespace kirolane::tests {

class LoggedForm : public Window {
public:
    LoggedForm(std::string_view name, const WindowDesign& design, std::span<const ControlDesign> controls)
        : Window(name, design), m_controls(controls) {}

    /// The events since the last call.
    std::vector<std::string> TakeLog() { return std::exchange(m_log, {}); }
    void Log(std::string entry) { m_log.push_back(std::move(entry)); }

    void Event_Close() override { Log("Close"); }
    void Event_Moved() override { Log("Moved"); }
    void Event_Activate() override { Log("Activate"); }
    void Event_Deactivate() override { Log("Deactivate"); }
    void Event_Restore() override { Log("Restore"); }
    void Event_ScreenChanged(std::int32_t width, std::int32_t height) override {
        Log("ScreenChanged " + std::to_string(width) + "x" + std::to_string(height));
    }

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(m_controls); }

    /// The program's menus; a command is logged by its item's name.
    void AddMenus();

private:
    std::span<const ControlDesign> m_controls;
    std::vector<std::string> m_log;
};

/// The console.
class ConsoleShow : public LoggedForm {
public:
    ConsoleShow() : LoggedForm("Mainform", kMainformDesign, design::kMainformControls) {}
    void Layout() override { AddMenus(); }
    void CreateControls() override;
};

/// The audience's window.
class MonitorShow : public LoggedForm {
public:
    MonitorShow() : LoggedForm("MonitorForm", kMonitorFormDesign, design::kMonitorFormControls) {}
    void Layout() override { AddMenus(); }
};

/// The palette.
class MusicShow : public LoggedForm {
public:
    MusicShow() : LoggedForm("MusicForm", kMusicFormDesign, design::kMusicFormControls) {}
};

/// The tool that stays above the console.
class SettingShow : public LoggedForm {
public:
    SettingShow() : LoggedForm("SettingForm", kSettingFormDesign, design::kSettingFormControls) {}
};

/// The document without a close box.
class AboutShow : public LoggedForm {
public:
    AboutShow() : LoggedForm("VerForm", kVerFormDesign, design::kVerFormControls) {}
};

} // namespace kirolane::tests
