#pragma once

#include "platform/platform.h"
#include "platform/registration.h"
#include "platform/screens.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace trovel {

class Window;

/// What the user selected.
struct SelectionResult {
    /// Global screen points; may reach beyond the screen.
    Rect rect;
    /// The screen on which the drag was made.
    Screen screen;
};

/// Covers every screen with a dimmed overlay, lets the user drag a rectangle out of it and reports
/// once. Held by shared_ptr: released before it has reported, it falls silent. Main thread only.
class RegionSelectionController : public std::enable_shared_from_this<RegionSelectionController> {
public:
    using Completion = std::function<void(std::optional<SelectionResult>)>;

    explicit RegionSelectionController(Platform const& platform) : platform_(platform) {}

    /// Shows the overlay. `completion` runs once, when no overlay window is on the screen any more,
    /// with nothing when the user cancelled, let the time run out or has no screen. Called once.
    void begin(Completion completion);

    /// Ends the session; the windows go in the next turn of the main loop. Later calls do nothing.
    void finish(std::optional<SelectionResult> result);

    /// One a screen, in the order of the screens; empty when finishing.
    [[nodiscard]] std::vector<std::shared_ptr<Window>> const& overlayWindows() const {
        return overlayWindows_;
    }

private:
    std::shared_ptr<Window> makeOverlayWindow(Screen const& screen);

    Platform platform_;
    std::vector<std::shared_ptr<Window>> overlayWindows_;
    Completion completion_;
    bool finished_ = false;
    Registration keyMonitor_;
};

} // namespace trovel
