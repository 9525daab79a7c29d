#pragma once

#include "contract/backend/framesource.h"

#include <QImage>
#include <QPainter>

/// How pictures look, whoever puts them on the screen. Any thread.
namespace kirolane::qt {

/// The picture where it lies.
inline QImage ImageOf(const FrameView& frame) {
    return {frame.pixels, frame.width, frame.height, frame.stride, QImage::Format_RGB32};
}

/// One of another size than its place.
inline void PaintStretched(QPainter& painter, const QImage& image, const QRect& place) {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image);
}

} // namespace kirolane::qt
