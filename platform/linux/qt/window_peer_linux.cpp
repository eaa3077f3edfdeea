#include "platform/linux/qt/window_peer_linux.h"

#include "platform/linux/qt/accessible_view.h"
#include "platform/linux/qt/animator_linux.h"
#include "platform/linux/qt/push_button.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/view_painter.h"
#include "platform/linux/qt/window_widget.h"
#include "platform/ui/button.h"
#include "platform/ui/local_event_monitors.h"
#include "platform/ui/window.h"

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QPainter>
#include <QPalette>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovel {

namespace {

using namespace std::chrono_literals;

constexpr auto kFrameInterval = 16ms;

QColor backgroundOf(WindowAttributes const& attributes) {
    auto const usual = WindowAttributes{}.backgroundColor;
    auto const window = QApplication::palette().color(QPalette::Window);
    if (attributes.backgroundColor == usual) return window;
    auto const color = qtColor(attributes.backgroundColor);
    // Nothing shows through a window here: what is clear is the desktop's window colour.
    return color.alpha() == 0 ? window : color;
}

void appendTracking(View& view, Point point, std::vector<std::weak_ptr<View>>& found) {
    if (view.isHidden()) return;
    auto const& frame = view.frame();
    if (view.tracksPointer() && point.x >= frame.minX() && point.x < frame.maxX() &&
        point.y >= frame.minY() && point.y < frame.maxY()) {
        found.push_back(view.weak_from_this());
    }
    Point const inside{point.x - frame.x, point.y - frame.y};
    for (auto const& subview : view.subviews()) appendTracking(*subview, inside, found);
}

bool contains(std::vector<std::weak_ptr<View>> const& views, View const* view) {
    return std::ranges::any_of(views,
                               [view](auto const& each) { return each.lock().get() == view; });
}

} // namespace

/// What is kept of a view that is mirrored.
struct WindowPeerLinux::Node {
    LayerFade fade;
    bool isFading = false;
    std::uint64_t round = 0; // of the last walk that came by
    QRectF shownIn;          // the part of the window that its look covers
    PushButton* button = nullptr;
    AccessibleView* accessible = nullptr;
    std::string spoken;
};

WindowPeerLinux::WindowPeerLinux(Window& window, WindowServices const& services,
                                 ShownHandler onFront, ShownHandler onEnd)
    : window_(window), services_(services), onFront_(std::move(onFront)), onEnd_(std::move(onEnd)),
      native_(new WindowWidget(*this)), activation_(*native_, services.activateWindow) {
    services_.followAppearance();
    frames_.setInterval(kFrameInterval);
    frames_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&frames_, &QTimer::timeout, &frames_, [this] { tick(); });
    windowDidChange();
    // A better place to appear at than wherever the window manager finds room.
    center();
}

WindowPeerLinux::~WindowPeerLinux() {
    onEnd_(*this);
    for (auto& [view, node] : nodes_) silence(node);
    native_->detach();
}

void WindowPeerLinux::windowDidChange() {
    auto const& attributes = window_.attributes();
    // A task bar has no use for an entry without a name.
    native_->setWindowTitle(attributes.title.empty() ? QStringLiteral("Trovel")
                                                     : qtString(attributes.title));
    native_->setFixedSize(static_cast<int>(std::lround(attributes.contentRect.width)),
                          static_cast<int>(std::lround(attributes.contentRect.height)));
    mirrorTree();
    native_->update();
}

void WindowPeerLinux::viewDidChange(View const& view) {
    if (mirrorTree()) {
        native_->update();
    } else {
        update(view);
    }
}

void WindowPeerLinux::viewNeedsDisplay(View const& view) {
    update(view);
}

bool WindowPeerLinux::mirrorTree() {
    ++round_;
    hasNewViews_ = false;
    if (auto const& content = window_.contentView()) mirror(*content, false);
    bool hasLostViews = false;
    for (auto at = nodes_.begin(); at != nodes_.end();) {
        if (at->second.round == round_) {
            ++at;
            continue;
        }
        hasLostViews = true;
        forget(at->second);
        at = nodes_.erase(at);
    }
    return hasNewViews_ || hasLostViews;
}

