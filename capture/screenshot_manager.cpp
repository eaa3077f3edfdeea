#include "capture/screenshot_manager.h"

#include "capture/capture_region.h"
#include "capture/region_selection_controller.h"
#include "platform/main_queue.h"
#include "platform/worker.h"

#include <utility>

namespace trovel {

namespace {

CaptureResult cancelled() {
    return std::unexpected(CaptureError{CaptureError::Kind::cancelled, {}});
}

} // namespace

void ScreenshotManager::startCapture(Completion completion) {
    if (isCapturing_) return;
    isCapturing_ = true;
    if (auto const previous = std::exchange(selectionController_, nullptr)) {
        previous->finish(std::nullopt);
    }
    beginSession();
    selectionController_ = std::make_shared<RegionSelectionController>(platform_);
    selectionController_->begin([weak = weak_from_this(), completion = std::move(completion)](
                                    std::optional<SelectionResult> const& result) {
        if (auto const self = weak.lock()) {
            self->selectionEnded(result, completion);
        } else {
            completion(cancelled());
        }
    });
}

void ScreenshotManager::beginSession() {
    session_.reset();
    platform_.capturer.sessionWillBegin();
    session_ = Registration([&capturer = platform_.capturer] { capturer.sessionDidEnd(); });
}

void ScreenshotManager::selectionEnded(std::optional<SelectionResult> const& result,
                                       Completion completion) {
    selectionController_.reset();
    if (!result) {
        captureEnded();
        completion(cancelled());
        return;
    }
    // The task gets values and a weak reference: it must not be what destroys this object, which
    // belongs to the main thread.
    platform_.worker.run([&capturer = platform_.capturer, &mainQueue = platform_.mainQueue,
                          selection = *result, weak = weak_from_this(),
                          completion = std::move(completion)] {
        auto picture = captureRegion(capturer, selection.rect, selection.screen);
        mainQueue.post([weak, completion, picture = std::move(picture)] {
            if (auto const self = weak.lock()) self->captureEnded();
            completion(picture);
        });
    });
}

// Before the completion runs, which may show an alert: a next capture can start over that alert.
void ScreenshotManager::captureEnded() {
    isCapturing_ = false;
    session_.reset();
}

} // namespace trovel
