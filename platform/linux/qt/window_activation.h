#pragma once

#include "platform/linux/qt/window_activator.h"

#include <QObject>

namespace trovel {

/// The wish of a window of this program for the front and the keyboard. It waits until the window
/// is on the screen: before that the window manager does not know it. Main thread only.
class WindowActivation final : public QObject {
public:
    /// `window` outlives it.
    WindowActivation(QWidget& window, WindowActivator activate);
    WindowActivation(WindowActivation const&) = delete;
    WindowActivation& operator=(WindowActivation const&) = delete;
    ~WindowActivation() override = default;

    /// Activates the window now or, when it is not on the screen yet, once it is painted. Wishes
    /// that wait are one.
    void wish();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    QWidget& window_;
    WindowActivator activate_;
    bool isWaiting_ = false;
};

} // namespace trovel
