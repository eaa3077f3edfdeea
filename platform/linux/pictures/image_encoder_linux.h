#pragma once

#include "platform/image_encoder.h"

namespace trovel {

/// Hands out the PNG that a captured picture turns itself into.
class ImageEncoderLinux final : public ImageEncoder {
public:
    ByteBuffer pngRepresentation(Image const& image) override;
};

} // namespace trovel
