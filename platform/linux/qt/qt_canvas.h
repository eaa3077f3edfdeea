#pragma once

#include "platform/ui/canvas.h"
#include "platform/ui/drawn_image.h"

class QColor;
class QPainter;
class QPixmap;

namespace trovel {

/// A canvas on a QPainter. Main thread only.
class QtCanvas final : public Canvas {
public:
    /// The surface is `height` points high and has `scale` of the painter's units to a point. With
    /// a tint only the alpha of the colours drawn in counts.
    QtCanvas(QPainter& painter, double height, double scale, QColor const* tint);
    ~QtCanvas() = default;

    [[nodiscard]] CompositingOperation compositingOperation() const override;
    void fillRect(Rect rect, Color color, CompositingOperation operation) override;
    void strokeRect(Rect rect, double lineWidth, Color color) override;
    void fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) override;
    void strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                     Color color) override;
    void fillOval(Rect rect, Color color) override;
    void drawText(std::string_view text, Point origin, TextAttributes const& attributes) override;
    [[nodiscard]] Size sizeOfText(std::string_view text, Font font) const override;

private:
    [[nodiscard]] QColor colorOf(Color const& color) const;

    QPainter& painter_;
    QColor const* tint_;
};

/// The image at `scale` pixels to a point; a template in `tint`. Null when it could not be drawn.
[[nodiscard]] QPixmap pixmapOf(DrawnImage const& image, double scale, QColor const& tint);

} // namespace trovel
