#pragma once

#include "platform/image.h"
#include "platform/macos/bridge/cf_owner.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// Pixels held as a CGImage. A part shares the memory of the whole.
class PixelImageMac final : public PixelImage {
public:
    explicit PixelImageMac(CFOwner<CGImageRef> image);

    [[nodiscard]] int widthPixels() const override;
    [[nodiscard]] int heightPixels() const override;
    [[nodiscard]] std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const override;

    /// Valid as long as this object.
    [[nodiscard]] CGImageRef _Nonnull cgImage() const { return image_.get(); }

private:
    CFOwner<CGImageRef> image_;
};

/// A native image of the same pixels and size. `image` must have pixels, made by this backend.
[[nodiscard]] NSImage* _Nonnull toNSImage(Image const& image);

} // namespace trovel
