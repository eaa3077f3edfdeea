#include "platform/ui/responder.h"

namespace trovel {

void Responder::mouseDown(MouseEvent const& event) {
    if (auto* next = nextResponder()) next->mouseDown(event);
}

void Responder::mouseDragged(MouseEvent const& event) {
    if (auto* next = nextResponder()) next->mouseDragged(event);
}

void Responder::mouseUp(MouseEvent const& event) {
    if (auto* next = nextResponder()) next->mouseUp(event);
}

void Responder::rightMouseDown(MouseEvent const& event) {
    if (auto* next = nextResponder()) next->rightMouseDown(event);
}

void Responder::mouseEntered() {
    if (auto* next = nextResponder()) next->mouseEntered();
}

void Responder::mouseExited() {
    if (auto* next = nextResponder()) next->mouseExited();
}

void Responder::keyDown(KeyEvent const& event) {
    if (auto* next = nextResponder()) next->keyDown(event);
}

void Responder::flagsChanged(KeyEvent const& event) {
    if (auto* next = nextResponder()) next->flagsChanged(event);
}

} // namespace trovel
