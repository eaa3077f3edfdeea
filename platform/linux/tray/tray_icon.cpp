#include "platform/linux/tray/tray_icon.h"

#include "platform/linux/qt/qt_canvas.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <array>
#include <cmath>
#include <numbers>

namespace trovel {

namespace {

constexpr std::array kSizes{16, 18, 20, 22, 24, 28, 32, 36, 40, 44, 48, 64};
constexpr double kEdgeWidth = 0.9; // points

/// The shape in a light colour, over itself in a dark one, moved in all directions.
QPixmap edged(DrawnImage const& image, double scale) {
    auto const dark = pixmapOf(image, scale, QColor(0x20, 0x20, 0x20));
    auto const light = pixmapOf(image, scale, Qt::white);
    if (dark.isNull() || light.isNull()) return {};
    QPixmap result(dark.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    constexpr int kDirections = 8;
    for (int i = 0; i < kDirections; ++i) {
        double const angle = 2 * std::numbers::pi * i / kDirections;
        painter.drawPixmap(QPointF(std::cos(angle), std::sin(angle)) * kEdgeWidth * scale, dark);
    }
    painter.drawPixmap(0, 0, light);
    return result;
}

} // namespace

QIcon trayIcon(DrawnImage const& image) {
    QIcon icon;
    for (int const size : kSizes) {
        double const scale = size / image.size.height;
        auto const pixmap =
            image.isTemplate ? edged(image, scale) : pixmapOf(image, scale, Qt::black);
        if (!pixmap.isNull()) icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace trovel
