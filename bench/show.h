#pragma once

#include "app.h"
#include "camera.h"
#include "hands.h"

#include <functional>
#include <string>

namespace kirolane::bench {

/// A show on the desktop's two displays: the program, a camera before it and hands at its keys.
class Show {
public:
    enum class Look : std::uint8_t { Stage, StageAndPreview };

    /// Comes back when the list is filled, the keyboard is the console's and the curtain is up.
    explicit Show(const std::string& movieFolder, Look look = Look::Stage, const std::string& sound = "null");

    [[nodiscard]] const App& Program() const { return m_app; }
    [[nodiscard]] Camera& Eye() { return *m_camera; }
    [[nodiscard]] Hands& Keys() { return m_hands; }

    /// Turns the event loop until the newest shot is as wanted. Throws after 60 s.
    void Until(const std::function<bool(const Shot&)>& wanted) const;
    /// Until the audience sees that clip, at that frame or later.
    void UntilSeen(int clip, int frame) const;
    void DoubleClickRow(int row);

private:
    App m_app;
    Hands m_hands;
    std::unique_ptr<Camera> m_camera;
};

} // namespace kirolane::bench
