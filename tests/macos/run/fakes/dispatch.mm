#include "tests/macos/run/fakes/foundation.h"
#include "tests/macos/run/fakes/mac.h"

#include <deque>
#include <thread>

// Grand Central Dispatch: each serial queue has a thread as long as it has something to do.

/// A serial queue.
@interface FakeQueue : NSObject {
@public
    std::mutex mutex_;
    std::deque<dispatch_block_t> blocks_;
    bool isRunning_;
}
@end

@implementation FakeQueue
@end

/// A counting semaphore, on virtual time.
@interface FakeSemaphore : NSObject {
@public
    intptr_t count_; // changed while the clock is locked
}
@end

@implementation FakeSemaphore
@end

namespace {

/// Runs what is in the queue, in order, each block in a pool of its own.
void work(FakeQueue* _Nonnull queue) {
    for (;;) {
        @autoreleasepool {
            dispatch_block_t block = nil;
            {
                std::scoped_lock const lock(queue->mutex_);
                if (queue->blocks_.empty()) {
                    queue->isRunning_ = false;
                    return;
                }
                block = queue->blocks_.front();
                queue->blocks_.pop_front();
            }
            block();
        }
    }
}

} // namespace

extern "C" {

dispatch_queue_t dispatch_queue_create(char const*, dispatch_queue_attr_t) {
    return static_cast<dispatch_queue_t>(static_cast<id>([[FakeQueue alloc] init]));
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    FakeQueue* fake = static_cast<FakeQueue*>(static_cast<id>(queue));
    {
        std::scoped_lock const lock(fake->mutex_);
        fake->blocks_.push_back(block);
        if (std::exchange(fake->isRunning_, true)) return;
    }
    auto* const clock = &fakes::mac().clock;
    clock->threadBegins();
    std::thread([fake, clock]() mutable {
        work(fake);
        fake = nil;
        clock->threadEnds();
    }).detach();
}

dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) {
    FakeSemaphore* const semaphore = [[FakeSemaphore alloc] init];
    semaphore->count_ = value;
    return static_cast<dispatch_semaphore_t>(static_cast<id>(semaphore));
}

intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
    FakeSemaphore* const fake = static_cast<FakeSemaphore*>(static_cast<id>(semaphore));
    fakes::mac().clock.change([fake] { ++fake->count_; });
    return 0;
}

// "Returns zero on success, or non-zero if the timeout occurred." A time counts from now.
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout) {
    FakeSemaphore* const fake = static_cast<FakeSemaphore*>(static_cast<id>(semaphore));
    auto& clock = fakes::mac().clock;
    constexpr dispatch_time_t kForever = ~0ULL;
    std::optional<fakes::Time> deadline;
    if (timeout != kForever) deadline = fakes::Time(timeout);
    auto const isSignalled = [fake] { return fake->count_ > 0; };
    if (!clock.wait(isSignalled, deadline)) return 1;
    clock.change([fake] { --fake->count_; });
    return 0;
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
    auto const base =
        when == DISPATCH_TIME_NOW ? fakes::mac().clock.now().count() : static_cast<int64_t>(when);
    return static_cast<dispatch_time_t>(base + delta);
}
}
