#include "platform/macos/open_panels_mac.h"

#include "platform/macos/bridge/convert.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace trovel {

std::optional<std::string> OpenPanelsMac::runModal(OpenPanel const& panel) {
    NSOpenPanel* const native = [NSOpenPanel openPanel];
    native.title = toNSString(panel.title);
    native.canChooseFiles = panel.canChooseFiles;
    native.canChooseDirectories = panel.canChooseDirectories;
    native.allowsMultipleSelection = panel.allowsMultipleSelection;
    if (panel.applicationsOnly) native.allowedContentTypes = @[ UTTypeApplication ];
    native.directoryURL = [NSURL fileURLWithPath:toNSString(panel.directory) isDirectory:YES];
    if ([native runModal] != NSModalResponseOK) return std::nullopt;
    return optionalText(native.URL.path);
}

std::optional<ApplicationBundle> OpenPanelsMac::bundleAtPath(std::string const& path) const {
    NSURL* const url = [NSURL fileURLWithPath:toNSString(path) isDirectory:YES];
    NSBundle* const bundle = [NSBundle bundleWithURL:url];
    if (bundle == nil) return std::nullopt;
    return ApplicationBundle{optionalText(bundle.bundleIdentifier),
                             optionalText([bundle objectForInfoDictionaryKey:@"CFBundleName"])};
}

} // namespace trovel