void WindowPeerLinux::mirror(View& view, bool isHidden) {
    auto const [at, isNew] = nodes_.try_emplace(&view);
    auto& node = at->second;
    node.round = round_;
    hasNewViews_ = hasNewViews_ || isNew;
    auto const now = LayerFade::Clock::now();
    // What is new on the screen has nothing to fade from.
    auto const duration = isNew ? 0ns : services_.animator.duration();
    node.fade.setTarget(view.layer().value_or(LayerStyle{}), duration, now);
    if (node.fade.isRunningAt(now)) {
        node.isFading = true;
        if (!frames_.isActive()) frames_.start();
    }
    if (isNew) node.shownIn = lookOf(view, node);
    isHidden = isHidden || view.isHidden();
    if (view.kind() == ViewKind::button) mirrorButton(node, static_cast<Button&>(view), isHidden);
    sayWhatChanged(node, view);
    for (auto const& subview : view.subviews()) mirror(*subview, isHidden);
}

void WindowPeerLinux::mirrorButton(Node& node, Button& button, bool isHidden) {
    if (node.button == nullptr) {
        node.button = new PushButton(native_); // which deletes it
        auto const clicked = [weakWindow = window_.weak_from_this(),
                              weakButton = button.weak_from_this()] {
            auto const window = weakWindow.lock();
            auto const target = weakButton.lock();
            if (window && target) window->receiveClick(*target);
        };
        QObject::connect(node.button, &PushButton::clicked, node.button, clicked);
    }
    node.button->mirror(button, node.fade.shownAt(LayerFade::Clock::now()));
    node.button->setGeometry(nativeFrame(button).toRect());
    node.button->setVisible(!isHidden);
}

void WindowPeerLinux::silence(Node& node) {
    // Qt owns what is registered with it.
    if (node.accessible == nullptr) return;
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(node.accessible));
    node.accessible = nullptr;
}

void WindowPeerLinux::forget(Node& node) {
    silence(node);
    if (node.button == nullptr) return;
    // It may be the one that is being clicked.
    node.button->hide();
    node.button->deleteLater();
}

QRectF WindowPeerLinux::nativeFrame(View const& view) const {
    auto const& frame = view.frame();
    auto const* const superview = view.superview();
    // How far its superview's corner lies from the window's.
    auto const corner = superview != nullptr ? superview->convertFromWindow({0, 0}) : Point{0, 0};
    return {frame.x - corner.x, native_->height() - (frame.maxY() - corner.y), frame.width,
            frame.height};
}

QRectF WindowPeerLinux::lookOf(View const& view, Node const& node) const {
    auto const reach = reachOf(node.fade.shownAt(LayerFade::Clock::now()));
    return nativeFrame(view).adjusted(-reach, -reach, reach, reach);
}

void WindowPeerLinux::update(View const& view) {
    auto const found = nodes_.find(&view);
    if (found == nodes_.end()) return;
    auto const area = lookOf(view, found->second);
    auto const former = std::exchange(found->second.shownIn, area);
    native_->update(area.united(former).toAlignedRect());
    for (auto const& subview : view.subviews()) update(*subview);
}

void WindowPeerLinux::sayWhatChanged(Node& node, View const& view) {
    if (!QAccessible::isActive() || !AccessibleView::isSpoken(view)) return;
    auto const before = std::exchange(node.spoken, AccessibleView::spokenText(view));
    if (before.empty() || before == node.spoken || !node.accessible) return;
    for (auto const kind : {QAccessible::NameChanged, QAccessible::DescriptionChanged}) {
        QAccessibleEvent event(node.accessible, kind);
        QAccessible::updateAccessibility(&event);
    }
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(node.accessible, changed);
    QAccessible::updateAccessibility(&event);
}

LayerStyle WindowPeerLinux::shownLayer(View const& view) const {
    auto const found = nodes_.find(&view);
    if (found == nodes_.end()) return view.layer().value_or(LayerStyle{});
    return found->second.fade.shownAt(LayerFade::Clock::now());
}

void WindowPeerLinux::tick() {
    auto const now = LayerFade::Clock::now();
    bool isFading = false;
    for (auto& [view, node] : nodes_) {
        if (!node.isFading) continue;
        node.isFading = node.fade.isRunningAt(now);
        isFading = isFading || node.isFading;
        if (node.button != nullptr) {
            node.button->mirror(static_cast<Button const&>(*view), node.fade.shownAt(now));
        }
        update(*view);
    }
    if (!isFading) frames_.stop();
}

