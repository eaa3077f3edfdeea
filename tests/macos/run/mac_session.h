#pragma once

#include "platform/backend.h"
#include "platform/platform.h"
#include "tests/macos/run/fakes/mac.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace trovel {

/// The macOS backend on a Mac of the fakes' own, from its start to its end. When it has ended,
/// nothing that was made in between may be left: a test fails that leaves anything behind.
class MacSession {
public:
    using Duration = std::chrono::nanoseconds;

    MacSession();
    MacSession(MacSession const&) = delete;
    MacSession& operator=(MacSession const&) = delete;
    ~MacSession();

    [[nodiscard]] Platform platform() { return backend_->platform(); }

    /// Runs the main loop for so long, or until the predicate holds; false when it did not within
    /// so long.
    void wait(Duration duration);
    [[nodiscard]] bool waitUntil(std::function<bool()> const& predicate, Duration limit);

    /// Runs the main loop until nothing more is to be done at this moment.
    void settle();

private:
    std::map<std::string, long> before_; // what lives as long as the process
    void* _Nonnull pool_;
    std::unique_ptr<Backend> backend_;
    int depth_ = 0; // of the waiting inside of what happens meanwhile
};

} // namespace trovel
