#include "platform/linux/pictures/image_encoder_linux.h"

#include "platform/linux/pictures/captured_image.h"

namespace trovel {

ByteBuffer ImageEncoderLinux::pngRepresentation(Image const& image) {
    auto const* const captured = dynamic_cast<CapturedImage const*>(image.pixels.get());
    return captured != nullptr ? captured->pngData() : nullptr;
}

} // namespace trovel
