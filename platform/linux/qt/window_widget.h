#pragma once

#include "platform/geometry.h"
#include "platform/key_codes.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace trovel {

class WindowPeerLinux;
class View;

/// The widget of a window: it is painted by its peer and brings the desktop's events to it. It
/// lives on for a turn of the main loop when its peer goes within one of these events.
class WindowWidget final : public QWidget {
public:
    explicit WindowWidget(WindowPeerLinux& peer);

    /// Null once the peer is gone.
    [[nodiscard]] WindowPeerLinux* peer() const { return peer_; }
    void detach();

private:
    /// A press on the window's background, by which it may be moved. In global pixels of Qt's.
    struct Move {
        QPoint start;
        QPoint corner; // the window's, as seen from the pointer
        bool hasBegun = false;
    };

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

    [[nodiscard]] Point pointOf(QPointF const& position) const;
    void handleKey(QKeyEvent const& event, bool isPress);

    WindowPeerLinux* peer_;
    std::optional<Move> move_;
};

} // namespace trovel
