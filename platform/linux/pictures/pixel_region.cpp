#include "platform/linux/pictures/pixel_region.h"

#include <utility>

namespace trovel {

void PixelRegion::add(PixelRect const& rect) {
    if (rect.isEmpty()) return;
    PixelRegion fresh;
    fresh.rects_.push_back(rect);
    // What is here already stays as it is: cutting it up anew would only make more pieces.
    fresh.subtract(*this);
    rects_.insert(rects_.end(), fresh.rects_.begin(), fresh.rects_.end());
}

void PixelRegion::add(PixelRegion const& other) {
    for (auto const& rect : other.rects_) add(rect);
}

void PixelRegion::subtract(PixelRect const& rect) {
    std::vector<PixelRect> left;
    auto const keep = [&left](PixelRect const& piece) {
        if (!piece.isEmpty()) left.push_back(piece);
    };
    for (auto const& from : rects_) {
        auto const hit = intersection(from, rect);
        if (hit.isEmpty()) {
            left.push_back(from);
            continue;
        }
        auto const fromRight = from.x + from.width;
        auto const fromBottom = from.y + from.height;
        auto const hitRight = hit.x + hit.width;
        auto const hitBottom = hit.y + hit.height;
        keep({from.x, from.y, from.width, hit.y - from.y});
        keep({from.x, hitBottom, from.width, fromBottom - hitBottom});
        keep({from.x, hit.y, hit.x - from.x, hit.height});
        keep({hitRight, hit.y, fromRight - hitRight, hit.height});
    }
    rects_ = std::move(left);
}

void PixelRegion::subtract(PixelRegion const& other) {
    for (auto const& rect : other.rects_) subtract(rect);
}

PixelRegion PixelRegion::intersectedWith(PixelRect const& rect) const {
    PixelRegion shared;
    for (auto const& piece : rects_) {
        if (auto const hit = intersection(piece, rect); !hit.isEmpty()) {
            shared.rects_.push_back(hit);
        }
    }
    return shared;
}

PixelRegion PixelRegion::intersectedWith(PixelRegion const& other) const {
    PixelRegion shared;
    for (auto const& rect : other.rects_) {
        auto const part = intersectedWith(rect);
        shared.rects_.insert(shared.rects_.end(), part.rects_.begin(), part.rects_.end());
    }
    return shared;
}

PixelRegion symmetricDifference(PixelRegion const& a, PixelRegion const& b) {
    auto difference = a;
    difference.subtract(b);
    auto other = b;
    other.subtract(a);
    difference.add(other);
    return difference;
}

} // namespace trovel
