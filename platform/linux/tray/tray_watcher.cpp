#include "platform/linux/tray/tray_watcher.h"

#include "platform/linux/x11/connection.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <xcb/xfixes.h>

#include <utility>

namespace trovel {

namespace {

constexpr char const* kSystemTray = "_NET_SYSTEM_TRAY_S0";
// The StatusNotifierItem specification of freedesktop.org, under the names that are in use.
constexpr char const* kNotifierWatcher = "org.kde.StatusNotifierWatcher";
constexpr char const* kNotifierWatcherPath = "/StatusNotifierWatcher";

} // namespace

TrayWatcher::TrayWatcher(XcbConnection& x, std::function<void()> onChange)
    : x_(x), onChange_(std::move(onChange)) {
    watchSystemTray();
    askSystemTray();
    watchNotifierHosts();
}

TrayWatcher::~TrayWatcher() = default;

void TrayWatcher::watchSystemTray() {
    auto const* const extension = x_.extension(xcb_xfixes_id);
    if (extension == nullptr) return;
    xcb_discard_reply(x_.get(), xcb_xfixes_query_version(x_.get(), XCB_XFIXES_MAJOR_VERSION,
                                                         XCB_XFIXES_MINOR_VERSION)
                                    .sequence);
    xcb_xfixes_select_selection_input(x_.get(), x_.root(), x_.atom(kSystemTray),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    x_.flush();
    selectionEvents_ = x_.addEventHandler(
        [this, type = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY](auto const& event) {
            if (eventType(event) != type) return;
            auto const& change =
                reinterpret_cast<xcb_xfixes_selection_notify_event_t const&>(event);
            if (change.selection == x_.atom(kSystemTray)) askSystemTray();
        });
}

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
    auto const answer = x_.reply<xcb_get_selection_owner_reply>(
        xcb_get_selection_owner(x_.get(), x_.atom(kSystemTray)));
    auto places = places_;
    places.hasSystemTray = answer && answer->owner != XCB_WINDOW_NONE;
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
