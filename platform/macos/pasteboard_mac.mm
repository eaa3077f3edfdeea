#include "platform/macos/pasteboard_mac.h"

#include "platform/macos/image_mac.h"

namespace trovel {

void PasteboardMac::clearContents() {
    [NSPasteboard.generalPasteboard clearContents];
}

bool PasteboardMac::writeImage(Image const& image) {
    return [NSPasteboard.generalPasteboard writeObjects:@[ toNSImage(image) ]];
}

} // namespace trovel
