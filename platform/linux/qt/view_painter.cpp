#include "platform/linux/qt/view_painter.h"

#include "platform/linux/qt/program_icon.h"
#include "platform/linux/qt/qt_canvas.h"
#include "platform/linux/qt/qt_image.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/symbols.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/overloaded.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovel {

namespace {

/// How wide a symbol of a point size is drawn.
constexpr double kSymbolWidthPerPoint = 1.25;

QPainterPath roundedBox(QRectF const& box, double radius) {
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return path;
}

/// A blurred shadow, as rings that add up from the outside to the inside.
void paintShadow(QPainter& painter, QRectF const& box, double cornerRadius,
                 LayerShadow const& shadow) {
    constexpr int kRings = 16;
    auto color = qtColor(shadow.color);
    auto const whole = color.alphaF() * static_cast<float>(shadow.opacity);
    if (whole <= 0) return;
    auto const moved = box.translated(shadow.offset.width, -shadow.offset.height);
    painter.setPen(Qt::NoPen);
    for (int ring = 0; ring < kRings; ++ring) {
        // From a whole radius outside to a whole radius inside; a ring deepens what is there to
        // the value of a smooth step.
        double const outer = 1 - 2.0 * ring / kRings;
        double const part = (ring + 1.0) / kRings;
        double const former = static_cast<double>(ring) / kRings;
        auto const depth = [](double at) { return at * at * (3 - 2 * at); };
        auto const before = depth(former) * whole;
        auto const added = (depth(part) * whole - before) / (1 - before);
        auto const reach = outer * shadow.radius;
        auto const ringBox = moved.adjusted(-reach, -reach, reach, reach);
        if (ringBox.isEmpty()) return;
        color.setAlphaF(static_cast<float>(added));
        painter.setBrush(color);
        auto const radius = std::max(cornerRadius + reach, 0.0);
        painter.drawRoundedRect(ringBox, radius, radius);
    }
}

void paintBorder(QPainter& painter, QRectF const& box, LayerStyle const& style) {
    if (style.borderWidth <= 0) return;
    auto const half = style.borderWidth / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(qtColor(style.borderColor), style.borderWidth));
    auto const radius = std::max(style.cornerRadius - half, 0.0);
    painter.drawRoundedRect(box.adjusted(half, half, -half, -half), radius, radius);
}

/// The lines that a text fills a width with, at most so many.
QStringList wrapped(QString const& text, QFontMetricsF const& metrics, double width, int maximum) {
    QStringList lines;
    for (auto const& paragraph : text.split(u'\n')) {
        QString line;
        for (auto const& word : paragraph.split(u' ')) {
            auto const longer = line.isEmpty() ? word : line + u' ' + word;
            bool const isLast = lines.size() + 1 >= maximum;
            if (!line.isEmpty() && !isLast && metrics.horizontalAdvance(longer) > width) {
                lines << line;
                line = word;
            } else {
                line = longer;
            }
        }
        if (lines.size() == maximum) {
            lines.back() += u' ' + line;
        } else {
            lines << line;
        }
    }
    return lines;
}

} // namespace

double reachOf(LayerStyle const& style) {
    if (!style.shadow) return 0;
    auto const& [color, offset, radius, opacity] = *style.shadow;
    return radius + std::max(std::abs(offset.width), std::abs(offset.height));
}

void paintBehind(QPainter& painter, QRectF const& box, LayerStyle const& style) {
    painter.setRenderHint(QPainter::Antialiasing);
    if (style.shadow) paintShadow(painter, box, style.cornerRadius, *style.shadow);
    auto const background = qtColor(style.backgroundColor);
    if (background.alpha() == 0) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(box, style.cornerRadius, style.cornerRadius);
}

