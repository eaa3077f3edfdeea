#include "platform/macos/workspace_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/url_rules.h"

#import <AppKit/AppKit.h>

namespace trovel {

namespace {

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

std::vector<RunningApplication> fromNative(NSArray<NSRunningApplication*>* _Nonnull list) {
    std::vector<RunningApplication> applications;
    for (NSRunningApplication* application in list) {
        applications.push_back(fromNative(application));
    }
    return applications;
}

} // namespace

std::vector<RunningApplication> WorkspaceMac::runningApplications() const {
    return fromNative(NSWorkspace.sharedWorkspace.runningApplications);
}

std::optional<RunningApplication> WorkspaceMac::frontmostApplication() const {
    NSRunningApplication* const application = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (application == nil) return std::nullopt;
    return fromNative(application);
}

std::vector<RunningApplication>
WorkspaceMac::runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const {
    return fromNative([NSRunningApplication
        runningApplicationsWithBundleIdentifier:toNSString(bundleIdentifier)]);
}

void WorkspaceMac::openUrl(std::string_view url) {
    if (kindOfUrl(url) == UrlKind::invalid) return;
    NSURL* const native = [NSURL URLWithString:toNSString(url)];
    if (native != nil) [NSWorkspace.sharedWorkspace openURL:native];
}

} // namespace trovel
