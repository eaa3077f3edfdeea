#pragma once

#include "platform/image.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace trovel {

/// A display that can be captured. Width and height are points.
struct CaptureDisplay {
    std::uint32_t displayId = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(CaptureDisplay const&, CaptureDisplay const&) = default;
};

/// How a still image of a display is to be made. Sizes are pixels.
struct StreamConfiguration {
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool scalesToFit = true;
    bool showsCursor = true;

    friend bool operator==(StreamConfiguration const&, StreamConfiguration const&) = default;
};

/// Takes pictures of displays. Errors are the system's own localized descriptions.
class ScreenCapturer {
public:
    template <class T>
    using Result = std::expected<T, std::string>;

    ScreenCapturer(ScreenCapturer const&) = delete;
    ScreenCapturer& operator=(ScreenCapturer const&) = delete;

    /// A selection is about to dim the screens, and the session that began has ended with its
    /// result reported. A backend that captures from a picture taken before the dimming keeps it in
    /// between. Main thread; every begin is followed by one end.
    virtual void sessionWillBegin() = 0;
    virtual void sessionDidEnd() = 0;

    /// The displays there are now, desktop windows and off-screen windows included in what they
    /// show. Blocks; for the worker only.
    [[nodiscard]] virtual Result<std::vector<CaptureDisplay>> shareableDisplays() = 0;

    /// One still image of a whole display, no window left out. Blocks; for the worker only.
    [[nodiscard]] virtual Result<std::shared_ptr<PixelImage const>>
    captureImage(CaptureDisplay const& display, StreamConfiguration const& configuration) = 0;

protected:
    ScreenCapturer() = default;
    ~ScreenCapturer() = default;
};

} // namespace trovel
