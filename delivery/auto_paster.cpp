#include "delivery/auto_paster.h"

#include "delivery/paste_keystroke.h"
#include "platform/accessibility.h"
#include "platform/event_synthesizer.h"
#include "platform/main_queue.h"

#include <chrono>

namespace trovel {

namespace {

constexpr std::chrono::milliseconds kClickToPaste{300};
constexpr std::chrono::milliseconds kPasteToSubmit{800};

// Where chat applications have their input field: in the middle, near the lower edge.
constexpr double kInputAreaX = 0.5;
constexpr double kInputAreaY = 0.9;

/// The window to click into; null when the application shows none.
Accessibility::WindowPtr inputWindow(Accessibility const& accessibility,
                                     std::int32_t processIdentifier) {
    if (auto focused = accessibility.focusedWindow(processIdentifier)) return focused;
    auto const windows = accessibility.windows(processIdentifier);
    if (!windows || windows->empty()) return nullptr;
    return windows->front();
}

} // namespace

// The steps hold the paster strongly, so that a paste that has begun is always finished.
void AutoPaster::paste(AIApp const& target) {
    focusInputArea(target.app.processIdentifier);
    platform_.mainQueue.after(
        kClickToPaste, [self = shared_from_this(), target] { self->pasteAndSubmit(target); });
}

void AutoPaster::pasteAndSubmit(AIApp const& target) {
    sendPasteKeystroke(platform_.events);
    // Asked only now: who turns automatic sending off after the click is still heard.
    if (!preferences_.autoSendEnabled()) return;
    platform_.mainQueue.after(kPasteToSubmit,
                              [self = shared_from_this(), behavior = target.sendBehavior] {
                                  self->sendSubmitKeystroke(behavior);
                              });
}

void AutoPaster::focusInputArea(std::int32_t processIdentifier) {
    auto const window = inputWindow(platform_.accessibility, processIdentifier);
    if (!window) return;
    auto const position = window->position();
    auto const size = window->size();
    if (!position || !size) return;
    Point const click{position->x + kInputAreaX * size->width,
                      position->y + kInputAreaY * size->height};
    auto const down = platform_.events.mouseEvent(MouseAction::leftDown, click);
    auto const up = platform_.events.mouseEvent(MouseAction::leftUp, click);
    if (down) down->post();
    if (up) up->post();
}

void AutoPaster::sendSubmitKeystroke(SendBehavior behavior) {
    sendKeystroke(platform_.events, kKeyReturn,
                  behavior == SendBehavior::cmdEnter ? kFlagCommand : 0);
}

} // namespace trovel
