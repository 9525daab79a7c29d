#pragma once

#include "displays.h"

#include "logic/shell/start.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

namespace kirolane {
class Mainform;
class MonitorForm;
} // namespace kirolane

namespace kirolane::bench {

/// The whole program with its real back ends and a home folder of its own in memory; silent unless `sound`
/// names one of libmpv's outputs. One a process.
class App {
public:
    /// The movie list shows `movieFolder` (a native path); the sound list stays empty.
    explicit App(const std::string& movieFolder, Displays displays = Displays::Offscreen,
                 const std::string& sound = "null");
    ~App();
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    [[nodiscard]] Mainform& Console() const;
    /// Runs a handler as the loop would.
    void Deliver(const std::function<void()>& handler) const;
    /// Turns the event loop until `done`, which is asked after each turn. Throws after 60 s.
    void Until(const std::function<bool()>& done) const;
    /// Turns the event loop for that long.
    void For(int milliseconds) const;
    /// Any thread: has Until ask again.
    void Wake() const;
    /// Waits for the scan of the movie list to end.
    void UntilScanned() const;

    /// The audience's window.
    [[nodiscard]] MonitorForm& Monitor() const;
    /// Selects and opens that row as a double click does. Throws if it does not open.
    void OpenRow(std::int32_t row) const;
    void Close() const;
    /// Lets what is open play for 5 s after its first; milliseconds of processor time that they took, here,
    /// in the engines and in that process, such as the display's server.
    double CostOfPlaying(pid_t server = 0) const;

    /// Has the sound list show that folder (a native path) and waits for its scan to end.
    void ListSounds(const std::string& folder) const;
    /// As OpenRow and Close, for the sounds.
    void OpenSound(std::int32_t row) const;
    void CloseSound() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kirolane::bench
