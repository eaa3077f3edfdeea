#include "platform/linux/qt/program_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace trovel {

namespace {

// The same picture as packaging/linux/trovel.svg, in its units.
constexpr double kUnits = 64;
constexpr double kCornerRadius = 14;
constexpr double kBracketOffset = 14; // of its corner from the icon's
constexpr double kBracketLength = 11;
constexpr double kBracketRadius = 4;
constexpr double kLineWidth = 4;
constexpr double kDotRadius = 5;

/// The bracket of the top left corner.
QPainterPath bracket() {
    double const near = kBracketOffset;
    double const far = kBracketOffset + kBracketLength;
    QPainterPath path(QPointF(near, far));
    path.lineTo(near, near + kBracketRadius);
    path.quadTo(near, near, near + kBracketRadius, near);
    path.lineTo(far, near);
    return path;
}

} // namespace

QPixmap programIcon(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / kUnits, size / kUnits);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1c, 0x6e, 0xf2));
    painter.drawRoundedRect(QRectF(0, 0, kUnits, kUnits), kCornerRadius, kCornerRadius);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(kUnits / 2, kUnits / 2), kDotRadius, kDotRadius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, kLineWidth, Qt::SolidLine, Qt::RoundCap));
    for (int corner = 0; corner < 4; ++corner) {
        painter.drawPath(bracket());
        painter.translate(kUnits, 0);
        painter.rotate(90);
    }
    return pixmap;
}

} // namespace trovel
