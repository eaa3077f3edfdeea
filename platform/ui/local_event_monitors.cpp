#include "platform/ui/local_event_monitors.h"

#include <utility>
#include <vector>

namespace trovel {

LocalEventMonitors::LocalEventMonitors() : handlers_(std::make_shared<Handlers>()) {}
LocalEventMonitors::~LocalEventMonitors() = default;

Registration LocalEventMonitors::addLocalKeyDownMonitor(KeyDownHandler handler) {
    auto const key = nextKey_++;
    handlers_->emplace(key, std::move(handler));
    return Registration([weak = std::weak_ptr(handlers_), key] {
        if (auto handlers = weak.lock()) handlers->erase(key);
    });
}

bool LocalEventMonitors::swallows(KeyEvent const& event) const {
    // A handler may add and remove monitors, so it is copied and the walk starts from the keys.
    std::vector<std::uint64_t> keys;
    for (auto const& [key, handler] : *handlers_) keys.push_back(key);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        auto const found = handlers_->find(*key);
        if (found == handlers_->end()) continue;
        auto const handler = found->second;
        if (handler(event) == MonitorVerdict::swallow) return true;
    }
    return false;
}

} // namespace trovel
