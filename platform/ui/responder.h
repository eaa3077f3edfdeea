#pragma once

#include "platform/ui/events.h"

namespace trovel {

/// A link of the responder chain: view, its superviews, their window, the window's controller. An
/// event that a responder does not handle goes to the next one. A handler may close its window or
/// remove its view: whoever dispatches keeps both alive until the handler has returned.
class Responder {
public:
    Responder(Responder const&) = delete;
    Responder& operator=(Responder const&) = delete;

    /// Whether key events may go to this responder first.
    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }

    virtual void mouseDown(MouseEvent const& event);
    virtual void mouseDragged(MouseEvent const& event);
    virtual void mouseUp(MouseEvent const& event);
    virtual void rightMouseDown(MouseEvent const& event);
    virtual void mouseEntered();
    virtual void mouseExited();
    virtual void keyDown(KeyEvent const& event);
    virtual void flagsChanged(KeyEvent const& event);

    /// Where an unhandled event goes; null at the end of the chain.
    [[nodiscard]] virtual Responder* nextResponder() const = 0;

protected:
    Responder() = default;
    ~Responder() = default;
};

} // namespace trovel
