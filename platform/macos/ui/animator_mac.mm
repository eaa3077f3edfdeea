#include "platform/macos/ui/animator_mac.h"

#include "platform/macos/bridge/entry.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

namespace trovel {

void AnimatorMac::runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) {
    // What was set before and has not been on the screen yet is where the change begins.
    [CATransaction flush];
    double const seconds = std::chrono::duration<double>(duration).count();
    auto const* const changes = &body; // the block is run before this call returns
    [NSAnimationContext runAnimationGroup:^(NSAnimationContext* _Nonnull context) {
      context.duration = seconds;
      context.allowsImplicitAnimation = YES;
      enter(*changes);
    }];
}

} // namespace trovel
