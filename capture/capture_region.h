#pragma once

#include "capture/capture_error.h"
#include "platform/geometry.h"
#include "platform/screen_capturer.h"
#include "platform/screens.h"

namespace trovel {

/// Takes the picture of `rect` (global screen points) on `screen` at the screen's full resolution.
/// The image's size is in points. Blocks; for the worker only.
[[nodiscard]] CaptureResult captureRegion(ScreenCapturer& capturer, Rect rect,
                                          Screen const& screen);

/// Whether `display` is the one behind `screen`.
[[nodiscard]] bool displayMatches(CaptureDisplay const& display, Screen const& screen);

} // namespace trovel
