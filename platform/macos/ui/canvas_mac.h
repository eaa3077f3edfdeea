#pragma once

#include "platform/ui/canvas.h"

namespace trovel {

/// Draws with the current graphics context.
class CanvasMac final : public Canvas {
public:
    CanvasMac() = default;
    ~CanvasMac() = default;

    [[nodiscard]] CompositingOperation compositingOperation() const override;
    void fillRect(Rect rect, Color color, CompositingOperation operation) override;
    void strokeRect(Rect rect, double lineWidth, Color color) override;
    void fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) override;
    void strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                     Color color) override;
    void fillOval(Rect rect, Color color) override;
    void drawText(std::string_view text, Point origin, TextAttributes const& attributes) override;
    [[nodiscard]] Size sizeOfText(std::string_view text, Font font) const override;
};

} // namespace trovel
