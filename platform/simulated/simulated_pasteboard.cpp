#include "platform/simulated/simulated_pasteboard.h"

#include "platform/simulated/simulated_pixels.h"

#include <utility>

namespace trovel {

void SimulatedPasteboard::replace(PasteboardContents contents) {
    ++changeCount_;
    contents_ = std::move(contents);
    image_ = {};
}

void SimulatedPasteboard::clearContents() {
    journal_.record(effect::PasteboardCleared{});
    replace({});
}

bool SimulatedPasteboard::writeImage(Image const& image) {
    if (faults_.strikes(Operation::writePicture)) {
        replace({});
        return false;
    }
    auto const picture = pictureOf(image);
    journal_.record(effect::PictureWritten{picture});
    replace(picture);
    image_ = image;
    return true;
}

bool SimulatedPasteboard::writeText(std::string_view text) {
    if (faults_.strikes(Operation::writeText)) {
        replace({});
        return false;
    }
    journal_.record(effect::TextWritten{std::string(text)});
    replace(std::string(text));
    return true;
}

} // namespace trovel
