#pragma once

#include "contract/control_design.h"
#include "contract/window_design.h"
#include "logic/shell/spoken_names.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Short forms for the rows of a form's control table: name, parent, page and rectangle stand first in every
/// row, what is particular to the class follows.
namespace kirolane::design {

inline constexpr std::string_view kWindow; ///< no parent: the window itself
inline constexpr TextAlign kLeft = TextAlign::Left;
inline constexpr TextAlign kCentre = TextAlign::Centre;
inline constexpr TextAlign kRight = TextAlign::Right;

constexpr ControlDesign Row(ControlKind kind, std::string_view name, std::string_view parent,
                            std::int32_t page, Rect rect, std::string_view text = {}) {
    ControlDesign row;
    row.name = name;
    row.kind = kind;
    row.parent = parent;
    row.page = page;
    row.rect = rect;
    row.text = text;
    row.spoken = SpokenNameOf(name);
    return row;
}

constexpr ControlDesign Label(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                              std::string_view text, TextAlign align) {
    ControlDesign row = Row(ControlKind::StaticText, name, parent, page, rect, text);
    row.textAlign = align;
    return row;
}

constexpr ControlDesign Group(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                              std::string_view caption) {
    ControlDesign row = Row(ControlKind::GroupBox, name, parent, page, rect, caption);
    row.textFont = "System";
    row.textSize = 0;
    return row;
}

constexpr ControlDesign Player(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                               bool border) {
    ControlDesign row = Row(ControlKind::MoviePlayer, name, parent, page, rect);
    row.visible = false;
    row.border = border;
    return row;
}

/// A slider from 0 to `maximum`.
constexpr ControlDesign SliderRow(std::string_view name, std::string_view parent, std::int32_t page,
                                  Rect rect, std::int32_t maximum, std::int32_t value, std::int32_t pageStep,
                                  bool liveScroll, bool enabled) {
    ControlDesign row = Row(ControlKind::Slider, name, parent, page, rect);
    row.maximum = maximum;
    row.value = value;
    row.pageStep = pageStep;
    row.liveScroll = liveScroll;
    row.enabled = enabled;
    return row;
}

constexpr ControlDesign Bar(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                            std::int32_t maximum, std::int32_t value) {
    ControlDesign row = Row(ControlKind::ProgressBar, name, parent, page, rect);
    row.maximum = maximum;
    row.value = value;
    return row;
}

constexpr ControlDesign Bevel(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                              std::string_view caption, std::int32_t bevel, std::int32_t textSize,
                              bool enabled) {
    ControlDesign row = Row(ControlKind::BevelButton, name, parent, page, rect, caption);
    row.bevel = bevel;
    row.textFont = "osaka";
    row.textSize = textSize;
    row.enabled = enabled;
    return row;
}

constexpr ControlDesign List(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                             std::string_view columnWidths) {
    ControlDesign row = Row(ControlKind::Listbox, name, parent, page, rect);
    row.columnWidths = columnWidths;
    return row;
}

/// Tabs are joined by line breaks.
constexpr ControlDesign Tabs(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                             std::string_view tabs) {
    ControlDesign row = Row(ControlKind::TabPanel, name, parent, page, rect, tabs);
    row.textFont = "System";
    row.textSize = 0;
    return row;
}

constexpr ControlDesign Picture(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                                std::string_view picture) {
    ControlDesign row = Row(ControlKind::Canvas, name, parent, page, rect);
    row.picture = picture;
    return row;
}

constexpr ControlDesign Clock(std::string_view name, std::int32_t period, std::int32_t mode) {
    ControlDesign row = Row(ControlKind::Timer, name, kWindow, 0, {});
    row.period = period;
    row.mode = mode;
    return row;
}

constexpr ControlDesign Worker(std::string_view name) {
    return Row(ControlKind::Thread, name, kWindow, 0, {});
}

constexpr ControlDesign Quiet(ControlDesign row) {
    row.quiet = true;
    return row;
}

constexpr ControlDesign Hidden(ControlDesign row) {
    row.visible = false;
    return row;
}

constexpr ControlDesign Coloured(Color colour, ControlDesign row) {
    row.textColor = colour;
    return row;
}

constexpr ControlDesign InFont(std::string_view font, std::int32_t size, ControlDesign row) {
    row.textFont = font;
    row.textSize = size;
    return row;
}

/// True if no two rows have one name and every parent is a row above its children.
template <std::size_t N> constexpr bool IsWellFormed(const ControlDesign (&rows)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        bool parentFound = rows[i].parent.empty();
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[j].name == rows[i].name)
                return false;
            parentFound = parentFound || rows[j].name == rows[i].parent;
        }
        if (!parentFound)
            return false;
    }
    return true;
}

} // namespace kirolane::design
