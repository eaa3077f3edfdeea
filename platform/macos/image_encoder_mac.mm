#include "platform/macos/image_encoder_mac.h"

#include "platform/macos/bridge/image_mac.h"

#include <span>

namespace trovel {

ByteBuffer ImageEncoderMac::pngRepresentation(Image const& image) {
    NSData* const tiff = toNSImage(image).TIFFRepresentation;
    if (tiff == nil) return nullptr;
    NSData* const png =
        [[NSBitmapImageRep imageRepWithData:tiff] representationUsingType:NSBitmapImageFileTypePNG
                                                               properties:@{}];
    if (png == nil) return nullptr;
    std::span<std::uint8_t const> const bytes(static_cast<std::uint8_t const*>(png.bytes),
                                              png.length);
    return std::make_shared<std::vector<std::uint8_t> const>(bytes.begin(), bytes.end());
}

} // namespace trovel
