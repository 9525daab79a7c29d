#pragma once

#include <string>

namespace kirolane::wire {

/// The SoundFont to use: `wanted`, or the first of the system's; "" if there is none.
std::string FindSoundFont(const std::string& wanted);

} // namespace kirolane::wire
