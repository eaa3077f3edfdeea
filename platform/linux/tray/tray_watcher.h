#pragma once

#include "platform/linux/tray/system_tray.h"
#include "platform/registration.h"

#include <QDBusServiceWatcher>
#include <QTimer>

#include <functional>

namespace trovel {

/// Which places for status icons the desktop has at present. Main thread only.
struct TrayPlaces {
    /// A host of the StatusNotifierItem protocol, over the session bus; none while nobody has
    /// answered yet.
    bool hasNotifierHost = false;
    /// Somebody who shows icons in the display system's own way.
    bool hasSystemTray = false;
    /// Whether the session bus has been asked and has answered.
    bool isKnown = false;

    friend bool operator==(TrayPlaces const&, TrayPlaces const&) = default;
};

/// Follows these places as they come and go. Asks, and never waits for an answer.
class TrayWatcher {
public:
    /// Calls `onChange` in a turn of the main loop each time. `systemTray` outlives this;
    /// needs a QApplication.
    TrayWatcher(SystemTray& systemTray, std::function<void()> onChange);
    TrayWatcher(TrayWatcher const&) = delete;
    TrayWatcher& operator=(TrayWatcher const&) = delete;
    ~TrayWatcher();

    [[nodiscard]] TrayPlaces const& places() const { return places_; }

private:
    void watchNotifierHosts();
    void askSystemTray();
    void askNotifierWatcher();
    void set(TrayPlaces places);

    SystemTray& systemTray_;
    std::function<void()> onChange_;
    TrayPlaces places_;
    Registration systemTrayChanges_;
    QDBusServiceWatcher services_;
    QTimer asking_;
};

} // namespace trovel
