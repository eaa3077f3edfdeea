#include "tests/macos/run/fakes/run_loop.h"

#include "tests/macos/run/fakes/mac.h"
#include "tests/macos/run/runtime/runtime.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace fakes {

Modes modesOf(NSString* name) {
    auto const text = toText(name);
    if (text == "kCFRunLoopDefaultMode") return kDefaultMode;
    if (text == "NSModalPanelRunLoopMode") return kModalMode;
    if (text == "NSEventTrackingRunLoopMode") return kTrackingMode;
    if (text == "kCFRunLoopCommonModes") return kCommonModes;
    objc::fatal("no run-loop mode is called " + text);
}

void RunLoop::perform(Modes modes, Block block) {
    std::scoped_lock const lock(mutex_);
    performed_.push_back({modes, block});
}

void RunLoop::addTimer(NSTimer* timer, Modes modes) {
    timer->due_ = clock_.now() + timer->interval_;
    timer->order_ = timerCount_++;
    timers_.push_back({timer, modes, false});
}

void RunLoop::removeTimer(NSTimer* timer) {
    std::erase_if(timers_, [timer](auto const& each) { return each.timer == timer; });
}

void RunLoop::postEvent(std::function<void()> dispatch) {
    events_.push_back(std::move(dispatch));
}

void RunLoop::later(Time delay, std::function<void()> happening) {
    Time const due = clock_.now() + delay;
    std::scoped_lock const lock(mutex_);
    happenings_.push_back({due, std::move(happening)});
}

bool RunLoop::run(Modes mode, Predicate const& isOver, std::optional<Time> limit) {
    // Long enough for everything that waits on purpose.
    constexpr Time kPatience = std::chrono::hours(1);
    Time const end = clock_.now() + limit.value_or(kPatience);
    wakeUp();
    while (!isOver()) {
        clock_.settle();
        if (turn(mode)) continue;
        isAwake_ = false;
        auto const next = nextMoment(mode);
        if (!next || *next > end) {
            if (!limit) objc::fatal("the run loop waits for what never happens");
            clock_.advanceTo(end);
            return isOver();
        }
        clock_.advanceTo(*next);
    }
    return true;
}

void RunLoop::clear() {
    performed_.clear();
    timers_.clear();
    events_.clear();
    happenings_.clear();
}

void RunLoop::drain() {
    run(kDefaultMode, [] { return false; }, Time{});
}

bool RunLoop::turn(Modes mode) {
    @autoreleasepool {
        return happen() || runBlocks(mode) || dispatchEvent() || fireTimer(mode) ||
               mac().displayIfNeeded();
    }
}

bool RunLoop::happen() {
    std::function<void()> happening;
    {
        std::scoped_lock const lock(mutex_);
        auto const first = std::ranges::min_element(happenings_, {}, &Happening::due);
        if (first == happenings_.end() || first->due > clock_.now()) return false;
        happening = std::move(first->happen);
        happenings_.erase(first);
    }
    happening();
    return true;
}

// The loop sets aside all the blocks that it finds before it runs the first: a loop inside one of
// them does not see the others (CFRunLoop.c, __CFRunLoopDoBlocks).
bool RunLoop::runBlocks(Modes mode) {
    if (!isAwake_) return false;
    std::deque<Performed> aside;
    {
        std::scoped_lock const lock(mutex_);
        aside.swap(performed_);
    }
    std::deque<Performed> left;
    bool didRun = false;
    for (; !aside.empty(); aside.pop_front()) {
        if ((aside.front().modes & mode) == 0) {
            left.push_back(aside.front());
            continue;
        }
        @autoreleasepool {
            aside.front().block();
        }
        didRun = true;
    }
    std::scoped_lock const lock(mutex_);
    performed_.insert(performed_.begin(), left.begin(), left.end());
    return didRun;
}

bool RunLoop::dispatchEvent() {
    if (events_.empty()) return false;
    auto const dispatch = std::move(events_.front());
    events_.pop_front();
    wakeUp();
    dispatch();
    return true;
}

RunLoop::Scheduled* RunLoop::firstTimer(Modes mode) {
    Scheduled* first = nullptr;
    for (auto& each : timers_) {
        if ((each.modes & mode) == 0 || each.isFiring) continue;
        if (first == nullptr || std::pair(each.timer->due_, each.timer->order_) <
                                    std::pair(first->timer->due_, first->timer->order_)) {
            first = &each;
        }
    }
    return first;
}

// A timer that repeats does not fire while it is firing, and fires once for all the moments that
// it missed (NSTimer, "Repeating Versus Nonrepeating Timers").
bool RunLoop::fireTimer(Modes mode) {
    auto* const first = firstTimer(mode);
    if (first == nullptr || first->timer->due_ > clock_.now()) return false;
    wakeUp();
    NSTimer* const timer = first->timer;
    first->isFiring = true;
    auto const block = timer->block_;
    block(timer);
    if (!timer->repeats_) [timer invalidate];
    while (timer->due_ <= clock_.now())
        timer->due_ += std::max(timer->interval_, Time(1));
    for (auto& each : timers_) {
        if (each.timer == timer) each.isFiring = false;
    }
    return true;
}

std::optional<Time> RunLoop::nextMoment(Modes mode) {
    auto next = clock_.firstDeadline();
    auto const consider = [&](Time time) {
        if (!next || time < *next) next = time;
    };
    {
        std::scoped_lock const lock(mutex_);
        for (auto const& each : happenings_)
            consider(each.due);
    }
    if (auto* const first = firstTimer(mode)) consider(first->timer->due_);
    return next;
}

} // namespace fakes

NSRunLoopMode const NSDefaultRunLoopMode = @"kCFRunLoopDefaultMode";
NSRunLoopMode const NSModalPanelRunLoopMode = @"NSModalPanelRunLoopMode";
NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";
CFRunLoopMode const kCFRunLoopCommonModes = (__bridge CFStringRef) @"kCFRunLoopCommonModes";

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block {
    using Seconds = std::chrono::duration<double>;
    NSTimer* const timer = [[NSTimer alloc] init];
    timer->block_ = block;
    timer->interval_ = std::chrono::round<fakes::Time>(Seconds(interval));
    timer->repeats_ = repeats;
    timer->isValid_ = YES;
    return timer;
}

// "The receiver ... releases its references to the block, and the run loop its own to the timer."
- (void)invalidate {
    if (!isValid_) return;
    isValid_ = NO;
    block_ = nil;
    fakes::mac().runLoop.removeTimer(self);
}

@end

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop {
    return [[NSRunLoop alloc] init];
}

- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
    if (timer->isValid_) fakes::mac().runLoop.addTimer(timer, fakes::modesOf(mode));
}

- (void)performInModes:(NSArray<NSRunLoopMode>*)modes block:(void (^)(void))block {
    fakes::Modes all = 0;
    for (NSString* mode in modes)
        all |= fakes::modesOf(mode);
    fakes::mac().runLoop.perform(all, block);
}

@end

extern "C" {

CFRunLoopRef CFRunLoopGetMain() {
    static int const mainLoop = 0;
    return reinterpret_cast<CFRunLoopRef>(const_cast<int*>(&mainLoop));
}

// "This method enqueues the block only and does not automatically wake up the specified run loop"
// (CFRunLoopPerformBlock).
void CFRunLoopPerformBlock(CFRunLoopRef, CFTypeRef mode, void (^block)(void)) {
    fakes::mac().runLoop.perform(fakes::modesOf((__bridge NSString*)mode), block);
}

void CFRunLoopWakeUp(CFRunLoopRef) {
    fakes::mac().runLoop.wakeUp();
}
}
