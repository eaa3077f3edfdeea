#include "platform/linux/tray/menu_mirror_linux.h"

#include "platform/linux/qt/qt_values.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

/// A title for a menu of Qt's, which takes an ampersand for the mark of a mnemonic.
QString menuTitle(std::string const& title) {
    return qtString(title).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QKeySequence keySequence(MenuItem const& item) {
    if (item.keyEquivalent().empty()) return {};
    bool const hasCommand = (item.keyEquivalentModifiers() & kFlagCommand) != 0;
    return QKeySequence(QLatin1String(hasCommand ? "Ctrl+" : "") +
                        qtString(item.keyEquivalent()).toUpper());
}

} // namespace

MenuMirrorLinux::MenuMirrorLinux(std::shared_ptr<Menu> menu, Chosen onChosen)
    : menu_(std::move(menu)), onChosen_(std::move(onChosen)) {
    menu_->setMirror(this);
}

MenuMirrorLinux::~MenuMirrorLinux() {
    menu_->setMirror(nullptr);
}

QMenu& MenuMirrorLinux::native() {
    return copyShown(Shown::here);
}

QMenu& MenuMirrorLinux::exported() {
    return copyShown(Shown::elsewhere);
}

QMenu& MenuMirrorLinux::copyShown(Shown shown) {
    auto const made =
        std::ranges::find(copies_, shown, [](auto const& copy) { return copy->shown; });
    if (made != copies_.end()) return *(*made)->menu;
    auto& copy = *copies_.emplace_back(std::make_unique<Copy>());
    copy.shown = shown;
    copy.menu = std::make_unique<QMenu>();
    fill(copy, *copy.menu, *menu_);
    QObject::connect(copy.menu.get(), &QMenu::aboutToShow, copy.menu.get(),
                     [this] { menu_->receiveWillOpen(); });
    return *copy.menu;
}

void MenuMirrorLinux::fill(Copy& copy, QMenu& native, Menu const& menu) {
    for (auto const& item : menu.items()) {
        if (item->isSeparator()) {
            native.addSeparator();
            continue;
        }
        auto* const action = add(copy, native, item);
        mirror(*item, *action, copy.shown);
        copy.actions.emplace(item.get(), action);
    }
}

QAction* MenuMirrorLinux::add(Copy& copy, QMenu& native, std::shared_ptr<MenuItem> const& item) {
    if (item->submenu()) {
        auto* const submenu = native.addMenu(QString()); // which `native` owns
        fill(copy, *submenu, *item->submenu());
        return submenu->menuAction();
    }
    auto* const action = native.addAction(QString());
    action->setShortcut(keySequence(*item));
    QObject::connect(action, &QAction::triggered, action, [this, action, item, shown = copy.shown] {
        // Qt has toggled it; what it shows is the tree's business.
        mirror(*item, *action, shown);
        onChosen_(item);
    });
    return action;
}

void MenuMirrorLinux::mirror(MenuItem const& item, QAction& action, Shown shown) {
    bool const isOn = item.state() == MenuItem::State::on;
    bool const staysCheckable = shown == Shown::elsewhere && action.isCheckable();
    action.setText(menuTitle(item.title()));
    // Checkable only while it is checked: an item that is off has no empty box in front of it.
    action.setCheckable(isOn || staysCheckable);
    action.setChecked(isOn);
}

void MenuMirrorLinux::itemDidChange(MenuItem const& item) {
    for (auto const& copy : copies_) {
        auto const found = copy->actions.find(&item);
        if (found != copy->actions.end()) mirror(item, *found->second, copy->shown);
    }
}

} // namespace trovel
