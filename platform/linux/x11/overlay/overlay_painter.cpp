#include "platform/linux/x11/overlay/overlay_painter.h"

#include "platform/linux/pictures/device_pixels.h"
#include "platform/linux/x11/connection.h"
#include "platform/ui/overloaded.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovel {

namespace {

/// Whether the two colour every pixel that both cover alike.
bool coverAlike(CanvasOperation const& a, CanvasOperation const& b) {
    if (auto const *one = std::get_if<FillRectOperation>(&a),
        *other = std::get_if<FillRectOperation>(&b);
        one != nullptr && other != nullptr) {
        return one->color == other->color && one->operation == other->operation;
    }
    auto const* const one = std::get_if<StrokeRectOperation>(&a);
    auto const* const other = std::get_if<StrokeRectOperation>(&b);
    return one != nullptr && other != nullptr && one->color == other->color;
}

} // namespace

OverlayPainter::OverlayPainter(XcbConnection& x, XcbRender& render, TextRasterizer& text,
                               Snapshot const& snapshot, PixelRect const& area,
                               xcb_drawable_t target, Ground ground)
    : x_(x), render_(render), text_(text), snapshot_(snapshot), area_(area),
      bounds_{0, 0, area.width, area.height}, target_(target), ground_(ground),
      gc_(xcb_generate_id(x.get())), picture_(render.makePicture(target)) {
    std::uint32_t const noExposures = 0;
    xcb_create_gc(x.get(), gc_, target, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
}

OverlayPainter::~OverlayPainter() {
    render_.freePicture(picture_);
    sprites_.clear();
    xcb_free_gc(x_.get(), gc_);
}

void OverlayPainter::show(std::vector<CanvasOperation> operations) {
    auto const ground = std::exchange(ground_, Ground::unknown);
    // What was never painted is unknown everywhere, whatever the operations cover.
    auto const changed = isPainted_ || ground == Ground::snapshot
                             ? changedRegion(shown_, operations)
                             : PixelRegion(bounds_);
    isPainted_ = true;
    shown_ = std::move(operations);
    paint(changed, ground);
    dropUnusedSprites();
}

void OverlayPainter::repaint(PixelRect const& part) {
    paint(part, Ground::unknown);
}

PixelRegion OverlayPainter::frameShape(StrokeRectOperation const& stroke) const {
    auto const outer =
        nearestPixelRect(stroke.rect.insetBy(-stroke.lineWidth / 2), text_.scale(), bounds_.height);
    auto const width = std::max<std::int64_t>(1, std::llround(stroke.lineWidth * text_.scale()));
    PixelRegion frame(outer);
    frame.subtract(
        {outer.x + width, outer.y + width, outer.width - 2 * width, outer.height - 2 * width});
    return frame;
}

PixelRect OverlayPainter::placeOf(CanvasOperation const& operation) {
    if (auto const* const text = std::get_if<DrawTextOperation>(&operation)) {
        auto const& sprite = spriteFor(operation);
        auto const corner =
            nearestPixelRect({text->origin.x, text->origin.y, 0, 0}, text_.scale(), bounds_.height);
        return {corner.x - TextRasterizer::kTextMargin, corner.y - sprite.height, sprite.width,
                sprite.height};
    }
    auto const& box = std::get<FillRoundedRectOperation>(operation);
    return nearestPixelRect(box.rect, text_.scale(), bounds_.height);
}

PixelRegion OverlayPainter::shapeOf(CanvasOperation const& operation) {
    auto const whole = std::visit(
        Overloaded{[this](FillRectOperation const& fill) {
                       return PixelRegion(
                           nearestPixelRect(fill.rect, text_.scale(), bounds_.height));
                   },
                   [this](StrokeRectOperation const& stroke) { return frameShape(stroke); },
                   [&](FillRoundedRectOperation const&) { return PixelRegion(placeOf(operation)); },
                   [](StrokeLinesOperation const&) { return PixelRegion(); },
                   [](FillOvalOperation const&) { return PixelRegion(); },
                   [&](DrawTextOperation const&) { return PixelRegion(placeOf(operation)); }},
        operation);
    return whole.intersectedWith(bounds_);
}

PixelRegion OverlayPainter::changedRegion(std::vector<CanvasOperation> const& before,
                                          std::vector<CanvasOperation> const& after) {
    PixelRegion changed;
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        auto const* const old = i < before.size() ? &before[i] : nullptr;
        auto const* const now = i < after.size() ? &after[i] : nullptr;
        if (old != nullptr && now != nullptr) {
            if (*old == *now) continue;
            if (coverAlike(*old, *now)) {
                changed.add(symmetricDifference(shapeOf(*old), shapeOf(*now)));
                continue;
            }
        }
        if (old != nullptr) changed.add(shapeOf(*old));
        if (now != nullptr) changed.add(shapeOf(*now));
    }
    return changed;
}

