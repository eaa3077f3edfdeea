#include "platform/linux/qt/accessible_view.h"

#include "platform/linux/qt/push_button.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/window_peer_linux.h"
#include "platform/linux/qt/window_widget.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/window.h"

#include <QAccessibleWidget>
#include <QGuiApplication>

#include <algorithm>
#include <variant>

namespace trovel {

namespace {

constexpr char const* kSelected = "selected";

SymbolIcon const* describedIcon(View const& view) {
    if (view.kind() != ViewKind::imageView) return nullptr;
    auto const& icon = static_cast<ImageView const&>(view).icon();
    auto const* const symbol = icon ? std::get_if<SymbolIcon>(&*icon) : nullptr;
    return symbol != nullptr && !symbol->accessibilityDescription.empty() ? symbol : nullptr;
}

std::string nameOf(View const& view) {
    if (view.accessibility()) return view.accessibility()->label;
    if (view.kind() == ViewKind::label) return static_cast<Label const&>(view).text();
    auto const* const icon = describedIcon(view);
    return icon != nullptr ? icon->accessibilityDescription : std::string();
}

std::string valueOf(View const& view) {
    return view.accessibility() ? view.accessibility()->value : std::string();
}

/// The window: what is in it are the views that say something.
class AccessibleWindow final : public QAccessibleWidget {
public:
    explicit AccessibleWindow(WindowWidget* window)
        : QAccessibleWidget(window, QAccessible::Window) {}

    int childCount() const override { return static_cast<int>(views().size()); }

    QAccessibleInterface* child(int index) const override {
        auto const spoken = views();
        if (index < 0 || static_cast<std::size_t>(index) >= spoken.size()) return nullptr;
        auto& peer = *native().peer();
        auto& view = *spoken[static_cast<std::size_t>(index)];
        if (auto* const button = peer.buttonOf(view)) {
            return QAccessible::queryAccessibleInterface(button);
        }
        return peer.accessible(view);
    }

    int indexOfChild(QAccessibleInterface const* child) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (this->child(index) == child) return index;
        }
        return -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        // The last one is in front.
        for (int index = childCount() - 1; index >= 0; --index) {
            auto* const candidate = child(index);
            if (candidate != nullptr && candidate->rect().contains(x, y)) return candidate;
        }
        return nullptr;
    }

private:
    [[nodiscard]] WindowWidget& native() const { return static_cast<WindowWidget&>(*widget()); }
    [[nodiscard]] std::vector<View*> views() const {
        auto const* const peer = native().peer();
        return peer != nullptr ? peer->spokenViews() : std::vector<View*>();
    }
};

QAccessibleInterface* makeInterface(QString const& /*className*/, QObject* object) {
    auto* const window = dynamic_cast<WindowWidget*>(object);
    return window != nullptr ? new AccessibleWindow(window) : nullptr; // which Qt owns
}

} // namespace

void installAccessibleWindows() {
    QAccessible::installFactory(makeInterface);
    QAccessible::setRootObject(qApp);
}

AccessibleView::AccessibleView(WindowPeerLinux& peer, std::weak_ptr<View> view)
    : peer_(peer), view_(std::move(view)) {}

bool AccessibleView::isSpoken(View const& view) {
    return !nameOf(view).empty();
}

std::string AccessibleView::spokenText(View const& view) {
    return nameOf(view) + '\n' + valueOf(view);
}

QAccessibleInterface* AccessibleView::parent() const {
    return QAccessible::queryAccessibleInterface(&peer_.widget());
}

QAccessibleInterface* AccessibleView::child(int /*index*/) const {
    return nullptr;
}

QAccessibleInterface* AccessibleView::childAt(int /*x*/, int /*y*/) const {
    return nullptr;
}

int AccessibleView::indexOfChild(QAccessibleInterface const* /*child*/) const {
    return -1;
}

QString AccessibleView::text(QAccessible::Text kind) const {
    auto const view = view_.lock();
    if (!view) return {};
    if (kind == QAccessible::Name) return qtString(nameOf(*view));
    // Readers ask a button for its description where they ask others for their value.
    if (kind == QAccessible::Value || kind == QAccessible::Description) {
        return qtString(valueOf(*view));
    }
    return {};
}

void AccessibleView::setText(QAccessible::Text /*kind*/, QString const& /*text*/) {}

QRect AccessibleView::rect() const {
    auto const view = view_.lock();
    if (!view) return {};
    auto const frame = peer_.nativeFrame(*view).toRect();
    return {peer_.widget().mapToGlobal(frame.topLeft()), frame.size()};
}

QAccessible::Role AccessibleView::role() const {
    auto const view = view_.lock();
    if (view && view->accessibility()) {
        switch (view->accessibility()->role) {
        case AccessibilityInfo::Role::button: return QAccessible::Button;
        }
    }
    return view && view->kind() == ViewKind::imageView ? QAccessible::Graphic
                                                       : QAccessible::StaticText;
}

QAccessible::State AccessibleView::state() const {
    QAccessible::State state;
    auto const view = view_.lock();
    if (!view) {
        state.invalid = true;
        return state;
    }
    state.invisible = !peer_.widget().isVisible();
    state.readOnly = !view->accessibility();
    if (!valueOf(*view).empty()) {
        state.selectable = true;
        state.selected = valueOf(*view) == kSelected;
    }
    return state;
}

void* AccessibleView::interface_cast(QAccessible::InterfaceType type) {
    auto const view = view_.lock();
    if (type != QAccessible::ActionInterface || !view || !view->accessibility()) return nullptr;
    return static_cast<QAccessibleActionInterface*>(this);
}

QStringList AccessibleView::actionNames() const {
    return {pressAction()};
}

void AccessibleView::doAction(QString const& name) {
    auto const view = view_.lock();
    if (name != pressAction() || !view) return;
    peer_.window().receivePress(*view);
}

QStringList AccessibleView::keyBindingsForAction(QString const& /*name*/) const {
    return {};
}

} // namespace trovel
