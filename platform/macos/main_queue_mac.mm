#include "platform/macos/main_queue_mac.h"

#include "platform/macos/entry.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <utility>

namespace trovel {

namespace {

using SharedBlock = std::shared_ptr<MainQueue::Block>;

void run(SharedBlock const& block) {
    @autoreleasepool {
        enter(*block);
    }
}

NSTimer* _Nonnull schedule(MainQueue::Duration interval, bool repeats, MainQueue::Block block) {
    // Native blocks copy what they capture, so they share the function instead.
    auto const shared = std::make_shared<MainQueue::Block>(std::move(block));
    NSTimer* const timer =
        [NSTimer timerWithTimeInterval:std::chrono::duration<double>(interval).count()
                               repeats:repeats
                                 block:^(NSTimer* _Nonnull) {
                                   run(shared);
                                 }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    return timer;
}

} // namespace

void MainQueueMac::post(Block block) {
    // Core Foundation's form of -[NSRunLoop performInModes:block:], because NSRunLoop must not be
    // used from other threads. It does not wake a sleeping run loop by itself.
    auto const shared = std::make_shared<Block>(std::move(block));
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      run(shared);
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

void MainQueueMac::after(Duration delay, Block block) {
    schedule(delay, false, std::move(block));
}

Registration MainQueueMac::every(Duration interval, Block block) {
    NSTimer* const timer = schedule(interval, true, std::move(block));
    return Registration([timer] { [timer invalidate]; });
}

} // namespace trovel
