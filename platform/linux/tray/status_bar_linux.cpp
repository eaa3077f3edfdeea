#include "platform/linux/tray/status_bar_linux.h"

#include "platform/lifetime.h"
#include "platform/linux/tray/menu_mirror_linux.h"
#include "platform/linux/tray/menu_rest.h"
#include "platform/linux/tray/tray_icon.h"
#include "platform/linux/tray/tray_watcher.h"
#include "platform/main_queue.h"

#include <QCursor>
#include <QFileSystemWatcher>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace trovel {

namespace {

/// How an icon comes into the tray. Qt decides when the first one is made, once for the process.
enum class TrayKind : std::uint8_t { undecided, notifier, systemTray };

/// Has what another program shows of a menu follow the files that the menu's state lies in: such a
/// program does not wait for news when it opens the menu.
class FolderWatch {
public:
    FolderWatch(std::vector<std::filesystem::path> const& folders, std::function<void()> onChange)
        : onChange_(std::move(onChange)) {
        for (auto const& folder : folders) paths_ << QString::fromStdString(folder.string());
        watch();
        QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_, [this] {
            watch();
            onChange_();
        });
    }

private:
    /// Watches the folders, and above one that is missing the place where it will be made.
    void watch() {
        for (auto const& path : paths_) {
            if (!watcher_.addPath(path)) watcher_.addPath(path.section('/', 0, -2));
        }
    }

    std::function<void()> onChange_;
    QStringList paths_;
    QFileSystemWatcher watcher_;
};

} // namespace

class StatusBarLinux::Item final : public StatusItem {
public:
    explicit Item(StatusBarLinux& bar) : bar_(bar) {}
    ~Item() override {
        if (bar_.item_ == this) bar_.item_ = nullptr;
    }

    [[nodiscard]] bool hasButton() const override { return true; }

    void setButtonImage(DrawnImage image) override {
        image_ = std::move(image);
        if (icon_) icon_->setIcon(trayIcon(image_));
    }

    void setMenu(std::shared_ptr<Menu> menu) override {
        icon_.reset();
        mirror_.reset();
        menu_ = std::move(menu);
        // The tray is looked for when the program has started: looking takes a while.
        bar_.mainQueue_.post(lifetime_.whileItLasts([this] { attach(); }));
    }

    void popUpMenu() {
        // Who was clicked on may hold the pointer until the button comes up, and a menu that cannot
        // hold it would not close.
        bar_.rest_.whenPointerIsFree(
            [popUp = lifetime_.whileItLasts([this] { popUpNow(); })](bool isFree) {
                if (isFree) popUp();
            });
    }

private:
    void attach() {
        if (watcher_ || !menu_) return;
        watcher_.emplace(bar_.systemTray_, [this] { followTray(); });
        followTray();
    }

    void followTray() {
        if (!watcher_) return; // it is just being made, and is asked right after
        auto const& places = watcher_->places();
        bool const isEither = places.hasNotifierHost || places.hasSystemTray;
        bool const hasPlace = (kind_ == TrayKind::undecided && places.isKnown && isEither) ||
                              (kind_ == TrayKind::notifier && places.hasNotifierHost) ||
                              (kind_ == TrayKind::systemTray && places.hasSystemTray);
        if (hasPlace && !icon_) {
            showIcon();
        } else if (!hasPlace) {
            icon_.reset();
        }
    }

    void showIcon() {
        icon_ = std::make_unique<QSystemTrayIcon>(trayIcon(image_));
        icon_->setToolTip(QStringLiteral("Trovel"));
        // Somebody quick closes the menu and clicks again within the time of a double click.
        QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger ||
                                 reason == QSystemTrayIcon::DoubleClick ||
                                 reason == QSystemTrayIcon::Context) {
                                 popUpMenu();
                             }
                         });
        exportMenu();
        icon_->show();
    }

    /// Hands the menu to the panel, if it is one that shows menus itself: only then does Qt make
    /// something of it.
    void exportMenu() {
        auto& exported = mirror().exported();
        icon_->setContextMenu(&exported);
        if (exported.platformMenu() == nullptr) {
            kind_ = TrayKind::systemTray;
            icon_->setContextMenu(nullptr);
            return;
        }
        kind_ = TrayKind::notifier;
        menu_->receiveWillOpen();
        if (!folders_) folders_.emplace(bar_.folders_, [this] { refreshExported(); });
    }

    void refreshExported() {
        if (kind_ == TrayKind::notifier) menu_->receiveWillOpen();
    }

    void popUpNow() {
        auto& native = mirror().native();
        if (!native.isVisible()) native.popup(QCursor::pos());
    }

    MenuMirrorLinux& mirror() {
        if (!mirror_) {
            mirror_ = std::make_unique<MenuMirrorLinux>(
                menu_, [this](std::shared_ptr<MenuItem> const& item) { report(item); });
        }
        return *mirror_;
    }

    void report(std::shared_ptr<MenuItem> const& item) {
        bar_.rest_.whenAtRest(lifetime_.whileItLasts([this, item] {
            auto const refresh = lifetime_.whileItLasts([this] { refreshExported(); });
            item->receiveChosen();
            refresh();
        }));
    }

    StatusBarLinux& bar_;
    DrawnImage image_;
    std::shared_ptr<Menu> menu_;
    TrayKind kind_ = TrayKind::undecided;
    std::optional<TrayWatcher> watcher_;
    std::unique_ptr<MenuMirrorLinux> mirror_;
    std::unique_ptr<QSystemTrayIcon> icon_; // goes before the menu that it exports
    std::optional<FolderWatch> folders_;
    Lifetime lifetime_;
};

StatusBarLinux::StatusBarLinux(SystemTray& systemTray, MenuRest& rest, MainQueue& mainQueue,
                               std::vector<std::filesystem::path> folders)
    : systemTray_(systemTray), rest_(rest), mainQueue_(mainQueue), folders_(std::move(folders)) {}

StatusBarLinux::~StatusBarLinux() = default;

std::unique_ptr<StatusItem> StatusBarLinux::makeSquareItem() {
    auto item = std::make_unique<Item>(*this);
    item_ = item.get();
    return item;
}

void StatusBarLinux::popUpMenu() {
    if (item_ != nullptr) item_->popUpMenu();
}

} // namespace trovel
