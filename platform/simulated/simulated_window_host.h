#pragma once

#include "platform/font.h"
#include "platform/simulated/journal.h"
#include "platform/ui/canvas_recording.h"
#include "platform/ui/window_host.h"

#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace trovel {

class View;
class Window;

/// The size of a text's box on the simulated desktop: every character is 0.6 of the font's size
/// wide, and a line is 1.2 of it high.
[[nodiscard]] Size simulatedTextSize(std::string_view text, Font font);

/// The mirrors of the program's windows: which are on the screen, in which order, which has the
/// keyboard, and what their canvases show.
class SimulatedWindowHost final : public WindowHost {
public:
    SimulatedWindowHost(SimulatedMainQueue& queue, Journal& journal);
    ~SimulatedWindowHost();

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override;

    /// The windows on the screen, front to back.
    [[nodiscard]] std::vector<Window*> visibleWindows() const;
    /// The frontmost window that takes the mouse at a global screen point; null when none does.
    [[nodiscard]] Window* windowAt(Point point) const;

    /// The window to which the program sends its keys; null when there is none. Whether the
    /// program gets any keys is the desktop's affair: see setActive.
    [[nodiscard]] Window* keyWindow() const { return keyWindow_; }
    /// Gives the program's keyboard to `window` if it may have it; null takes it away.
    void makeKey(Window* window);

    /// Whether the program's key window has the keyboard of the desktop.
    void setActive(bool isActive);

    /// What the view showed when it was last displayed; empty before that.
    [[nodiscard]] std::vector<CanvasOperation> drawing(View const& view) const;
    /// How often views were displayed.
    [[nodiscard]] int displayCount() const { return displayCount_; }

private:
    class Peer;
    using WeakView = std::weak_ptr<View const>;

    void windowDidChange(Peer& peer);
    void putInFrontOfLevel(Peer& peer);
    void orderFront(Peer& peer);
    void orderOut(Peer& peer);
    void forget(Peer& peer);
    void needsDisplay(View const& view);
    void needsDisplayWithin(View const& view);
    void display();

    SimulatedMainQueue& queue_;
    Journal& journal_;
    std::vector<Peer*> onScreen_; // front to back
    Window* keyWindow_ = nullptr;
    bool isActive_ = true;
    std::vector<WeakView> dirtyViews_;
    std::map<WeakView, std::vector<CanvasOperation>, std::owner_less<>> drawings_;
    int displayCount_ = 0;
    int nextWindow_ = 1;
};

} // namespace trovel
