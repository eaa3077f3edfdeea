#pragma once

#include "platform/screen_capturer.h"

#import <ScreenCaptureKit/ScreenCaptureKit.h>

#include <map>

namespace trovel {

/// ScreenCaptureKit. Its handlers run on a queue of the framework, and the worker waits for them,
/// up to two minutes each: without an answer the error is the system's text for a time-out.
class ScreenCapturerMac final : public ScreenCapturer {
public:
    ScreenCapturerMac() = default;

    // The overlay leaves the screen before the capture, so nothing has to be kept.
    void sessionWillBegin() override {}
    void sessionDidEnd() override {}

    [[nodiscard]] Result<std::vector<CaptureDisplay>> shareableDisplays() override;
    [[nodiscard]] Result<std::shared_ptr<PixelImage const>>
    captureImage(CaptureDisplay const& display, StreamConfiguration const& configuration) override;

private:
    // What the last listing named; used on the worker only.
    std::map<std::uint32_t, SCDisplay*> displays_;
};

} // namespace trovel
