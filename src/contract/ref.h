#pragma once

#include "contract/exceptions.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <utility>

namespace kirolane {

/// A counted reference to an object, or nil. Any use of the object through a nil reference throws
/// NilObjectException; the reference itself may be copied, compared and tested freely.
template <class T> class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    explicit Ref(std::shared_ptr<T> object) : m_object(std::move(object)) {}

    template <class U>
    requires std::convertible_to<U*, T*> Ref(const Ref<U>& other) : m_object(other.Shared()) {}

    [[nodiscard]] bool IsNil() const { return m_object == nullptr; }

    T* operator->() const { return &**this; }
    T& operator*() const {
        if (m_object == nullptr)
            throw NilObjectException();
        return *m_object;
    }

    /// The counted pointer behind the reference, null for nil; for the contract's own code.
    [[nodiscard]] const std::shared_ptr<T>& Shared() const { return m_object; }

    friend bool operator==(const Ref& a, const Ref& b) { return a.m_object == b.m_object; }

private:
    std::shared_ptr<T> m_object;
};

} // namespace kirolane
