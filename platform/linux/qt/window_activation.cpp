#include "platform/linux/qt/window_activation.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace trovel {

WindowActivation::WindowActivation(QWidget& window, WindowActivator activate)
    : window_(window), activate_(std::move(activate)) {
    window_.installEventFilter(this);
}

void WindowActivation::wish() {
    auto const* const handle = window_.windowHandle();
    isWaiting_ = handle == nullptr || !handle->isExposed();
    if (!isWaiting_) activate_(window_);
}

bool WindowActivation::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() == QEvent::Paint && std::exchange(isWaiting_, false)) activate_(window_);
    return false;
}

} // namespace trovel
