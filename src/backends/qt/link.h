#pragma once

#include <memory>

namespace kirolane::qt {

/// A widget's way to the contract object that it shows. The object may go while the widget still handles the
/// event that ended it; the peer cuts the link then. Copies share the cut.
template <class T> class Link {
public:
    explicit Link(T& target) : m_target(std::make_shared<T*>(&target)) {}

    /// Null once cut.
    [[nodiscard]] T* Get() const { return *m_target; }
    template <class U> [[nodiscard]] U* As() const { return static_cast<U*>(*m_target); }
    void Cut() { *m_target = nullptr; }

private:
    std::shared_ptr<T*> m_target;
};

} // namespace kirolane::qt
