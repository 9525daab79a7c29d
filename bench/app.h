#pragma once

#include "shell/start.h"

#include <functional>
#include <memory>
#include <string>

namespace kirolane {
class Mainform;
}

namespace kirolane::bench {

/// The whole program with its real back ends, shown offscreen on two displays of 1920 x 1080, with a home
/// folder of its own in memory. One a process.
class App {
public:
    /// The movie list shows `movieFolder` (a native path); the sound list stays empty.
    explicit App(const std::string& movieFolder);
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
    /// Waits for the scan of the movie list to end.
    void UntilScanned() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// Makes ready what every window program here needs: the offscreen platform with its two displays, described
/// by a file in `folder`.
void UseOffscreenDisplays(const std::string& folder);

} // namespace kirolane::bench
