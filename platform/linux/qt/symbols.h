#pragma once

#include "platform/font.h"

#include <QRectF>

#include <string_view>

class QColor;
class QPainter;

namespace trovel {

/// Whether there is a drawing of the system symbol of that name.
[[nodiscard]] bool hasSymbol(std::string_view name);

/// Draws the symbol into the largest square in the middle of `box`, in one colour; its lines are
/// as heavy as letters of `weight`. Nothing when there is no such symbol.
void drawSymbol(QPainter& painter, std::string_view name, QRectF const& box, Font::Weight weight,
                QColor const& color);

} // namespace trovel
