#pragma once

#include "platform/byte_buffer.h"
#include "platform/image.h"

namespace trovel {

/// Turns pictures into files' contents. Main thread only.
class ImageEncoder {
public:
    ImageEncoder(ImageEncoder const&) = delete;
    ImageEncoder& operator=(ImageEncoder const&) = delete;

    /// The picture as a whole PNG file at its full pixel size; null when it cannot be encoded.
    [[nodiscard]] virtual ByteBuffer pngRepresentation(Image const& image) = 0;

protected:
    ImageEncoder() = default;
    ~ImageEncoder() = default;
};

} // namespace trovel
