#pragma once

#include "capture/capture_error.h"
#include "platform/platform.h"
#include "platform/registration.h"

#include <functional>
#include <memory>

namespace trovel {

class RegionSelectionController;
struct SelectionResult;

/// Runs one capture at a time: the selection of a region, and then its picture. Held by shared_ptr;
/// main thread only.
class ScreenshotManager : public std::enable_shared_from_this<ScreenshotManager> {
public:
    using Completion = std::function<void(CaptureResult)>;

    explicit ScreenshotManager(Platform const& platform) : platform_(platform) {}

    /// Lets the user select a region and captures it. `completion` runs once on the main thread,
    /// when a next capture may already start; never, when a capture is running. Copies of it may be
    /// destroyed on any thread.
    void startCapture(Completion completion);

    /// From the start of a selection until its result is reported.
    [[nodiscard]] bool isCapturing() const { return isCapturing_; }

    /// The overlay session on the screen; null when there is none.
    [[nodiscard]] std::shared_ptr<RegionSelectionController> const& selectionController() const {
        return selectionController_;
    }

private:
    void beginSession();
    void selectionEnded(std::optional<SelectionResult> const& result, Completion completion);
    void captureEnded();

    Platform platform_;
    std::shared_ptr<RegionSelectionController> selectionController_;
    bool isCapturing_ = false;
    Registration session_; // the capturer's session; ends with this object at the latest
};

} // namespace trovel