bool OverlayPainter::isOpaque(CanvasOperation const& operation) const {
    if (auto const* const fill = std::get_if<FillRectOperation>(&operation)) {
        return fill->operation == CompositingOperation::copy ||
               (render_.isAvailable() && fill->color.alpha >= 1);
    }
    auto const* const stroke = std::get_if<StrokeRectOperation>(&operation);
    return stroke != nullptr && render_.isAvailable() && stroke->color.alpha >= 1;
}

std::optional<CanvasOperation> OverlayPainter::spriteKey(CanvasOperation const& operation) const {
    auto key = operation;
    if (auto* const text = std::get_if<DrawTextOperation>(&key)) {
        text->origin = {};
        return key;
    }
    if (auto* const box = std::get_if<FillRoundedRectOperation>(&key)) {
        auto const place = nearestPixelRect(box->rect, text_.scale(), bounds_.height);
        box->rect = {0, 0, static_cast<double>(place.width), static_cast<double>(place.height)};
        return key;
    }
    return std::nullopt;
}

OverlayPainter::Sprite const& OverlayPainter::spriteFor(CanvasOperation const& operation) {
    auto const key = spriteKey(operation);
    auto const known = std::ranges::find(sprites_, key, &Sprite::key);
    if (known != sprites_.end()) return *known;

    Bitmap bitmap;
    if (auto const* const text = std::get_if<DrawTextOperation>(&*key)) {
        bitmap = text_.drawText(text->text, text->attributes);
    } else if (auto const* const box = std::get_if<FillRoundedRectOperation>(&*key)) {
        bitmap = text_.drawRoundedRect(static_cast<std::int64_t>(box->rect.width),
                                       static_cast<std::int64_t>(box->rect.height), box->radiusX,
                                       box->radiusY, box->color);
    }
    return sprites_.emplace_back(Sprite{key, bitmap.width, bitmap.height, render_.upload(bitmap)});
}

void OverlayPainter::dropUnusedSprites() {
    std::erase_if(sprites_, [this](Sprite const& sprite) {
        return std::ranges::none_of(shown_, [&](CanvasOperation const& operation) {
            return spriteKey(operation) == sprite.key;
        });
    });
}

void OverlayPainter::paint(PixelRegion const& region, Ground ground) {
    // From the front to the back: what an opaque operation covers, those behind it leave alone.
    auto left = region.intersectedWith(bounds_);
    std::vector<PixelRegion> parts(shown_.size());
    for (auto i = shown_.size(); i-- > 0;) {
        auto const shape = shapeOf(shown_[i]);
        parts[i] = left.intersectedWith(shape);
        if (isOpaque(shown_[i])) left.subtract(shape);
    }
    if (ground == Ground::unknown) copySnapshot(left);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        if (!parts[i].isEmpty()) paintOperation(shown_[i], parts[i]);
    }
}

void OverlayPainter::paintOperation(CanvasOperation const& operation, PixelRegion const& region) {
    auto const blend = [&](CanvasOperation const& sprited) {
        auto const place = placeOf(sprited);
        auto const& sprite = spriteFor(sprited);
        if (sprite.bitmap) render_.blend(picture_, region, *sprite.bitmap, place.x, place.y);
    };
    std::visit(Overloaded{[&](FillRectOperation const& fill) {
                              // The canvas lies on the desktop: where it is cleared, that shows.
                              if (fill.operation == CompositingOperation::copy) {
                                  copySnapshot(region);
                              }
                              if (fill.color.alpha > 0) render_.fill(picture_, region, fill.color);
                          },
                          [&](StrokeRectOperation const& stroke) {
                              render_.fill(picture_, region, stroke.color);
                          },
                          [&](FillRoundedRectOperation const&) { blend(operation); },
                          [](StrokeLinesOperation const&) {}, // no overlay draws these two
                          [](FillOvalOperation const&) {},
                          [&](DrawTextOperation const&) { blend(operation); }},
               operation);
}

void OverlayPainter::copySnapshot(PixelRegion const& region) {
    for (auto const& rect : region.rects()) {
        xcb_copy_area(
            x_.get(), snapshot_.pixmap(), target_, gc_, static_cast<std::int16_t>(rect.x + area_.x),
            static_cast<std::int16_t>(rect.y + area_.y), static_cast<std::int16_t>(rect.x),
            static_cast<std::int16_t>(rect.y), static_cast<std::uint16_t>(rect.width),
            static_cast<std::uint16_t>(rect.height));
    }
}

} // namespace trovel
