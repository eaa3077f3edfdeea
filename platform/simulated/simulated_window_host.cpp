#include "platform/simulated/simulated_window_host.h"

#include "platform/ui/view.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <utility>

namespace trovel {

class SimulatedWindowHost::Peer final : public WindowPeer {
public:
    Peer(SimulatedWindowHost& host, Window& window, int number)
        : host_(host), window_(window), number_(number) {}
    ~Peer() override { host_.forget(*this); }

    void windowDidChange() override { host_.windowDidChange(*this); }
    void viewDidChange(View const& view) override { host_.needsDisplayWithin(view); }
    void viewNeedsDisplay(View const& view) override { host_.needsDisplay(view); }
    void orderFrontRegardless() override { host_.orderFront(*this); }
    void makeKeyAndOrderFront() override {
        host_.orderFront(*this);
        host_.makeKey(&window_);
    }
    void orderOut() override { host_.orderOut(*this); }
    void center() override { host_.journal_.record(effect::WindowCentered{number_}); }

    [[nodiscard]] Window& window() const { return window_; }
    [[nodiscard]] int number() const { return number_; }

private:
    SimulatedWindowHost& host_;
    Window& window_;
    int number_;
};

Size simulatedTextSize(std::string_view text, Font font) {
    // Every byte but the later ones of a UTF-8 sequence begins a character.
    auto const characters = std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U; });
    return {static_cast<double>(characters) * font.size * 0.6, font.size * 1.2};
}

SimulatedWindowHost::SimulatedWindowHost(SimulatedMainQueue& queue, Journal& journal)
    : queue_(queue), journal_(journal) {}

SimulatedWindowHost::~SimulatedWindowHost() = default;

std::unique_ptr<WindowPeer> SimulatedWindowHost::makePeer(Window& window) {
    return std::make_unique<Peer>(*this, window, nextWindow_++);
}

std::vector<Window*> SimulatedWindowHost::visibleWindows() const {
    std::vector<Window*> windows;
    for (auto const* peer : onScreen_) windows.push_back(&peer->window());
    return windows;
}

Window* SimulatedWindowHost::windowAt(Point point) const {
    for (auto const* peer : onScreen_) {
        auto const& attributes = peer->window().attributes();
        auto const& frame = attributes.contentRect;
        if (attributes.ignoresMouseEvents) continue;
        if (point.x >= frame.minX() && point.x <= frame.maxX() && point.y >= frame.minY() &&
            point.y <= frame.maxY()) {
            return &peer->window();
        }
    }
    return nullptr;
}

void SimulatedWindowHost::makeKey(Window* window) {
    if (window != nullptr && !window->canBecomeKey()) return;
    if (window == keyWindow_) return;
    auto* const former = std::exchange(keyWindow_, window);
    if (former != nullptr) former->receiveKeyState(false);
    if (window == nullptr) return;
    auto const isMirrored = [window](auto const* peer) { return &peer->window() == window; };
    if (auto const found = std::ranges::find_if(onScreen_, isMirrored); found != onScreen_.end()) {
        journal_.record(effect::MadeKey{(*found)->number()});
    }
    window->receiveKeyState(isActive_);
}

void SimulatedWindowHost::setActive(bool isActive) {
    if (std::exchange(isActive_, isActive) == isActive) return;
    if (keyWindow_ != nullptr) keyWindow_->receiveKeyState(isActive);
}

void SimulatedWindowHost::putInFrontOfLevel(Peer& peer) {
    std::erase(onScreen_, &peer);
    auto const level = peer.window().attributes().level;
    auto const place = std::ranges::find_if(onScreen_, [level](Peer const* other) {
        return other->window().attributes().level <= level;
    });
    onScreen_.insert(place, &peer);
}

void SimulatedWindowHost::windowDidChange(Peer& peer) {
    if (std::ranges::find(onScreen_, &peer) != onScreen_.end()) putInFrontOfLevel(peer);
    if (auto const& content = peer.window().contentView()) needsDisplayWithin(*content);
}

void SimulatedWindowHost::orderFront(Peer& peer) {
    journal_.record(effect::OrderedFront{peer.number()});
    putInFrontOfLevel(peer);
    if (auto const& content = peer.window().contentView()) needsDisplayWithin(*content);
}

void SimulatedWindowHost::orderOut(Peer& peer) {
    if (std::erase(onScreen_, &peer) == 0) return;
    journal_.record(effect::OrderedOut{peer.number()});
    if (keyWindow_ != &peer.window()) return;
    // The keyboard goes to the next window of the program that can have it.
    auto const next = std::ranges::find_if(
        onScreen_, [](Peer const* other) { return other->window().canBecomeKey(); });
    makeKey(next != onScreen_.end() ? &(*next)->window() : nullptr);
}

void SimulatedWindowHost::forget(Peer& peer) {
    // The window is being destroyed: no word to it any more.
    if (keyWindow_ == &peer.window()) keyWindow_ = nullptr;
    orderOut(peer);
}

void SimulatedWindowHost::needsDisplay(View const& view) {
    if (dirtyViews_.empty()) queue_.post([this] { display(); });
    auto const isSame = [&view](WeakView const& dirty) {
        return !dirty.owner_before(view.weak_from_this()) &&
               !view.weak_from_this().owner_before(dirty);
    };
    if (std::ranges::none_of(dirtyViews_, isSame)) dirtyViews_.push_back(view.weak_from_this());
}

void SimulatedWindowHost::needsDisplayWithin(View const& view) {
    needsDisplay(view);
    for (auto const& subview : view.subviews()) needsDisplayWithin(*subview);
}

void SimulatedWindowHost::display() {
    std::erase_if(drawings_, [](auto const& drawing) { return drawing.first.expired(); });
    for (auto const& weak : std::exchange(dirtyViews_, {})) {
        auto const view = weak.lock();
        auto const* window = view ? view->window() : nullptr;
        if (window == nullptr || !window->isVisible()) continue;
        switch (view->kind()) {
        case ViewKind::container:
        case ViewKind::label:
        case ViewKind::button:
        case ViewKind::imageView:
        case ViewKind::separator:
        case ViewKind::visualEffect: break;
        case ViewKind::canvas: {
            CanvasRecording recording(simulatedTextSize);
            static_cast<CanvasView const&>(*view).draw(recording);
            drawings_.insert_or_assign(weak, recording.operations());
            ++displayCount_;
        }
        }
    }
}

std::vector<CanvasOperation> SimulatedWindowHost::drawing(View const& view) const {
    auto const found = drawings_.find(view.weak_from_this());
    return found != drawings_.end() ? found->second : std::vector<CanvasOperation>();
}

} // namespace trovel
