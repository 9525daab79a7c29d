#pragma once

#include "platform/exceptions.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kirolane {

/// An array of strings with a fixed upper bound: elements 0 to that bound, all empty at the start. An index
/// outside throws OutOfBoundsException.
class StringArray {
public:
    explicit StringArray(std::int32_t upperBound) : m_elements(static_cast<std::size_t>(upperBound) + 1) {}

    const std::string& operator()(std::int32_t index) const { return m_elements[Checked(index)]; }
    void Set(std::int32_t index, std::string value) { m_elements[Checked(index)] = std::move(value); }

private:
    [[nodiscard]] std::size_t Checked(std::int32_t index) const {
        const auto i = static_cast<std::size_t>(index);
        if (index < 0 || i >= m_elements.size())
            throw OutOfBoundsException();
        return i;
    }

    std::vector<std::string> m_elements;
};

} // namespace kirolane
