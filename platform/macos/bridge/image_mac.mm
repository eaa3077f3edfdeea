#include "platform/macos/bridge/image_mac.h"

#include "platform/macos/bridge/convert.h"

#include <utility>

namespace trovel {

PixelImageMac::PixelImageMac(CFOwner<CGImageRef> image) : image_(std::move(image)) {}

int PixelImageMac::widthPixels() const {
    return static_cast<int>(CGImageGetWidth(image_.get()));
}

int PixelImageMac::heightPixels() const {
    return static_cast<int>(CGImageGetHeight(image_.get()));
}

std::shared_ptr<PixelImage const> PixelImageMac::croppedTo(Rect const& rect) const {
    // To Core Graphics a rectangle of negative size is the same one, seen from its other corner.
    if (rect.width <= 0 || rect.height <= 0) return nullptr;
    // Rounds outward to whole pixels and cuts at the edges by itself.
    CFOwner<CGImageRef> part(CGImageCreateWithImageInRect(image_.get(), toNSRect(rect)));
    if (!part) return nullptr;
    return std::make_shared<PixelImageMac>(std::move(part));
}

NSImage* _Nonnull toNSImage(Image const& image) {
    auto const& pixels = static_cast<PixelImageMac const&>(*image.pixels);
    return [[NSImage alloc] initWithCGImage:pixels.cgImage() size:toNSSize(image.size)];
}

} // namespace trovel
