#include "platform/linux/qt/animator_linux.h"

#include <utility>

namespace trovel {

void AnimatorLinux::runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) {
    auto const outer = std::exchange(duration_, duration);
    body();
    duration_ = outer;
}

} // namespace trovel
