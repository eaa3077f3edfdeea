#include "platform/macos/workspace_mac.h"

#include "platform/macos/convert.h"

#import <AppKit/AppKit.h>

namespace trovel {

namespace {

std::optional<std::string> optionalText(NSString* _Nullable text) {
    if (text == nil) return std::nullopt;
    return fromNSString(text);
}

ActivationPolicy fromNative(NSApplicationActivationPolicy policy) {
    switch (policy) {
    case NSApplicationActivationPolicyRegular:
        return ActivationPolicy::regular;
    case NSApplicationActivationPolicyAccessory:
        return ActivationPolicy::accessory;
    case NSApplicationActivationPolicyProhibited:
        return ActivationPolicy::prohibited;
    }
    return ActivationPolicy::prohibited; // A policy that a later system adds.
}

RunningApplication fromNative(NSRunningApplication* _Nonnull application) {
    return {application.processIdentifier, optionalText(application.bundleIdentifier),
            optionalText(application.localizedName), fromNative(application.activationPolicy)};
}

} // namespace

std::vector<RunningApplication> WorkspaceMac::runningApplications() const {
    std::vector<RunningApplication> applications;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
        applications.push_back(fromNative(application));
    }
    return applications;
}

std::optional<RunningApplication> WorkspaceMac::frontmostApplication() const {
    NSRunningApplication* const application = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (application == nil) return std::nullopt;
    return fromNative(application);
}

} // namespace trovel
