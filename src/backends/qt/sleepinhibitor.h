#pragma once

#include <QObject>

#include <optional>

namespace kirolane::qt {

/// Keeps screen and screen saver awake while the audience has a window before it: through the desktop's
/// screen saver service where there is one, and on X11 through the server too.
class SleepInhibitor : public QObject {
public:
    SleepInhibitor() = default;
    ~SleepInhibitor() override;
    SleepInhibitor(const SleepInhibitor&) = delete;
    SleepInhibitor& operator=(const SleepInhibitor&) = delete;

    /// Never waits for the service.
    void Set(bool awake);

private:
    void AskService(bool awake);
    static void Release(uint cookie);

    bool m_awake = false;
    std::optional<uint> m_cookie; ///< the service's name for our request
};

} // namespace kirolane::qt
