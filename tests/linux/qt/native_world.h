#pragma once

#include "platform/linux/qt/animator_linux.h"
#include "platform/linux/qt/appearance_linux.h"
#include "platform/linux/qt/window_peer_linux.h"
#include "platform/linux/qt/window_widget.h"
#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/xsettings.h"
#include "platform/ui/local_event_monitors.h"
#include "platform/ui/window.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace trovel {

/// A program with native windows and nothing else.
class NativeWorld final : public WindowHost {
public:
    NativeWorld() = default;
    ~NativeWorld() = default;

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override {
        auto peer = std::make_unique<WindowPeerLinux>(
            window, services, [](WindowPeerLinux&) {}, [](WindowPeerLinux&) {});
        latest = peer.get();
        return peer;
    }

    /// Runs the main loop until that holds; false when it does not within two seconds.
    bool runUntil(std::function<bool()> const& holds) const {
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        while (!holds()) {
            if (std::chrono::steady_clock::now() > end) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return true;
    }
    void runPending() const {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// What the widget shows, with so many pixels to a point.
    static QImage picture(QWidget& widget, double scale = 1) {
        QImage image(widget.size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        widget.render(&painter);
        return image;
    }

    std::unique_ptr<XcbConnection> connection = XcbConnection::open();
    MainQueueLinux queue;
    ApplicationLinux application{queue};
    AnimatorLinux animator;
    LocalEventMonitors monitors;
    int askedForKey = 0;
    WindowServices services{
        animator, monitors,
        [](std::uint32_t state) { return (state & 4U) != 0 ? kFlagCommand : EventFlags{0}; },
        [this] { followAppearance(readDesktopLook(*connection)); },
        [this](QWidget&) { ++askedForKey; }};
    WindowPeerLinux* latest = nullptr;
};

} // namespace trovel
