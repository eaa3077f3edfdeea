#include "platform/macos/ui/view_events.h"

#include "platform/macos/entry.h"
#include "platform/ui/window.h"

namespace trovel {

void sendMouse(MouseEvent const& event, std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    auto* const window = view ? view->window() : nullptr;
    if (window != nullptr) enter([&] { window->receive(event); });
}

void sendPointer(bool isInside, std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    auto* const window = view ? view->window() : nullptr;
    if (window != nullptr) enter([&] { window->receivePointer(*view, isInside); });
}

void sendClick(std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    auto* const window = view ? view->window() : nullptr;
    if (window != nullptr) enter([&] { window->receiveClick(*view); });
}

void sendPress(std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    if (!view) return;
    auto const corner = view->convertFromWindow({0, 0});
    auto const bounds = view->bounds();
    MouseEvent event{
        MouseEvent::Kind::leftDown, {bounds.midX() - corner.x, bounds.midY() - corner.y}, 0};
    sendMouse(event, view);
    event.kind = MouseEvent::Kind::leftUp;
    sendMouse(event, view);
}

bool takesClicks(View const& view) {
    for (View const* each = &view; each != nullptr; each = each->superview()) {
        if (each->kind() == ViewKind::button || each->clickAction() || each->accessibility()) {
            return true;
        }
    }
    return false;
}

} // namespace trovel
