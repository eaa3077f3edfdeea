#include "capture/capture_region.h"

#include "capture/crop.h"

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

std::unexpected<CaptureError> failure(CaptureError::Kind kind, std::string message = {}) {
    return std::unexpected(CaptureError{kind, std::move(message)});
}

} // namespace

CaptureResult captureRegion(ScreenCapturer& capturer, Rect rect, Screen const& screen) {
    using enum CaptureError::Kind;
    auto const displays = capturer.shareableDisplays();
    if (!displays) return failure(sckFailed, displays.error());
    auto const display = std::ranges::find_if(
        *displays, [&](auto const& candidate) { return displayMatches(candidate, screen); });
    if (display == displays->end()) return failure(noMatchingDisplay);

    double const scale = screen.backingScaleFactor;
    auto const picture =
        capturer.captureImage(*display, {.width = wholeTowardZero(scale * display->width),
                                         .height = wholeTowardZero(scale * display->height),
                                         .scalesToFit = false,
                                         .showsCursor = false});
    if (!picture) return failure(sckFailed, picture.error());

    Size const pictureSize{static_cast<double>((*picture)->widthPixels()),
                           static_cast<double>((*picture)->heightPixels())};
    auto cut = (*picture)->croppedTo(cropRect(pictureSize, scale, screen.frame, rect));
    if (!cut) return failure(cropFailed);
    Size const size{cut->widthPixels() / scale, cut->heightPixels() / scale};
    return Image{std::move(cut), size};
}

bool displayMatches(CaptureDisplay const& display, Screen const& screen) {
    return screen.screenNumber && *screen.screenNumber == display.displayId;
}

} // namespace trovel
