#include "platform/simulated/simulated_screen_capturer.h"

#include "platform/fatal.h"
#include "platform/simulated/simulated_pixels.h"
#include "platform/ui/window.h"

#include <cmath>

namespace trovel {

namespace {

/// What the system says when the user has not granted Screen Recording.
constexpr auto* kDeclined = "The user declined the recording of the screen.";

/// A rectangle of global screen points in the pixels of a display.
PixelRect pixelsOn(SimulatedDisplay const& display, Rect const& rect) {
    auto const& frame = display.frame;
    return outwardPixelRect({(rect.x - frame.x) * display.scale,
                             (frame.maxY() - rect.maxY()) * display.scale,
                             rect.width * display.scale, rect.height * display.scale});
}

} // namespace

void SimulatedScreenCapturer::sessionWillBegin() {
    ++openSessions_;
    world_.journal.record(effect::CaptureSessionBegan{});
}

void SimulatedScreenCapturer::sessionDidEnd() {
    --openSessions_;
    world_.journal.record(effect::CaptureSessionEnded{});
}

ScreenCapturer::Result<std::vector<CaptureDisplay>> SimulatedScreenCapturer::shareableDisplays() {
    if (!world_.worker.isRunningTask()) fatal("displays were listed on the main thread");
    world_.journal.record(effect::DisplaysListed{});
    if (world_.faults.strikes(Operation::listDisplays)) {
        return std::unexpected("The displays could not be listed.");
    }
    if (!world_.permissions.isGranted(Permission::screenRecording)) {
        return std::unexpected(kDeclined);
    }
    std::vector<CaptureDisplay> displays;
    for (auto const& display : world_.screens.displays()) {
        displays.push_back({display.displayId, display.frame.width, display.frame.height});
    }
    return displays;
}

ScreenCapturer::Result<std::shared_ptr<PixelImage const>>
SimulatedScreenCapturer::captureImage(CaptureDisplay const& display,
                                      StreamConfiguration const& configuration) {
    if (!world_.worker.isRunningTask()) fatal("a display was captured on the main thread");
    world_.journal.record(effect::DisplayCaptured{display, configuration});
    if (world_.faults.strikes(Operation::captureDisplay)) {
        return std::unexpected("The display could not be captured.");
    }
    if (!world_.permissions.isGranted(Permission::screenRecording)) {
        return std::unexpected(kDeclined);
    }
    auto const* attached = world_.screens.display(display.displayId);
    if (attached == nullptr) return std::unexpected("The display is not attached any more.");

    auto moment = std::make_shared<SimulatedPixels::Moment>();
    moment->displayId = attached->displayId;
    moment->display = pixelsOn(*attached, attached->frame);
    for (auto const* window : world_.windows.visibleWindows()) {
        // The setup windows are part of what the user sees; an overlay must never be.
        if (window->attributes().level != kScreenSaverWindowLevel) continue;
        moment->covered.push_back(pixelsOn(*attached, window->attributes().contentRect));
    }
    if (configuration.showsCursor) {
        moment->pointer = pixelsOn(*attached, {pointer_.x, pointer_.y, 1, 1});
    }
    return std::make_shared<SimulatedPixels>(
        std::move(moment), PixelRect{0, 0, configuration.width, configuration.height});
}

} // namespace trovel
