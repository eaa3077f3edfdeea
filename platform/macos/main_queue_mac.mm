#include "platform/macos/main_queue_mac.h"

#include "platform/macos/bridge/entry.h"

#import <Foundation/Foundation.h>

#include <deque>
#include <mutex>
#include <utility>

namespace trovel {

struct MainQueueMac::Posted {
    std::mutex mutex;
    std::deque<Block> blocks;
};

namespace {

void run(MainQueue::Block const& block) {
    @autoreleasepool {
        enter(block);
    }
}

NSTimer* _Nonnull schedule(MainQueue::Duration interval, bool repeats, MainQueue::Block block) {
    // Native blocks copy what they capture, so they share the function instead.
    auto const shared = std::make_shared<MainQueue::Block>(std::move(block));
    NSTimer* const timer =
        [NSTimer timerWithTimeInterval:std::chrono::duration<double>(interval).count()
                               repeats:repeats
                                 block:^(NSTimer* _Nonnull) {
                                   run(*shared);
                                 }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    return timer;
}

} // namespace

MainQueueMac::MainQueueMac() : posted_(std::make_shared<Posted>()) {}

void MainQueueMac::post(Block block) {
    {
        std::scoped_lock const lock(posted_->mutex);
        posted_->blocks.push_back(std::move(block));
    }
    requestTurn(posted_);
}

void MainQueueMac::requestTurn(std::shared_ptr<Posted> posted) {
    auto const kept = std::move(posted);
    // Core Foundation's form of -[NSRunLoop performInModes:block:], because NSRunLoop must not be
    // used from other threads. It does not wake a sleeping run loop by itself.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      runNext(kept);
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

void MainQueueMac::runNext(std::shared_ptr<Posted> const& posted) {
    Block block;
    bool isLast = false;
    {
        std::scoped_lock const lock(posted->mutex);
        if (posted->blocks.empty()) return;
        block = std::move(posted->blocks.front());
        posted->blocks.pop_front();
        isLast = posted->blocks.empty();
    }
    // The run loop set aside all the requests that it found, so the loop of an alert that this
    // block shows needs one of its own for the others.
    if (!isLast) requestTurn(posted);
    run(block);
}

void MainQueueMac::after(Duration delay, Block block) {
    schedule(delay, false, std::move(block));
}

Registration MainQueueMac::every(Duration interval, Block block) {
    NSTimer* const timer = schedule(interval, true, std::move(block));
    return Registration([timer] { [timer invalidate]; });
}

} // namespace trovel
