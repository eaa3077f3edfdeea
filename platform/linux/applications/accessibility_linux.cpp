#include "platform/linux/applications/accessibility_linux.h"

#include "platform/linux/applications/application_groups.h"

namespace trovel {

namespace {

class WindowLinux final : public AccessibilityWindow {
public:
    WindowLinux(ApplicationGroups& groups, WindowId window) : groups_(groups), window_(window) {}

    std::optional<Point> position() const override {
        auto const frame = groups_.frame(window_);
        if (!frame) return std::nullopt;
        return Point{frame->x, frame->y};
    }

    std::optional<Size> size() const override {
        auto const frame = groups_.frame(window_);
        if (!frame) return std::nullopt;
        return Size{frame->width, frame->height};
    }

private:
    ApplicationGroups& groups_;
    WindowId window_;
};

} // namespace

Accessibility::WindowPtr AccessibilityLinux::focusedWindow(std::int32_t processIdentifier) const {
    auto const group = groups_.withProcessIdentifier(processIdentifier);
    if (!group) return nullptr;
    return std::make_shared<WindowLinux>(groups_, group->windows.front());
}

std::optional<std::vector<Accessibility::WindowPtr>>
AccessibilityLinux::windows(std::int32_t processIdentifier) const {
    auto const group = groups_.withProcessIdentifier(processIdentifier);
    if (!group) return std::nullopt;
    std::vector<WindowPtr> windows;
    for (auto const window : group->windows) {
        windows.push_back(std::make_shared<WindowLinux>(groups_, window));
    }
    return windows;
}

} // namespace trovel
