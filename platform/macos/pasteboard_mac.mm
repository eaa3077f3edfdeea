#include "platform/macos/pasteboard_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/image_mac.h"

namespace trovel {

void PasteboardMac::clearContents() {
    [NSPasteboard.generalPasteboard clearContents];
}

bool PasteboardMac::writeImage(Image const& image) {
    return [NSPasteboard.generalPasteboard writeObjects:@[ toNSImage(image) ]];
}

bool PasteboardMac::writeText(std::string_view text) {
    return [NSPasteboard.generalPasteboard setString:toNSString(text)
                                             forType:NSPasteboardTypeString];
}

} // namespace trovel
