#pragma once

#include "platform/linux/pixel_region.h"
#include "platform/linux/ui/text_rasterizer.h"
#include "platform/linux/xcb/render.h"
#include "platform/linux/xcb/snapshot.h"
#include "platform/ui/canvas_recording.h"

#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <vector>

namespace trovel {

class XcbConnection;

/// Paints recordings of one canvas over a part of a snapshot, all on the server.
///
/// From one recording to the next it repaints only pixels whose colour may differ: operations are
/// compared place by place, and where both fill with one colour only what one of them covers and
/// the other does not counts. So a step of a drag costs the same whatever the selection's size.
/// What lies under an opaque operation is not painted at all, so nothing flickers.
class CanvasPainter {
public:
    /// A canvas over `area` of the snapshot. What is handed in outlives the painter. `first` is
    /// what will be shown first: when it begins with a fill of the whole canvas, the backdrop has
    /// that fill already.
    CanvasPainter(XcbConnection& x, XcbRender& render, TextRasterizer& text,
                  Snapshot const& snapshot, PixelRect const& area,
                  std::vector<CanvasOperation> const& first);
    CanvasPainter(CanvasPainter const&) = delete;
    CanvasPainter& operator=(CanvasPainter const&) = delete;
    ~CanvasPainter();

    /// A pixmap of the canvas's size: the part of the snapshot with the leading fill laid over it.
    [[nodiscard]] xcb_pixmap_t backdrop() const { return backdrop_; }

    /// Paints on `target` from now on, which shows the backdrop and is of the root's depth.
    void setTarget(xcb_drawable_t target);

    /// Brings the target from the last recording to this one.
    void show(std::vector<CanvasOperation> operations);

    /// Paints that part anew: something else had covered it, and the target's own background, the
    /// backdrop, has taken its place.
    void repaint(PixelRect const& part);

private:
    /// A text or a rounded box, whatever its place.
    struct Sprite {
        std::optional<CanvasOperation> key;
        std::int64_t width = 0;
        std::int64_t height = 0;
        std::unique_ptr<ServerBitmap> bitmap;
    };

    [[nodiscard]] bool isLeadingFill(CanvasOperation const& operation) const;
    [[nodiscard]] PixelRegion shapeOf(CanvasOperation const& operation);
    [[nodiscard]] PixelRect placeOf(CanvasOperation const& operation);
    [[nodiscard]] PixelRegion frameShape(StrokeRectOperation const& stroke) const;
    [[nodiscard]] PixelRegion changedRegion(std::vector<CanvasOperation> const& before,
                                            std::vector<CanvasOperation> const& after);
    [[nodiscard]] bool isOpaque(CanvasOperation const& operation) const;
    /// The operation without its place, for what is painted as a sprite.
    [[nodiscard]] std::optional<CanvasOperation> spriteKey(CanvasOperation const& operation) const;
    Sprite const& spriteFor(CanvasOperation const& operation);
    void dropUnusedSprites();
    void paint(PixelRegion const& region);
    void paintOperation(CanvasOperation const& operation, PixelRegion const& region);
    void copy(PixelRegion const& region, xcb_pixmap_t from, std::int64_t fromX, std::int64_t fromY);

    XcbConnection& x_;
    XcbRender& render_;
    TextRasterizer& text_;
    Snapshot const& snapshot_;
    PixelRect area_;
    PixelRect bounds_;
    xcb_pixmap_t backdrop_;
    xcb_gcontext_t gc_;
    xcb_drawable_t target_ = 0;
    xcb_render_picture_t picture_ = 0;
    std::optional<CanvasOperation> leadingFill_;
    std::vector<CanvasOperation> shown_;
    std::vector<Sprite> sprites_;
};

} // namespace trovel
