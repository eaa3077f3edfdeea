#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/geometry.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace trovel {

/// How a fill meets what is already there.
enum class CompositingOperation : std::uint8_t { sourceOver, copy };

/// How a text is drawn.
struct TextAttributes {
    Font font;
    Color color;

    friend bool operator==(TextAttributes const&, TextAttributes const&) = default;
};

/// A surface to draw on, for the length of one draw call. Coordinates are those of the view being
/// drawn: points, origin at its lower left, y upward. Main thread only.
class Canvas {
public:
    Canvas(Canvas const&) = delete;
    Canvas& operator=(Canvas const&) = delete;

    /// The operation that is in force when drawing begins; source-over when the surface has no say.
    [[nodiscard]] virtual CompositingOperation compositingOperation() const = 0;

    virtual void fillRect(Rect rect, Color color, CompositingOperation operation) = 0;

    /// Strokes along the rectangle's edge, half of the line on either side of it.
    virtual void strokeRect(Rect rect, double lineWidth, Color color) = 0;

    virtual void fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) = 0;

    /// Strokes each of `lines`, a run of connected points, with round caps.
    virtual void strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                             Color color) = 0;

    virtual void fillOval(Rect rect, Color color) = 0;

    /// Draws one line of UTF-8 text with the lower-left corner of its box at `origin`.
    virtual void drawText(std::string_view text, Point origin,
                          TextAttributes const& attributes) = 0;

    /// The size of that text's box.
    [[nodiscard]] virtual Size sizeOfText(std::string_view text, Font font) const = 0;

protected:
    Canvas() = default;
    ~Canvas() = default;
};

} // namespace trovel
