#pragma once

#include "platform/linux/pictures/pixel_region.h"
#include "platform/linux/qt/text_rasterizer.h"
#include "platform/linux/x11/overlay/render.h"
#include "platform/linux/x11/overlay/snapshot.h"
#include "platform/ui/canvas_recording.h"

#include <xcb/xcb.h>

#include <cstdint>
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
class OverlayPainter {
public:
    /// What the target shows before anything was painted on it.
    enum class Ground : std::uint8_t { unknown, snapshot };

    /// A canvas over `area` of the snapshot, on a target of the root's depth. What is handed in
    /// outlives the painter. A target that shows the snapshot already saves painting it there.
    OverlayPainter(XcbConnection& x, XcbRender& render, TextRasterizer& text,
                   Snapshot const& snapshot, PixelRect const& area, xcb_drawable_t target,
                   Ground ground);
    OverlayPainter(OverlayPainter const&) = delete;
    OverlayPainter& operator=(OverlayPainter const&) = delete;
    ~OverlayPainter();

    /// Brings the target from the last recording to this one.
    void show(std::vector<CanvasOperation> operations);

    /// Paints that part anew: something else had covered it.
    void repaint(PixelRect const& part);

private:
    /// A text or a rounded box, whatever its place.
    struct Sprite {
        std::optional<CanvasOperation> key;
        std::int64_t width = 0;
        std::int64_t height = 0;
        std::unique_ptr<ServerBitmap> bitmap;
    };

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
    void paint(PixelRegion const& region, Ground ground);
    void paintOperation(CanvasOperation const& operation, PixelRegion const& region);
    void copySnapshot(PixelRegion const& region);

    XcbConnection& x_;
    XcbRender& render_;
    TextRasterizer& text_;
    Snapshot const& snapshot_;
    PixelRect area_;
    PixelRect bounds_;
    xcb_drawable_t target_;
    Ground ground_;
    bool isPainted_ = false;
    xcb_gcontext_t gc_;
    xcb_render_picture_t picture_;
    std::vector<CanvasOperation> shown_;
    std::vector<Sprite> sprites_;
};

} // namespace trovel
