#include "platform/linux/qt/window_widget.h"

#include "platform/linux/qt/window_peer_linux.h"
#include "platform/linux/system/key_positions.h"
#include "platform/ui/events.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>

#include <utility>

namespace trovel {

namespace {

/// The flag that a modifier key sets, by its role; nothing for other keys.
std::optional<EventFlags> flagOfModifierKey(int key) {
    switch (key) {
    case Qt::Key_Shift: return kFlagShift;
    case Qt::Key_Control: return kFlagCommand;
    case Qt::Key_Alt: return kFlagOption;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R: return kFlagControl;
    case Qt::Key_CapsLock: return kFlagCapsLock;
    case Qt::Key_AltGr:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R: return EventFlags{0};
    default: return std::nullopt;
    }
}

EventFlags flagsOf(Qt::KeyboardModifiers modifiers) {
    EventFlags flags = 0;
    if (modifiers & Qt::ShiftModifier) flags |= kFlagShift;
    if (modifiers & Qt::ControlModifier) flags |= kFlagCommand;
    if (modifiers & Qt::AltModifier) flags |= kFlagOption;
    if (modifiers & Qt::MetaModifier) flags |= kFlagControl;
    return flags;
}

/// What the key types on its own.
std::string charactersOf(QKeyEvent const& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) return "\r";
    constexpr int kFirstSpecialKey = 0x01000000;
    if (event.key() <= 0 || event.key() >= kFirstSpecialKey) return {};
    auto const character = static_cast<char32_t>(event.key());
    return QString::fromUcs4(&character, 1).toLower().toStdString();
}

} // namespace

WindowWidget::WindowWidget(WindowPeerLinux& peer)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      peer_(&peer) {
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WindowWidget::detach() {
    peer_ = nullptr;
    hide();
    deleteLater();
}

Point WindowWidget::pointOf(QPointF const& position) const {
    // The middle of the pixel, so that its row belongs to the view that covers it.
    constexpr double kHalf = 0.5;
    auto const half = kHalf / devicePixelRatioF();
    return {position.x() + half, height() - position.y() - half};
}

bool WindowWidget::event(QEvent* event) {
    if (peer_ == nullptr) return QWidget::event(event);
    auto const type = event->type();
    if (type == QEvent::HoverEnter || type == QEvent::HoverMove) {
        peer_->pointerDidMove(pointOf(static_cast<QHoverEvent*>(event)->position()));
        return true;
    }
    if (type == QEvent::HoverLeave) {
        peer_->pointerDidMove(std::nullopt);
        return true;
    }
    if (type == QEvent::WindowActivate) peer_->keyStateDidChange(true);
    if (type == QEvent::WindowDeactivate || type == QEvent::Hide) peer_->keyStateDidChange(false);
    return QWidget::event(event);
}

void WindowWidget::paintEvent(QPaintEvent* event) {
    if (peer_ != nullptr) peer_->paint(event->rect());
}

void WindowWidget::mousePressEvent(QMouseEvent* event) {
    if (peer_ == nullptr) return;
    auto const point = pointOf(event->position());
    if (event->button() == Qt::LeftButton) {
        move_.reset();
        auto const pointer = event->globalPosition().toPoint();
        if (peer_->isMovedFrom(point)) move_ = Move{pointer, pos() - pointer};
        peer_->receive(MouseEvent{MouseEvent::Kind::leftDown, point, flagsOf(event->modifiers())});
    } else if (event->button() == Qt::RightButton) {
        peer_->receive(MouseEvent{MouseEvent::Kind::rightDown, point, flagsOf(event->modifiers())});
    }
}

void WindowWidget::mouseMoveEvent(QMouseEvent* event) {
    if (peer_ == nullptr || (event->buttons() & Qt::LeftButton) == 0) return;
    if (move_) {
        auto const pointer = event->globalPosition().toPoint();
        auto const way = (pointer - move_->start).manhattanLength();
        move_->hasBegun = move_->hasBegun || way >= QApplication::startDragDistance();
        // Not by way of the window manager: it would go on moving after a button that was let go
        // before it heard of the wish.
        if (move_->hasBegun) move(pointer + move_->corner);
        return;
    }
    peer_->receive(MouseEvent{MouseEvent::Kind::leftDragged, pointOf(event->position()),
                              flagsOf(event->modifiers())});
}

void WindowWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (peer_ == nullptr || event->button() != Qt::LeftButton) return;
    move_.reset();
    peer_->receive(MouseEvent{MouseEvent::Kind::leftUp, pointOf(event->position()),
                              flagsOf(event->modifiers())});
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
    handleKey(*event, true);
}

void WindowWidget::keyReleaseEvent(QKeyEvent* event) {
    handleKey(*event, false);
}

void WindowWidget::handleKey(QKeyEvent const& event, bool isPress) {
    auto const keyCode = virtualKeyForEvdevCode(event.nativeScanCode() - kKeycodeOffset);
    if (peer_ == nullptr || !keyCode) return;
    KeyEvent key{KeyEvent::Kind::keyDown, *keyCode, peer_->flagsOf(event.nativeModifiers()), {}};
    if (auto const flag = flagOfModifierKey(event.key())) {
        // The state that comes with an event is that from before it.
        key.kind = KeyEvent::Kind::flagsChanged;
        key.modifierFlags = isPress ? key.modifierFlags | *flag : key.modifierFlags & ~*flag;
    } else if (!isPress) {
        return;
    } else {
        key.characters = charactersOf(event);
    }
    peer_->receive(key);
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    // The window closes itself if it may; Qt has no part in it.
    event->ignore();
    if (peer_ != nullptr) peer_->receiveCloseRequest();
}

} // namespace trovel