ViewPainter::ViewPainter(QPainter& painter, QStyle const& style, QRectF const& exposed,
                         ShownLayer shownLayer)
    : painter_(painter), style_(style), exposed_(exposed), shownLayer_(std::move(shownLayer)) {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

bool ViewPainter::isExposed(QRectF const& box) const {
    return painter_.transform().mapRect(box).intersects(exposed_);
}

void ViewPainter::paint(View const& view, double superHeight) {
    if (view.isHidden() || view.kind() == ViewKind::button) return;
    auto const& frame = view.frame();
    auto const layer = shownLayer_(view);
    QRectF const box(0, 0, frame.width, frame.height);
    painter_.save();
    painter_.translate(frame.x, superHeight - frame.maxY());
    painter_.setOpacity(painter_.opacity() * layer.opacity);
    auto const reach = reachOf(layer);
    bool const isSeen = isExposed(box.adjusted(-reach, -reach, reach, reach));
    if (isSeen) paintBehind(painter_, box, layer);
    painter_.save();
    if (layer.masksToBounds) {
        painter_.setClipPath(roundedBox(box, layer.cornerRadius), Qt::IntersectClip);
    }
    if (isSeen) paintContents(view, box);
    for (auto const& subview : view.subviews()) paint(*subview, frame.height);
    painter_.restore();
    if (isSeen) paintBorder(painter_, box, layer);
    painter_.restore();
}

void ViewPainter::paintContents(View const& view, QRectF const& box) {
    switch (view.kind()) {
    case ViewKind::container: return;
    case ViewKind::button: return;
    case ViewKind::label: paintLabel(static_cast<Label const&>(view), box); return;
    case ViewKind::imageView: paintIcon(static_cast<ImageView const&>(view), box); return;
    case ViewKind::separator:
        painter_.fillRect(box, qtColor(Color::system(Color::Name::separator)));
        return;
    case ViewKind::visualEffect: paintMaterial(box); return;
    case ViewKind::canvas: paintCanvas(static_cast<CanvasView const&>(view)); return;
    }
}

void ViewPainter::paintLabel(Label const& label, QRectF const& box) {
    auto const& look = label.look();
    if (look.isBezeled) {
        QStyleOptionFrame bezel;
        bezel.rect = box.toAlignedRect();
        bezel.palette = QGuiApplication::palette();
        bezel.lineWidth = style_.pixelMetric(QStyle::PM_DefaultFrameWidth);
        bezel.state = QStyle::State_Enabled | QStyle::State_Sunken;
        style_.drawPrimitive(QStyle::PE_PanelLineEdit, &bezel, &painter_);
    }
    // The fonts of desktops differ in width: a line that is somewhat too long for its frame is
    // drawn narrower before it is cut.
    constexpr double kNarrowest = 0.8;
    constexpr double kBezelMargin = 8;
    auto const margin = look.isBezeled ? kBezelMargin : 0;
    auto const room = box.width() - 2 * margin;
    auto const font = qtFont(look.font);
    QFontMetricsF const metrics(font);
    auto const lines =
        wrapped(qtString(label.text()), metrics, room, std::max(look.maximumLines, 1));
    painter_.setFont(font);
    painter_.setPen(qtColor(look.textColor));
    auto const height = metrics.height();
    double top = (box.height() - height * static_cast<double>(lines.size())) / 2;
    for (auto const& line : lines) {
        auto const natural = metrics.horizontalAdvance(line);
        auto const stretch = std::clamp(room / std::max(natural, 1.0), kNarrowest, 1.0);
        auto const shown = metrics.elidedText(line, Qt::ElideRight, room / stretch + 1);
        auto const width = metrics.horizontalAdvance(shown) * stretch;
        bool const isCentred = look.alignment == TextAlignment::center;
        painter_.save();
        painter_.translate(margin + (isCentred ? (room - width) / 2 : 0), top + metrics.ascent());
        painter_.scale(stretch, 1);
        painter_.drawText(QPointF(0, 0), shown);
        painter_.restore();
        top += height;
    }
}

void ViewPainter::paintIcon(ImageView const& view, QRectF const& box) {
    if (!view.icon()) return;
    auto const tint = qtColor(view.contentTint().value_or(Color::system(Color::Name::label)));
    bool const isMadeLarger = view.scaling() == ImageScaling::proportionallyUpOrDown;
    auto const paintInside = [&](QSizeF const& size, QImage const& image) {
        auto const fitted = size.scaled(box.size(), Qt::KeepAspectRatio);
        QRectF target(QPointF(), isMadeLarger ? fitted : fitted.boundedTo(size));
        target.moveCenter(box.center());
        painter_.setRenderHint(QPainter::SmoothPixmapTransform);
        painter_.drawImage(target, image);
    };
    std::visit(
        Overloaded{[&](SymbolIcon const& symbol) {
                       auto const shown = symbol.configuration.value_or(SymbolConfiguration{
                           box.height() / kSymbolWidthPerPoint, Font::Weight::regular});
                       auto const room = std::min(box.width(), box.height());
                       auto const width = shown.pointSize * kSymbolWidthPerPoint;
                       auto const side = isMadeLarger ? room : std::min(width, room);
                       QRectF target(0, 0, side, side);
                       target.moveCenter(box.center());
                       drawSymbol(painter_, symbol.name, target, shown.weight, tint);
                   },
                   [&](OwnApplicationIcon const&) {
                       auto const side = std::min(box.width(), box.height());
                       auto const pixels = std::ceil(side * painter_.deviceTransform().m11());
                       paintInside({side, side}, programIcon(static_cast<int>(pixels)).toImage());
                   },
                   [&](ApplicationIcon const& icon) {
                       auto const* const pixels =
                           dynamic_cast<QtImage const*>(icon.image.pixels.get());
                       if (pixels == nullptr) return;
                       paintInside({icon.image.size.width, icon.image.size.height},
                                   pixels->image());
                   },
                   [&](DrawnImage const& image) {
                       auto const scale = painter_.deviceTransform().m11();
                       paintInside({image.size.width, image.size.height},
                                   pixmapOf(image, scale, tint).toImage());
                   }},
        *view.icon());
}

/// The desktop's window colour with a breath of light from above.
void ViewPainter::paintMaterial(QRectF const& box) {
    constexpr int kLighter = 104;
    constexpr int kDarker = 104;
    auto const window = QGuiApplication::palette().color(QPalette::Window);
    QLinearGradient light(box.topLeft(), box.bottomLeft());
    light.setColorAt(0, window.lighter(kLighter));
    light.setColorAt(1, window.darker(kDarker));
    painter_.fillRect(box, light);
}

void ViewPainter::paintCanvas(CanvasView const& view) {
    painter_.save();
    painter_.setClipRect(QRectF(0, 0, view.frame().width, view.frame().height), Qt::IntersectClip);
    QtCanvas canvas(painter_, view.frame().height, 1, nullptr);
    view.draw(canvas);
    painter_.restore();
}

} // namespace trovel
