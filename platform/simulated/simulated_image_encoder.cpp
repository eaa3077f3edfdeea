#include "platform/simulated/simulated_image_encoder.h"

#include "platform/simulated/journal.h"
#include "platform/simulated/simulated_pixels.h"

#include <string>

namespace trovel {

std::vector<std::uint8_t> simulatedPng(Image const& image) {
    auto const text = toString(effect::PictureWritten{pictureOf(image)});
    return {text.begin(), text.end()};
}

ByteBuffer SimulatedImageEncoder::pngRepresentation(Image const& image) {
    if (faults_.strikes(Operation::encodePicture)) return nullptr;
    return std::make_shared<std::vector<std::uint8_t> const>(simulatedPng(image));
}

} // namespace trovel
