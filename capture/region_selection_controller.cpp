#include "capture/region_selection_controller.h"

#include "capture/keyable_window.h"
#include "capture/selection_overlay_view.h"
#include "platform/application.h"
#include "platform/cursors.h"
#include "platform/main_queue.h"
#include "platform/ui/event_monitors.h"

#include <chrono>
#include <utility>

namespace trovel {

namespace {

constexpr std::chrono::seconds kTimeOut{30};

} // namespace

void RegionSelectionController::begin(Completion completion) {
    completion_ = std::move(completion);
    for (auto const& screen : platform_.screens.screens()) {
        auto window = makeOverlayWindow(screen);
        window->orderFrontRegardless();
        overlayWindows_.push_back(std::move(window));
    }
    keyMonitor_ =
        platform_.monitors.addLocalKeyDownMonitor([weak = weak_from_this()](KeyEvent const& event) {
            if (event.keyCode != kKeyEscape) return MonitorVerdict::passOn;
            if (auto const self = weak.lock()) self->finish(std::nullopt);
            return MonitorVerdict::swallow;
        });
    platform_.application.activateIgnoringOtherApps();
    if (!overlayWindows_.empty()) overlayWindows_.front()->makeKeyAndOrderFront();
    platform_.cursors.pushCrosshair();
    platform_.mainQueue.after(kTimeOut, [weak = weak_from_this()] {
        if (auto const self = weak.lock()) self->finish(std::nullopt);
    });
    // Without a screen nobody could end the session.
    if (overlayWindows_.empty()) finish(std::nullopt);
}

std::shared_ptr<Window> RegionSelectionController::makeOverlayWindow(Screen const& screen) {
    auto view =
        std::make_shared<SelectionOverlayView>(Rect{0, 0, screen.frame.width, screen.frame.height});
    view->onFinished = [weak = weak_from_this(), screen](Rect rect) {
        rect.x += screen.frame.x;
        rect.y += screen.frame.y;
        if (auto const self = weak.lock()) self->finish(SelectionResult{rect, screen});
    };
    view->onCancel = [weak = weak_from_this()] {
        if (auto const self = weak.lock()) self->finish(std::nullopt);
    };
    auto window = std::make_shared<KeyableWindow>(
        platform_.windows, WindowAttributes{.contentRect = screen.frame,
                                            .styleMask = kStyleBorderless,
                                            .level = kScreenSaverWindowLevel,
                                            .isOpaque = false,
                                            .backgroundColor = Color::clear(),
                                            .hasShadow = false,
                                            .ignoresMouseEvents = false,
                                            .acceptsMouseMovedEvents = true,
                                            .collectionBehavior = kCollectionCanJoinAllSpaces |
                                                                  kCollectionFullScreenAuxiliary});
    window->setContentView(std::move(view));
    return window;
}

void RegionSelectionController::finish(std::optional<SelectionResult> result) {
    if (std::exchange(finished_, true)) return;
    // In the next turn: this call may come out of an event of a window that is about to go. The
    // block takes everything along, for the controller may be released before it runs.
    platform_.mainQueue.post([&cursors = platform_.cursors,
                              windows = std::exchange(overlayWindows_, {}),
                              keyMonitor = std::make_shared<Registration>(std::move(keyMonitor_)),
                              completion = std::exchange(completion_, nullptr), result] {
        keyMonitor->reset();
        cursors.pop();
        for (auto const& window : windows) window->orderOut();
        if (completion) completion(result);
    });
}

} // namespace trovel
