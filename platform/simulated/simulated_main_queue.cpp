#include "platform/simulated/simulated_main_queue.h"

#include <algorithm>
#include <utility>

namespace trovel {

bool SimulatedMainQueue::isLater(Entry const& left, Entry const& right) {
    return left.due != right.due ? left.due > right.due : left.sequence > right.sequence;
}

void SimulatedMainQueue::push(Duration due, Block block, std::shared_ptr<Timer> const& timer) {
    std::lock_guard const lock(mutex_);
    heap_.push_back({due, nextSequence_++, std::move(block), timer, timer != nullptr});
    std::ranges::push_heap(heap_, isLater);
}

void SimulatedMainQueue::post(Block block) {
    std::lock_guard const lock(mutex_);
    heap_.push_back({now_, nextSequence_++, std::move(block), {}, false});
    std::ranges::push_heap(heap_, isLater);
}

void SimulatedMainQueue::after(Duration delay, Block block) {
    push(now_ + std::max(delay, Duration::zero()), std::move(block), nullptr);
}

Registration SimulatedMainQueue::every(Duration interval, Block block) {
    auto timer = std::make_shared<Timer>(Timer{interval, std::move(block)});
    push(now_ + interval, nullptr, timer);
    // The queue holds the timer weakly: the registration is what keeps it going.
    return Registration([timer]() mutable { timer.reset(); });
}

std::optional<SimulatedMainQueue::Entry> SimulatedMainQueue::popDue(Duration latest) {
    std::lock_guard const lock(mutex_);
    while (!heap_.empty() && heap_.front().due <= latest) {
        std::ranges::pop_heap(heap_, isLater);
        Entry entry = std::move(heap_.back());
        heap_.pop_back();
        if (entry.repeats && entry.timer.expired()) continue;
        now_ = std::max(now_, entry.due);
        return entry;
    }
    return std::nullopt;
}

void SimulatedMainQueue::run(Entry const& entry) {
    if (!entry.repeats) {
        entry.block();
        return;
    }
    // Held here, because the block may end its own registration.
    auto const timer = entry.timer.lock();
    push(entry.due + timer->interval, nullptr, timer);
    timer->block();
}

bool SimulatedMainQueue::step(Duration latest) {
    {
        auto const entry = popDue(latest);
        if (!entry) return false;
        run(*entry);
    } // what the block holds goes before anybody looks
    if (observer_) observer_();
    return true;
}

void SimulatedMainQueue::advance(Duration duration) {
    auto const end = now_ + duration;
    while (step(end)) {
    }
    std::lock_guard const lock(mutex_);
    now_ = std::max(now_, end);
}

bool SimulatedMainQueue::advanceUntil(std::function<bool()> const& predicate, Duration limit) {
    auto const end = now_ + limit;
    while (!predicate()) {
        if (step(end)) continue;
        std::lock_guard const lock(mutex_);
        now_ = std::max(now_, end);
        return false;
    }
    return true;
}

void SimulatedMainQueue::holdUp(Duration duration) {
    std::lock_guard const lock(mutex_);
    now_ += duration;
}

void SimulatedMainQueue::clear() {
    std::vector<Entry> dropped; // destroyed outside the lock: what blocks hold may use the queue
    std::lock_guard const lock(mutex_);
    dropped.swap(heap_);
}

std::size_t SimulatedMainQueue::pending() const {
    std::lock_guard const lock(mutex_);
    auto const isLive = [](Entry const& entry) { return !entry.repeats || !entry.timer.expired(); };
    return static_cast<std::size_t>(std::ranges::count_if(heap_, isLive));
}

} // namespace trovel
