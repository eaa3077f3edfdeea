#include "delivery/paste_keystroke.h"

#include "platform/event_synthesizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Posted {
    KeyCode keyCode;
    KeyAction action;
    EventFlags flags;
    friend bool operator==(Posted const&, Posted const&) = default;
};

/// Makes all key events but those of one action.
class Keyboard final : public EventSynthesizer {
public:
    ~Keyboard() = default;

    EventPtr mouseEvent(MouseAction, Point) override { return nullptr; }
    EventPtr keyboardEvent(KeyCode keyCode, KeyAction action) override {
        if (action == unmade) return nullptr;
        return std::make_unique<Event>(*this, Posted{keyCode, action, 0});
    }

    std::optional<KeyAction> unmade;
    std::vector<Posted> posted;

private:
    class Event final : public SynthesizedEvent {
    public:
        Event(Keyboard& keyboard, Posted event) : keyboard_(keyboard), event_(event) {}
        ~Event() override = default;
        void setFlags(EventFlags flags) override { event_.flags = flags; }
        void post() override { keyboard_.posted.push_back(event_); }

    private:
        Keyboard& keyboard_;
        Posted event_;
    };
};

TEST(PasteKeystroke, IsCommandVDownAndUp) {
    Keyboard keyboard;
    sendPasteKeystroke(keyboard);
    EXPECT_THAT(keyboard.posted, ElementsAre(Posted{9, KeyAction::down, 0x100000},
                                             Posted{9, KeyAction::up, 0x100000}));
}

TEST(PasteKeystroke, SendsNothingWhenEitherEventCannotBeMade) {
    for (auto const action : {KeyAction::down, KeyAction::up}) {
        Keyboard keyboard;
        keyboard.unmade = action;
        sendPasteKeystroke(keyboard);
        EXPECT_THAT(keyboard.posted, IsEmpty());
    }
}

TEST(Keystroke, CarriesExactlyTheFlagsItIsGiven) {
    Keyboard keyboard;
    sendKeystroke(keyboard, kKeyReturn, 0);
    EXPECT_THAT(keyboard.posted,
                ElementsAre(Posted{36, KeyAction::down, 0}, Posted{36, KeyAction::up, 0}));
}

} // namespace
} // namespace trovel
