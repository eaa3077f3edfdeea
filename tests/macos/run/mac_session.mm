#include "tests/macos/run/mac_session.h"

#include "tests/macos/run/runtime/runtime.h"

#include <gtest/gtest.h>

namespace trovel {

MacSession::MacSession() : before_(objc::liveObjects()), pool_(objc_autoreleasePoolPush()) {
    fakes::startMac();
    auto made = makeBackend();
    if (made) backend_ = std::move(*made);
}

MacSession::~MacSession() {
    auto& mac = fakes::mac();
    backend_.reset();
    // What was to go at the end of an event, and what other threads still do.
    mac.captureService.neverAnswers = true;
    mac.runLoop.drain();
    mac.clock.settle();
    EXPECT_TRUE(mac.alerts.empty()) << "an alert is up at the end";
    objc_autoreleasePoolPop(pool_);
    fakes::endMac();
    for (auto const& [name, count] : objc::liveObjects()) {
        if (count != before_[name]) ADD_FAILURE() << count << " of " << name << " are left";
    }
}

void MacSession::wait(Duration duration) {
    fakes::mac().runLoop.run(fakes::kDefaultMode, [] { return false; }, duration);
}

void MacSession::settle() {
    fakes::mac().runLoop.drain();
}

bool MacSession::waitUntil(std::function<bool()> const& predicate, Duration limit) {
    return fakes::mac().runLoop.run(fakes::kDefaultMode, predicate, limit);
}

} // namespace trovel
