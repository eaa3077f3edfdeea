#include "platform/linux/tray/tray_watcher.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace trovel {

namespace {

// The StatusNotifierItem specification of freedesktop.org, under the names that are in use.
constexpr char const* kNotifierWatcher = "org.kde.StatusNotifierWatcher";
constexpr char const* kNotifierWatcherPath = "/StatusNotifierWatcher";

} // namespace

TrayWatcher::TrayWatcher(SystemTray& systemTray, std::function<void()> onChange)
    : systemTray_(systemTray), onChange_(std::move(onChange)),
      systemTrayChanges_(systemTray.watch([this] { askSystemTray(); })) {
    askSystemTray();
    watchNotifierHosts();
}

TrayWatcher::~TrayWatcher() = default;

void TrayWatcher::watchNotifierHosts() {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, &asking_, [this] { askNotifierWatcher(); });
    asking_.start();
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    services_.setConnection(bus);
    services_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    services_.addWatchedService(kNotifierWatcher);
    QObject::connect(&services_, &QDBusServiceWatcher::serviceOwnerChanged, &asking_,
                     [this] { asking_.start(); });
    for (auto const* const signal :
         {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect(kNotifierWatcher, kNotifierWatcherPath, kNotifierWatcher, signal, &asking_,
                    SLOT(start()));
    }
}

void TrayWatcher::askSystemTray() {
    auto places = places_;
    places.hasSystemTray = systemTray_.hasManager();
    set(places);
}

void TrayWatcher::askNotifierWatcher() {
    auto const answered = [this](bool hasHost) {
        auto places = places_;
        places.hasNotifierHost = hasHost;
        places.isKnown = true;
        set(places);
    };
    auto const bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        answered(false);
        return;
    }
    auto call = QDBusMessage::createMethodCall(kNotifierWatcher, kNotifierWatcherPath,
                                               "org.freedesktop.DBus.Properties", "Get");
    call << QString(kNotifierWatcher) << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false); // somebody who is only looking must not start a desktop's part
    auto* const pending = new QDBusPendingCallWatcher(bus.asyncCall(call), &asking_);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, &asking_,
                     [answered](QDBusPendingCallWatcher* done) {
                         QDBusPendingReply<QDBusVariant> const reply = *done;
                         answered(!reply.isError() && reply.value().variant().toBool());
                         done->deleteLater();
                     });
}

void TrayWatcher::set(TrayPlaces places) {
    if (std::exchange(places_, places) != places) onChange_();
}

} // namespace trovel
