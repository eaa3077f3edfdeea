#include "platform/macos/ui/view_events.h"

#include "platform/macos/bridge/entry.h"
#include "platform/ui/window.h"

namespace trovel {

namespace {

template <class Send> void toTree(std::weak_ptr<View> const& mirrored, Send const& send) {
    auto const view = mirrored.lock();
    auto* const window = view ? view->window() : nullptr;
    if (window != nullptr) enter([&] { send(*window, *view); });
}

} // namespace

void sendMouse(MouseEvent const& event, std::weak_ptr<View> const& mirrored) {
    toTree(mirrored, [&](Window& window, View&) { window.receive(event); });
}

void sendPointer(bool isInside, std::weak_ptr<View> const& mirrored) {
    toTree(mirrored, [&](Window& window, View& view) { window.receivePointer(view, isInside); });
}

void sendClick(std::weak_ptr<View> const& mirrored) {
    toTree(mirrored, [](Window& window, View& view) { window.receiveClick(view); });
}

void sendPress(std::weak_ptr<View> const& mirrored) {
    toTree(mirrored, [](Window& window, View& view) { window.receivePress(view); });
}

} // namespace trovel
