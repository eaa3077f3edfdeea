#pragma once

#include "platform/image_encoder.h"

namespace trovel {

/// AppKit's image representations. The size in points becomes the resolution that the file names.
class ImageEncoderMac final : public ImageEncoder {
public:
    ImageEncoderMac() = default;

    [[nodiscard]] ByteBuffer pngRepresentation(Image const& image) override;
};

} // namespace trovel
