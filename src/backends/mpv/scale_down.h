#pragma once

#include "contract/backend/framesource.h"

#include <cstdint>

namespace kirolane::mpv {

/// Whether a picture of one size is more than twice that of the other in both directions. Up to there
/// whoever paints it smooths it as well.
bool IsFarSmaller(std::int32_t width, std::int32_t height, const FrameView& picture);

/// Draws a far larger picture into a smaller one: each pixel is the mean of the four about its middle. Costs
/// a third of what a painter takes for the same. `to` is aligned as 32-bit numbers are, like the picture.
void ScaleDown(const FrameView& picture, std::uint8_t* to, const FrameView& layout);

/// The same between any two sizes: each pixel is the mean of the four nearest.
void Stretch(const FrameView& picture, std::uint8_t* to, const FrameView& layout);

} // namespace kirolane::mpv
