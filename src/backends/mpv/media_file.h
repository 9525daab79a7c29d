#pragma once

#include "wire/medium.h"

#include <memory>

namespace kirolane::mpv {

using wire::AbsolutePath;
using wire::MediaFile;
using wire::Medium;
/// Open as long as anyone holds it.
using MediumPointer = std::shared_ptr<const Medium>;

} // namespace kirolane::mpv
