#include "platform/linux/qt/qt_canvas.h"

#include "platform/linux/qt/qt_values.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

#include <cmath>

namespace trovel {

QtCanvas::QtCanvas(QPainter& painter, double height, double scale, QColor const* tint)
    : painter_(painter), tint_(tint) {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter_.scale(scale, scale);
    // From here on y grows upward, except within a text.
    painter_.translate(0, height);
    painter_.scale(1, -1);
}

CompositingOperation QtCanvas::compositingOperation() const {
    return CompositingOperation::sourceOver;
}

QColor QtCanvas::colorOf(Color const& color) const {
    if (tint_ == nullptr) return qtColor(color);
    auto tinted = *tint_;
    tinted.setAlphaF(tinted.alphaF() * static_cast<float>(color.alpha));
    return tinted;
}

void QtCanvas::fillRect(Rect rect, Color color, CompositingOperation operation) {
    bool const isCopy = operation == CompositingOperation::copy;
    painter_.setCompositionMode(isCopy ? QPainter::CompositionMode_Source
                                       : QPainter::CompositionMode_SourceOver);
    painter_.fillRect(qtRect(rect), colorOf(color));
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QtCanvas::strokeRect(Rect rect, double lineWidth, Color color) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(colorOf(color), lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter_.drawRect(qtRect(rect));
}

void QtCanvas::fillRoundedRect(Rect rect, double radiusX, double radiusY, Color color) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colorOf(color));
    painter_.drawRoundedRect(qtRect(rect), radiusX, radiusY);
}

void QtCanvas::strokeLines(std::span<std::vector<Point> const> lines, double lineWidth,
                           Color color) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(colorOf(color), lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    for (auto const& line : lines) {
        QPolygonF points;
        for (auto const& point : line) points << QPointF(point.x, point.y);
        painter_.drawPolyline(points);
    }
}

void QtCanvas::fillOval(Rect rect, Color color) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colorOf(color));
    painter_.drawEllipse(qtRect(rect));
}

void QtCanvas::drawText(std::string_view text, Point origin, TextAttributes const& attributes) {
    auto const font = qtFont(attributes.font);
    painter_.save();
    painter_.translate(origin.x, origin.y);
    painter_.scale(1, -1);
    painter_.setFont(font);
    painter_.setPen(colorOf(attributes.color));
    painter_.drawText(QPointF(0, -QFontMetricsF(font).descent()), qtString(text));
    painter_.restore();
}

Size QtCanvas::sizeOfText(std::string_view text, Font font) const {
    QFontMetricsF const metrics(qtFont(font));
    return {metrics.horizontalAdvance(qtString(text)), metrics.height()};
}

QPixmap pixmapOf(DrawnImage const& image, double scale, QColor const& tint) {
    // A whole number of pixels may come out a hair larger.
    constexpr double kTolerance = 1e-6;
    QPixmap pixmap(static_cast<int>(std::ceil(image.size.width * scale - kTolerance)),
                   static_cast<int>(std::ceil(image.size.height * scale - kTolerance)));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QtCanvas canvas(painter, image.size.height, scale, image.isTemplate ? &tint : nullptr);
    bool const isDrawn = image.draw(canvas, {0, 0, image.size.width, image.size.height});
    painter.end();
    return isDrawn ? pixmap : QPixmap();
}

} // namespace trovel
