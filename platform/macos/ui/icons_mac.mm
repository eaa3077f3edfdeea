#include "platform/macos/ui/icons_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/image_mac.h"
#include "platform/running_application.h"

#include <utility>

namespace trovel {

namespace {

/// The picture that fits `size` points on the finest of screens; nothing for no image.
std::optional<ApplicationIcon> toIcon(NSImage* _Nullable image, double size) {
    constexpr double kFinestScale = 2;
    NSRect pixels = NSMakeRect(0, 0, size * kFinestScale, size * kFinestScale);
    // The picture is borrowed from the image.
    CFOwner<CGImageRef> picture(CGImageRetain([image CGImageForProposedRect:&pixels
                                                                    context:nil
                                                                      hints:nil]));
    if (!picture) return std::nullopt;
    return ApplicationIcon{{std::make_shared<PixelImageMac>(std::move(picture)), {size, size}}};
}

} // namespace

bool IconsMac::hasSystemSymbol(std::string_view name) const {
    return [NSImage imageWithSystemSymbolName:toNSString(name) accessibilityDescription:nil] != nil;
}

std::optional<ApplicationIcon>
IconsMac::iconOfRunningApplication(RunningApplication const& application, double size) const {
    NSRunningApplication* const native = [NSRunningApplication
        runningApplicationWithProcessIdentifier:application.processIdentifier];
    return toIcon(native.icon, size);
}

std::optional<ApplicationIcon>
IconsMac::iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const {
    NSWorkspace* const workspace = NSWorkspace.sharedWorkspace;
    NSString* const path =
        [workspace URLForApplicationWithBundleIdentifier:toNSString(bundleIdentifier)].path;
    return path != nil ? toIcon([workspace iconForFile:path], size) : std::nullopt;
}

} // namespace trovel
