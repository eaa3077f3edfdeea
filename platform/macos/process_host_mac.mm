#include "platform/macos/process_host_mac.h"

#include "platform/macos/bridge/convert.h"

namespace trovel {

std::int32_t ProcessHostMac::processIdentifier() const {
    return NSProcessInfo.processInfo.processIdentifier;
}

std::string ProcessHostMac::bundlePath() const {
    return fromNSString(NSBundle.mainBundle.bundlePath);
}

bool ProcessHostMac::isSystemAtLeast(int majorVersion, int minorVersion) const {
    NSOperatingSystemVersion const version{majorVersion, minorVersion, 0};
    return [NSProcessInfo.processInfo isOperatingSystemAtLeastVersion:version];
}

bool ProcessHostMac::startChild(std::string const& executable,
                                std::span<std::string const> arguments) {
    NSMutableArray<NSString*>* const list = [NSMutableArray array];
    for (auto const& argument : arguments)
        [list addObject:toNSString(argument)];
    NSTask* const task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:toNSString(executable) isDirectory:NO];
    task.arguments = list;
    return [task launchAndReturnError:nil];
}

} // namespace trovel
