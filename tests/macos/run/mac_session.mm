#include "tests/macos/run/mac_session.h"

#include "tests/macos/run/fakes/appkit.h"
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
    EXPECT_TRUE(fakes::application()->monitors_.empty()) << "an event monitor is left";
    objc_autoreleasePoolPop(pool_);
    fakes::endMac();
    for (auto const& [name, count] : objc::liveObjects()) {
        if (count != before_[name]) ADD_FAILURE() << count << " of " << name << " are left";
    }
}

void MacSession::wait(Duration duration) {
    static_cast<void>(waitUntil([] { return false; }, duration));
}

void MacSession::settle() {
    wait(Duration());
}

bool MacSession::waitUntil(std::function<bool()> const& predicate, Duration limit) {
    // The loop's own turns end with their pool; so does what the test did before the first of them.
    if (depth_++ == 0) {
        objc_autoreleasePoolPop(pool_);
        pool_ = objc_autoreleasePoolPush();
    }
    bool const isSo = fakes::mac().runLoop.run(fakes::kDefaultMode, predicate, limit);
    --depth_;
    return isSo;
}

} // namespace trovel
