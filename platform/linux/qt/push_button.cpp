#include "platform/linux/qt/push_button.h"

#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/view_painter.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QStyleOptionButton>

#include <utility>

namespace trovel {

namespace {

/// A title in which an ampersand is no mark of a mnemonic.
QString literalTitle(std::string const& title) {
    return qtString(title).replace(u'&', QStringLiteral("&&"));
}

} // namespace

PushButton::PushButton(QWidget* parent) : QPushButton(parent) {
    // Keys are the window's: it knows which of them press a button.
    setFocusPolicy(Qt::NoFocus);
    setAutoDefault(false);
}

void PushButton::mirror(Button const& button, LayerStyle const& layer) {
    auto const title = literalTitle(button.title());
    if (title != text()) setText(title);
    setEnabled(button.isEnabled());
    if (std::exchange(look_, button.look()) != button.look()) update();
    if (look_.font) setFont(qtFont(*look_.font));
    setDefault(look_.keyEquivalent == "\r");
    if (std::exchange(layer_, layer) != layer) update();
}

void PushButton::paintEvent(QPaintEvent*) {
    if (!look_.isBordered) {
        paintOnLayer();
        return;
    }
    QPainter painter(this);
    painter.setOpacity(layer_.opacity);
    paintBehind(painter, QRectF(rect()), layer_);
    QStyleOptionButton option;
    initStyleOption(&option);
    // The style keeps what it draws under the palette's number, which each widget has one of its
    // own of; with the program's the next button finds it again.
    auto const group = option.palette.currentColorGroup();
    option.palette = QGuiApplication::palette();
    option.palette.setCurrentColorGroup(group);
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
}

void PushButton::paintOnLayer() {
    // How much a layer is lit under the pointer and darkened while it is pressed.
    constexpr int kHoverAlpha = 22;
    constexpr int kPressedAlpha = 45;
    constexpr float kDisabledTitle = 0.5F;
    QPainter painter(this);
    painter.setOpacity(layer_.opacity);
    QRectF const box(rect());
    paintBehind(painter, box, layer_);
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDown() ? QColor(0, 0, 0, kPressedAlpha)
                                  : QColor(255, 255, 255, kHoverAlpha));
        painter.drawRoundedRect(box, layer_.cornerRadius, layer_.cornerRadius);
    }
    auto color =
        look_.contentTint ? qtColor(*look_.contentTint) : palette().color(QPalette::ButtonText);
    if (!isEnabled()) color.setAlphaF(color.alphaF() * kDisabledTitle);
    painter.setPen(color);
    painter.setFont(font());
    painter.drawText(box, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

void PushButton::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    update();
}

void PushButton::leaveEvent(QEvent* event) {
    QPushButton::leaveEvent(event);
    update();
}

} // namespace trovel
