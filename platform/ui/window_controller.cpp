#include "platform/ui/window_controller.h"

#include <utility>

namespace trovel {

WindowController::WindowController(std::shared_ptr<Window> window) : window_(std::move(window)) {
    window_->setDelegate(this);
    window_->setNextResponder(this);
}

WindowController::~WindowController() {
    window_->setDelegate(nullptr);
    window_->setNextResponder(nullptr);
}

void WindowController::showWindow() {
    window_->makeKeyAndOrderFront();
}

} // namespace trovel
