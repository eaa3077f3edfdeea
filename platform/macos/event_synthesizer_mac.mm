#include "platform/macos/event_synthesizer_mac.h"

#include "platform/macos/bridge/cf_owner.h"
#include "platform/macos/bridge/convert.h"

#import <ApplicationServices/ApplicationServices.h>

#include <utility>

namespace trovel {

namespace {

class SynthesizedEventMac final : public SynthesizedEvent {
public:
    explicit SynthesizedEventMac(CFOwner<CGEventRef> event) : event_(std::move(event)) {}

    void setFlags(EventFlags flags) override {
        CGEventSetFlags(event_.get(), static_cast<CGEventFlags>(flags));
    }
    void post() override { CGEventPost(kCGHIDEventTap, event_.get()); }

private:
    CFOwner<CGEventRef> event_;
};

EventSynthesizer::EventPtr makeEvent(CFOwner<CGEventRef> event) {
    if (!event) return nullptr;
    return std::make_unique<SynthesizedEventMac>(std::move(event));
}

CGEventType toNative(MouseAction action) {
    switch (action) {
    case MouseAction::leftDown:
        return kCGEventLeftMouseDown;
    case MouseAction::leftUp:
        return kCGEventLeftMouseUp;
    }
}

} // namespace

EventSynthesizer::EventPtr EventSynthesizerMac::mouseEvent(MouseAction action, Point position) {
    return makeEvent(CFOwner<CGEventRef>(CGEventCreateMouseEvent(
        nullptr, toNative(action), toNSPoint(position), kCGMouseButtonLeft)));
}

EventSynthesizer::EventPtr EventSynthesizerMac::keyboardEvent(KeyCode keyCode, KeyAction action) {
    CFOwner<CGEventSourceRef> const source(
        CGEventSourceCreate(kCGEventSourceStateCombinedSessionState));
    return makeEvent(CFOwner<CGEventRef>(CGEventCreateKeyboardEvent(
        source.get(), static_cast<CGKeyCode>(keyCode), action == KeyAction::down)));
}

} // namespace trovel
