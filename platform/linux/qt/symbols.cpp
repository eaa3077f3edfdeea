#include "platform/linux/qt/symbols.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cmath>

namespace trovel {

namespace {

// All symbols are drawn on a grid of 24 by 24, y downward, with round pens.
constexpr double kGrid = 24;
constexpr double kMiddle = kGrid / 2;

double lineWidth(Font::Weight weight) {
    switch (weight) {
    case Font::Weight::light: return 1.4;
    case Font::Weight::regular: return 1.75;
    case Font::Weight::medium: return 2;
    case Font::Weight::semibold: return 2.3;
    case Font::Weight::bold: return 2.6;
    }
    return 0;
}

/// Draws the parts of one symbol: lines, filled shapes, and holes in what was drawn before.
class Pen {
public:
    Pen(QPainter& painter, double width) : painter_(painter), width_(width) {
        painter_.setRenderHint(QPainter::Antialiasing);
    }

    void stroke(QPainterPath const& path, double heavier = 1) {
        painter_.strokePath(path, pen(width_ * heavier));
    }
    void line(QPointF const& from, QPointF const& to, double heavier = 1) {
        QPainterPath path(from);
        path.lineTo(to);
        stroke(path, heavier);
    }
    void fill(QPainterPath const& path) { painter_.fillPath(path, Qt::black); }
    void dot(QPointF const& center, double radius) {
        QPainterPath path;
        path.addEllipse(center, radius, radius);
        fill(path);
    }
    void dashed(QPainterPath const& path, QList<qreal> const& pattern) {
        auto dashes = pen(width_);
        dashes.setCapStyle(Qt::FlatCap);
        dashes.setDashPattern(pattern);
        painter_.strokePath(path, dashes);
    }

