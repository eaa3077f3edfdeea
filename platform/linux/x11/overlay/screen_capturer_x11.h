#pragma once

#include "platform/screen_capturer.h"

#include <atomic>
#include <cstdint>

namespace trovel {

class OverlayHost;
class Worker;

/// Pictures of displays out of the frozen desktop: the pixels are those of the moment when the
/// session began, and only the ones that are cropped out leave the server. Outside of a session the
/// root window is read as it is.
class ScreenCapturerX11 final : public ScreenCapturer {
public:
    /// What is handed in outlives it.
    ScreenCapturerX11(OverlayHost& overlays, Worker& worker)
        : overlays_(overlays), worker_(worker) {}
    ~ScreenCapturerX11() = default;

    void sessionWillBegin() override;
    void sessionDidEnd() override;

    [[nodiscard]] Result<std::vector<CaptureDisplay>> shareableDisplays() override;

    /// The image has the display's own pixels whatever the configuration says, never the pointer.
    /// Cropping it reads the pixels, on the calling thread, and has the worker turn them into a PNG
    /// as its next task.
    [[nodiscard]] Result<std::shared_ptr<PixelImage const>>
    captureImage(CaptureDisplay const& display, StreamConfiguration const& configuration) override;

private:
    OverlayHost& overlays_;
    Worker& worker_;
    std::atomic<std::uint32_t> snapshot_ = 0; // a pixmap, 0 outside of a session
};

} // namespace trovel
