#include "platform/linux/qt/appearance_linux.h"

#include "platform/linux/qt/program_icon.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QStyle>

namespace trovel {

namespace {

constexpr QColor kAccent(0x35, 0x84, 0xe4);

QPalette darkPalette() {
    QColor const window(0x2d, 0x2d, 0x2d);
    QColor const base(0x1e, 0x1e, 0x1e);
    QColor const text(0xf2, 0xf2, 0xf2);
    QColor const disabledText(0x8c, 0x8c, 0x8c);
    QPalette palette(QColor(0x3c, 0x3c, 0x3c), window);
    for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabledText);
    }
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::ToolTipBase, base);
    return palette;
}

/// In the sizes of title bars and task switchers.
QIcon windowIcon() {
    QIcon icon;
    for (int const size : {16, 32, 64}) icon.addPixmap(programIcon(size));
    return icon;
}

} // namespace

QPalette appearancePalette(bool isDark) {
    auto palette = isDark ? darkPalette() : QApplication::style()->standardPalette();
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::Link, kAccent);
    return palette;
}

void followAppearance(DesktopLook const& look) {
    // Qt keeps what it derives from an icon or a palette: each new one, if an equal one, costs.
    if (QApplication::windowIcon().isNull()) QApplication::setWindowIcon(windowIcon());
    auto const palette = appearancePalette(look.isDark);
    if (palette != QApplication::palette()) QApplication::setPalette(palette);
    QIcon::setThemeName(QString::fromStdString(look.iconTheme));
}

} // namespace trovel