void WindowPeerLinux::paint(QRectF const& exposed) {
    QPainter painter(native_);
    painter.fillRect(exposed, backgroundOf(window_.attributes()));
    auto const& content = window_.contentView();
    if (!content) return;
    ViewPainter(painter, *native_->style(), exposed, [this](View const& view) {
        return shownLayer(view);
    }).paint(*content, native_->height());
}

void WindowPeerLinux::orderFrontRegardless() {
    native_->show();
    native_->raise();
    onFront_(*this);
}

void WindowPeerLinux::makeKeyAndOrderFront() {
    if (!native_->isVisible()) services_.followAppearance();
    orderFrontRegardless();
    bringForward();
}

bool WindowPeerLinux::bringForward() {
    if (!native_->isVisible()) return false;
    native_->raise();
    native_->activateWindow();
    // Window managers keep a window behind the one in use when its program asks for it; they obey
    // the form that task bars use.
    activation_.wish();
    return true;
}

void WindowPeerLinux::orderOut() {
    native_->hide();
}

void WindowPeerLinux::center() {
    // How much of the free height is above the window.
    constexpr double kShareAbove = 0.4;
    auto* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    auto const area = screen->availableGeometry();
    auto const free = area.size() - native_->frameSize();
    native_->move(area.x() + free.width() / 2,
                  area.y() + std::max(0, static_cast<int>(free.height() * kShareAbove)));
}

void WindowPeerLinux::pointerDidMove(std::optional<Point> point) {
    auto const window = window_.shared_from_this();
    std::vector<std::weak_ptr<View>> now;
    if (point && window->contentView()) appendTracking(*window->contentView(), *point, now);
    auto const before = std::exchange(pointedAt_, now);
    for (auto const& view : before) {
        auto const left = view.lock();
        if (left && left->window() == window.get() && !contains(now, left.get())) {
            window->receivePointer(*left, false);
        }
    }
    for (auto const& view : now) {
        auto const entered = view.lock();
        if (entered && entered->window() == window.get() && !contains(before, entered.get())) {
            window->receivePointer(*entered, true);
        }
    }
}

void WindowPeerLinux::keyStateDidChange(bool isKeyWindow) {
    window_.receiveKeyState(isKeyWindow);
}

void WindowPeerLinux::receive(MouseEvent const& event) {
    auto const window = window_.shared_from_this();
    window->receive(event);
}

void WindowPeerLinux::receive(KeyEvent const& event) {
    auto const window = window_.shared_from_this();
    if (event.kind == KeyEvent::Kind::keyDown && services_.monitors.swallows(event)) return;
    window->receive(event);
}

void WindowPeerLinux::receiveCloseRequest() {
    auto const window = window_.shared_from_this();
    window->receiveCloseRequest();
}

EventFlags WindowPeerLinux::flagsOf(std::uint32_t nativeModifiers) const {
    return services_.flagsOf(nativeModifiers);
}

bool WindowPeerLinux::isMovedFrom(Point point) const {
    auto const& content = window_.contentView();
    if (!window_.attributes().isMovableByBackground || !content) return false;
    auto const* const hit = content->hitTest(point);
    return hit == nullptr || !hit->takesClicks();
}

std::vector<View*> WindowPeerLinux::spokenViews() const {
    std::vector<View*> spoken;
    std::function<void(View&)> const append = [&](View& view) {
        if (view.isHidden()) return;
        if (view.kind() == ViewKind::button || AccessibleView::isSpoken(view)) {
            spoken.push_back(&view);
        }
        // What speaks for itself speaks for what is in it, too.
        if (view.accessibility()) return;
        for (auto const& subview : view.subviews()) append(*subview);
    };
    if (window_.contentView()) append(*window_.contentView());
    return spoken;
}

AccessibleView* WindowPeerLinux::accessible(View& view) {
    auto const found = nodes_.find(&view);
    if (found == nodes_.end()) return nullptr;
    auto& accessible = found->second.accessible;
    if (accessible == nullptr) {
        accessible = new AccessibleView(*this, view.weak_from_this()); // Qt owns it
        QAccessible::registerAccessibleInterface(accessible);
        found->second.spoken = AccessibleView::spokenText(view);
    }
    return accessible;
}

PushButton* WindowPeerLinux::buttonOf(View const& view) const {
    auto const found = nodes_.find(&view);
    return found == nodes_.end() ? nullptr : found->second.button;
}

} // namespace trovel
