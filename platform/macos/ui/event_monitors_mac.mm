#include "platform/macos/ui/event_monitors_mac.h"

#include "platform/macos/bridge/entry.h"
#include "platform/macos/ui/appkit_values.h"

#include <memory>
#include <utility>

namespace trovel {

Registration EventMonitorsMac::addLocalKeyDownMonitor(KeyDownHandler handler) {
    auto const shared = std::make_shared<KeyDownHandler>(std::move(handler));
    std::weak_ptr<KeyDownHandler> const weak = shared;
    id const monitor = [NSEvent
        addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                     handler:^NSEvent* _Nullable(NSEvent* _Nonnull event) {
                                       // The handler may end its own registration.
                                       auto const kept = weak.lock();
                                       if (!kept) return event;
                                       auto const verdict =
                                           enter([&] { return (*kept)(toKeyEvent(event)); });
                                       return verdict == MonitorVerdict::swallow ? nil : event;
                                     }];
    if (monitor == nil) return Registration();
    return Registration([monitor, shared] { [NSEvent removeMonitor:monitor]; });
}

} // namespace trovel
