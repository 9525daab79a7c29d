#pragma once

#include <QObject>

#include <optional>

class QDBusServiceWatcher;

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
    /// The service comes later than we do, or begins anew in mid-show and knows nothing of us.
    void FollowService();
    static void Release(uint cookie);

    bool m_awake = false;
    QDBusServiceWatcher* m_service = nullptr; ///< made at the first request
    std::optional<uint> m_cookie;             ///< the service's name for our request
};

} // namespace kirolane::qt
