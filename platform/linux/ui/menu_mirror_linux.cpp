#include "platform/linux/ui/menu_mirror_linux.h"

#include "platform/linux/ui/qt_values.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

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

void mirror(MenuItem const& item, QAction& action) {
    bool const isOn = item.state() == MenuItem::State::on;
    action.setText(menuTitle(item.title()));
    // Checkable only while it is checked: an item that is off has no empty box in front of it.
    action.setCheckable(isOn);
    action.setChecked(isOn);
}

} // namespace

MenuMirrorLinux::MenuMirrorLinux(std::shared_ptr<Menu> menu, Chosen onChosen)
    : menu_(std::move(menu)), onChosen_(std::move(onChosen)), native_(std::make_unique<QMenu>()) {
    fill(*native_, *menu_);
    QObject::connect(native_.get(), &QMenu::aboutToShow, native_.get(),
                     [this] { menu_->receiveWillOpen(); });
    menu_->setMirror(this);
}

MenuMirrorLinux::~MenuMirrorLinux() {
    menu_->setMirror(nullptr);
}

void MenuMirrorLinux::fill(QMenu& native, Menu const& menu) {
    for (auto const& item : menu.items()) {
        if (item->isSeparator()) {
            native.addSeparator();
            continue;
        }
        auto* const action = add(native, item);
        mirror(*item, *action);
        actions_.emplace(item.get(), action);
    }
}

QAction* MenuMirrorLinux::add(QMenu& native, std::shared_ptr<MenuItem> const& item) {
    if (item->submenu()) {
        auto* const submenu = native.addMenu(QString()); // which `native` owns
        fill(*submenu, *item->submenu());
        return submenu->menuAction();
    }
    auto* const action = native.addAction(QString());
    action->setShortcut(keySequence(*item));
    QObject::connect(action, &QAction::triggered, action, [this, action, item] {
        mirror(*item, *action); // Qt has toggled it; what it shows is the tree's business
        onChosen_(item);
    });
    return action;
}

void MenuMirrorLinux::itemDidChange(MenuItem const& item) {
    auto const found = actions_.find(&item);
    if (found != actions_.end()) mirror(item, *found->second);
}

} // namespace trovel
