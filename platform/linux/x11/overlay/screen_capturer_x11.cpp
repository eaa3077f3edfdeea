#include "platform/linux/x11/overlay/screen_capturer_x11.h"

#include "platform/linux/pictures/captured_image.h"
#include "platform/linux/pictures/pixel_region.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/monitors.h"
#include "platform/linux/x11/overlay/overlay_host.h"
#include "platform/linux/x11/pixel_reader.h"
#include "platform/linux/x11/root_pixels.h"
#include "platform/worker.h"

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

constexpr auto kNoServer = "The X server cannot be reached.";
constexpr auto kNoDisplay = "The display is no longer there.";

/// A display's part of the frozen desktop, still on the server.
class DisplayImage final : public PixelImage {
public:
    DisplayImage(std::shared_ptr<XcbConnection> x, xcb_drawable_t drawable, Monitor monitor,
                 Worker& worker)
        : x_(std::move(x)), drawable_(drawable), monitor_(std::move(monitor)), worker_(worker) {}

    [[nodiscard]] int widthPixels() const override { return static_cast<int>(monitor_.area.width); }
    [[nodiscard]] int heightPixels() const override {
        return static_cast<int>(monitor_.area.height);
    }
    [[nodiscard]] std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const override {
        auto const& area = monitor_.area;
        auto part = intersection(outwardPixelRect(rect), {0, 0, area.width, area.height});
        part.x += area.x;
        part.y += area.y;
        auto pixels = readPixels(*x_, drawable_, part);
        if (!pixels) return nullptr;
        auto image = std::make_shared<CapturedImage const>(std::move(*pixels), monitor_.scale);
        // The PNG is wanted a moment later; whoever asks for it first finds it made or waits.
        worker_.run([image] { static_cast<void>(image->pngData()); });
        return image;
    }

private:
    std::shared_ptr<XcbConnection> x_;
    xcb_drawable_t drawable_;
    Monitor monitor_;
    Worker& worker_;
};

} // namespace

void ScreenCapturerX11::sessionWillBegin() {
    overlays_.beginSession();
    snapshot_ = overlays_.snapshot()->pixmap();
}

void ScreenCapturerX11::sessionDidEnd() {
    overlays_.endSession();
    if (overlays_.snapshot() == nullptr) snapshot_ = 0;
}

ScreenCapturer::Result<std::vector<CaptureDisplay>> ScreenCapturerX11::shareableDisplays() {
    auto const x = XcbConnection::open();
    if (!x) return std::unexpected(kNoServer);
    std::vector<CaptureDisplay> displays;
    for (auto const& monitor : listMonitors(*x)) {
        displays.push_back({monitor.id, pointsFromPixels(monitor.area.width, monitor.scale),
                            pointsFromPixels(monitor.area.height, monitor.scale)});
    }
    return displays;
}

ScreenCapturer::Result<std::shared_ptr<PixelImage const>>
ScreenCapturerX11::captureImage(CaptureDisplay const& display, StreamConfiguration const&) {
    // A connection of its own: the main thread's must not have its events read from here.
    std::shared_ptr<XcbConnection> const x = XcbConnection::open();
    if (!x) return std::unexpected(kNoServer);
    auto const monitors = listMonitors(*x);
    auto const monitor = std::ranges::find(monitors, display.displayId, &Monitor::id);
    if (monitor == monitors.end()) return std::unexpected(kNoDisplay);
    auto const snapshot = snapshot_.load();
    return std::make_shared<DisplayImage const>(x, snapshot != 0 ? snapshot : x->root(), *monitor,
                                                worker_);
}

} // namespace trovel
