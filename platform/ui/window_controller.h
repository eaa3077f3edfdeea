#pragma once

#include "platform/ui/responder.h"
#include "platform/ui/window.h"

#include <memory>

namespace trovel {

/// Owns a window, is its delegate and stands behind it in the responder chain. Held by shared_ptr;
/// main thread only.
class WindowController : public Responder,
                         public WindowDelegate,
                         public std::enable_shared_from_this<WindowController> {
public:
    WindowController(WindowController const&) = delete;
    WindowController& operator=(WindowController const&) = delete;
    virtual ~WindowController();

    /// Brings the window to the front and gives it the keyboard.
    void showWindow();

    [[nodiscard]] std::shared_ptr<Window> const& window() const { return window_; }
    [[nodiscard]] Responder* nextResponder() const override { return nullptr; }

protected:
    explicit WindowController(std::shared_ptr<Window> window);

private:
    std::shared_ptr<Window> window_;
};

} // namespace trovel