    /// What is drawn until the end of `draw` is taken away instead.
    template <class Draw>
    void cut(Draw const& draw) {
        painter_.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        draw();
        painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }

private:
    static QPen pen(double width) {
        return {Qt::black, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
    }

    QPainter& painter_;
    double width_;
};

QPainterPath circle(QPointF const& center, double radius) {
    QPainterPath path;
    path.addEllipse(center, radius, radius);
    return path;
}

QPainterPath roundedBox(QRectF const& box, double radius) {
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return path;
}

/// A star of four points with hollow sides.
QPainterPath star(QPointF const& center, double radius) {
    double const waist = radius * 0.14;
    QPainterPath path(center + QPointF(0, -radius));
    path.quadTo(center + QPointF(waist, -waist), center + QPointF(radius, 0));
    path.quadTo(center + QPointF(waist, waist), center + QPointF(0, radius));
    path.quadTo(center + QPointF(-waist, waist), center + QPointF(-radius, 0));
    path.quadTo(center + QPointF(-waist, -waist), center + QPointF(0, -radius));
    path.closeSubpath();
    return path;
}

void drawBrainHeadProfile(Pen& pen) {
    QPainterPath head(QPointF(8.6, 22));
    head.lineTo(8.6, 18.6);
    head.cubicTo(5.2, 17, 3.2, 14.2, 3.2, 10.6);
    head.cubicTo(3.2, 5.6, 7, 2, 11.8, 2);
    head.cubicTo(16.4, 2, 19.6, 5, 20, 9.4);
    head.lineTo(21.5, 12.6);
    head.quadTo(21.8, 13.6, 20.8, 13.9);
    head.lineTo(19.8, 14.2);
    head.lineTo(19.8, 16.6);
    head.quadTo(19.8, 18.8, 17.6, 18.8);
    head.lineTo(15.4, 18.8);
    head.lineTo(15.4, 22);
    pen.stroke(head);
    for (auto const& lobe : {QPointF(8.7, 9.8), QPointF(10.6, 7.4), QPointF(13.6, 7.6),
                             QPointF(15, 10.2), QPointF(12.4, 11.4), QPointF(9.8, 11.6)}) {
        pen.dot(lobe, 2.3);
    }
    QPainterPath stem(QPointF(11.8, 12));
    stem.lineTo(11.8, 15.4);
    pen.stroke(stem);
    QPainterPath fold(QPointF(11.6, 6.6));
    fold.cubicTo(11.2, 8.6, 13, 9, 11.9, 11.6);
    pen.cut([&] { pen.stroke(fold, 0.5); });
}

void drawBubbleLeftFill(Pen& pen) {
    auto bubble = roundedBox(QRectF(2, 3, 20, 14.5), 6.5);
    QPainterPath tail(QPointF(5.5, 15));
    tail.lineTo(5.2, 20.2);
    tail.quadTo(5.3, 21.4, 6.4, 20.8);
    tail.lineTo(12.5, 16.5);
    tail.closeSubpath();
    pen.fill(bubble.united(tail));
}

void drawSparkles(Pen& pen) {
    pen.fill(star({9.6, 13.4}, 8.6));
    pen.fill(star({18.8, 5.4}, 4.4));
    pen.fill(star({19, 19.4}, 2.9));
}

void drawMagnifyingGlass(Pen& pen) {
    pen.stroke(circle({10.2, 10.2}, 7), 1.1);
    pen.line({15.4, 15.4}, {21, 21}, 1.3);
}

void drawAppFill(Pen& pen) {
    pen.fill(roundedBox(QRectF(2.5, 2.5, 19, 19), 5));
}

void drawCpu(Pen& pen) {
    pen.stroke(roundedBox(QRectF(5.5, 5.5, 13, 13), 2.5));
    pen.fill(roundedBox(QRectF(9.2, 9.2, 5.6, 5.6), 1));
    for (double const at : {9.0, 12.0, 15.0}) {
        pen.line({at, 2}, {at, 3.4}, 0.85);
        pen.line({at, 20.6}, {at, 22}, 0.85);
        pen.line({2, at}, {3.4, at}, 0.85);
        pen.line({20.6, at}, {22, at}, 0.85);
    }
}

void drawSafari(Pen& pen) {
    pen.stroke(circle({kMiddle, kMiddle}, 9.7));
    QPainterPath needle(QPointF(17.6, 6.4));
    needle.lineTo(13.9, 13.9);
    needle.lineTo(6.4, 17.6);
    needle.lineTo(10.1, 10.1);
    needle.closeSubpath();
    pen.fill(needle);
    pen.cut([&] { pen.dot({kMiddle, kMiddle}, 1.4); });
}

void drawGlobe(Pen& pen) {
    pen.stroke(circle({kMiddle, kMiddle}, 9.7));
    QPainterPath meridian;
    meridian.addEllipse(QPointF(kMiddle, kMiddle), 4.3, 9.7);
    pen.stroke(meridian, 0.8);
    pen.line({2.3, kMiddle}, {21.7, kMiddle}, 0.8);
    pen.line({kMiddle, 2.3}, {kMiddle, 21.7}, 0.8);
}

/// A square whose sides go on around its corners in a loop each.
void drawCommand(Pen& pen) {
    constexpr double kLow = 8.6;
    constexpr double kHigh = kGrid - kLow;
    constexpr double kLoop = 6; // across
    constexpr double kThreeQuarters = 270;
    QPainterPath path(QPointF(kLow, kHigh));
    path.lineTo(kLow, kLow);
    path.moveTo(kHigh, kLow);
    path.lineTo(kHigh, kHigh);
    path.moveTo(kLow, kLow);
    path.lineTo(kHigh, kLow);
    path.moveTo(kLow, kHigh);
    path.lineTo(kHigh, kHigh);
    pen.stroke(path);
    struct Loop {
        QPointF corner;
        double start; // degrees, counterclockwise from three o'clock
    };
    for (auto const& [corner, start] : {Loop{{kLow, kLow}, 0}, Loop{{kHigh, kLow}, 270},
                                        Loop{{kHigh, kHigh}, 180}, Loop{{kLow, kHigh}, 90}}) {
        bool const isLeft = corner.x() < kMiddle;
        bool const isUpper = corner.y() < kMiddle;
        QRectF const box(isLeft ? corner.x() - kLoop : corner.x(),
                         isUpper ? corner.y() - kLoop : corner.y(), kLoop, kLoop);
        QPainterPath loop;
        loop.arcMoveTo(box, start);
        loop.arcTo(box, start, kThreeQuarters);
        pen.stroke(loop);
    }
}

void drawCrop(Pen& pen) {
    QPainterPath path(QPointF(6.5, 1.8));
    path.lineTo(6.5, 15.5);
    path.quadTo(6.5, 17.5, 8.5, 17.5);
    path.lineTo(22.2, 17.5);
    path.moveTo(1.8, 6.5);
    path.lineTo(15.5, 6.5);
    path.quadTo(17.5, 6.5, 17.5, 8.5);
    path.lineTo(17.5, 22.2);
    pen.stroke(path);
}

void drawPaperplaneFill(Pen& pen) {
    QPainterPath plane(QPointF(21.4, 2.6));
    plane.lineTo(14.6, 21.2);
    plane.lineTo(10.6, 13.4);
    plane.lineTo(2.8, 9.4);
    plane.closeSubpath();
    pen.fill(plane);
    pen.stroke(plane, 0.6);
    pen.cut([&] { pen.line({21.2, 2.8}, {10.6, 13.4}, 0.75); });
}

void drawRectangleDashedBadgeRecord(Pen& pen) {
    pen.dashed(roundedBox(QRectF(2, 3.5, 20, 15), 3.5), {1.7, 1.35});
    QPointF const badge(18.6, 17.8);
    pen.cut([&] { pen.dot(badge, 5.6); });
    pen.stroke(circle(badge, 3.9), 0.8);
    pen.dot(badge, 2.1);
}

/// A hand whose raised finger reads dots.
void drawHandPointUpBraille(Pen& pen) {
    QPainterPath hand(QPointF(7.2, 14.2));
    hand.lineTo(7.2, 4);
    hand.cubicTo(7.2, 1.4, 10.8, 1.4, 10.8, 4);
    hand.lineTo(10.8, 10.6);
    hand.lineTo(15.6, 11.4);
    hand.cubicTo(17.8, 11.8, 18.8, 13, 18.6, 15);
    hand.lineTo(18.1, 19);
    hand.cubicTo(17.8, 21, 16.6, 22.2, 14.6, 22.2);
    hand.lineTo(10.4, 22.2);
    hand.cubicTo(9, 22.2, 8, 21.7, 7.2, 20.6);
    hand.lineTo(3.4, 15.4);
    hand.cubicTo(2.6, 13.6, 4.6, 12.4, 6, 13.4);
    hand.closeSubpath();
    pen.stroke(hand, 0.9);
    for (auto const& dot : {QPointF(15.2, 2.8), QPointF(19.8, 2.8), QPointF(15.2, 7.2)}) {
        pen.dot(dot, 1.45);
    }
    pen.stroke(circle({19.8, 7.2}, 1.1), 0.45);
}

struct Symbol {
    std::string_view name;
    void (*draw)(Pen& pen);
};

constexpr std::array kSymbols{
    Symbol{"brain.head.profile", drawBrainHeadProfile},
    Symbol{"bubble.left.fill", drawBubbleLeftFill},
    Symbol{"sparkles", drawSparkles},
    Symbol{"magnifyingglass", drawMagnifyingGlass},
    Symbol{"app.fill", drawAppFill},
    Symbol{"cpu", drawCpu},
    Symbol{"safari", drawSafari},
    Symbol{"globe", drawGlobe},
    Symbol{"command", drawCommand},
    Symbol{"crop", drawCrop},
    Symbol{"paperplane.fill", drawPaperplaneFill},
    Symbol{"rectangle.dashed.badge.record", drawRectangleDashedBadgeRecord},
    Symbol{"hand.point.up.braille", drawHandPointUpBraille},
};

Symbol const* find(std::string_view name) {
    auto const* const found = std::ranges::find(kSymbols, name, &Symbol::name);
    return found == kSymbols.end() ? nullptr : found;
}

/// The square of whole pixels in the middle of `box`: a symbol is drawn nowhere between two.
QRect pixelSquareIn(QRectF const& box) {
    auto const side = static_cast<int>(std::lround(std::min(box.width(), box.height())));
    auto const corner = box.center() - QPointF(side, side) / 2;
    return {static_cast<int>(std::lround(corner.x())), static_cast<int>(std::lround(corner.y())),
            side, side};
}

} // namespace

bool hasSymbol(std::string_view name) {
    return find(name) != nullptr;
}

void drawSymbol(QPainter& painter, std::string_view name, QRectF const& box, Font::Weight weight,
                QColor const& color) {
    auto const* const symbol = find(name);
    auto const toDevice = painter.deviceTransform();
    auto const square = pixelSquareIn(toDevice.mapRect(box));
    if (symbol == nullptr || square.isEmpty()) return;
    // On a sheet of its own: holes in it let through what is behind it.
    QPixmap sheet(square.size());
    sheet.fill(Qt::transparent);
    QPainter onSheet(&sheet);
    onSheet.scale(square.width() / kGrid, square.height() / kGrid);
    Pen pen(onSheet, lineWidth(weight));
    symbol->draw(pen);
    onSheet.resetTransform();
    onSheet.setCompositionMode(QPainter::CompositionMode_SourceIn);
    onSheet.fillRect(sheet.rect(), color);
    onSheet.end();
    painter.drawPixmap(toDevice.inverted().mapRect(QRectF(square)), sheet, QRectF(sheet.rect()));
}

} // namespace trovel
