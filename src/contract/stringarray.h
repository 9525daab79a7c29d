#pragma once

#include "contract/exceptions.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kirolane {

/// An array of strings with a fixed upper bound: elements 0 to that bound, all empty at the start. An index
/// outside throws OutOfBoundsException.
class StringArray {
public:
    explicit StringArray(std::int32_t upperBound) : m_size(static_cast<std::size_t>(upperBound) + 1) {
        m_elements.reserve(m_size); // address space alone: memory comes with the elements
    }

    const std::string& operator()(std::int32_t index) const {
        static const std::string empty;
        const std::size_t i = Checked(index);
        return i < m_elements.size() ? m_elements[i] : empty;
    }
    void Set(std::int32_t index, std::string value) {
        const std::size_t i = Checked(index);
        if (i >= m_elements.size())
            m_elements.resize(i + 1);
        m_elements[i] = std::move(value);
    }

private:
    [[nodiscard]] std::size_t Checked(std::int32_t index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= m_size)
            throw OutOfBoundsException();
        return static_cast<std::size_t>(index);
    }

    std::size_t m_size;
    std::vector<std::string> m_elements; ///< up to the last that has been set
};

} // namespace kirolane
