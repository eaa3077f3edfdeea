#include "platform/linux/x11/event_synthesizer_x11.h"

#include "platform/linux/x11/connection.h"
#include "tests/linux/support/other_program.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr xcb_keycode_t kControl = 37;
constexpr xcb_keycode_t kShift = 50;
constexpr xcb_keycode_t kRightShift = 62;
constexpr xcb_keycode_t kAlt = 64;
constexpr xcb_keycode_t kSuper = 133;
constexpr xcb_keycode_t kCapsLock = 66;
constexpr xcb_keycode_t kLetterV = 55;
constexpr xcb_keycode_t kInsert = 118;
constexpr xcb_keycode_t kReturn = 36;

SeenInput down(xcb_keycode_t key, unsigned state) {
    return {XCB_KEY_PRESS, key, static_cast<std::uint16_t>(state)};
}
SeenInput up(xcb_keycode_t key, unsigned state) {
    return {XCB_KEY_RELEASE, key, static_cast<std::uint16_t>(state)};
}

class EventSynthesizerX11Test : public testing::Test {
protected:
    EventSynthesizerX11Test() { other_.focus(window_); }

    void SetUp() override { static_cast<void>(other_.seenInput()); }

    void use(std::string const& layout) {
        ASSERT_TRUE(run({"setxkbmap", layout}));
        static_cast<void>(other_.seenInput());
    }

    /// What a user does with the keyboard.
    void hold(xcb_keycode_t key) { userDoes(XCB_KEY_PRESS, key); }
    void letGo(xcb_keycode_t key) { userDoes(XCB_KEY_RELEASE, key); }
    void userDoes(std::uint8_t type, xcb_keycode_t key) {
        xcb_test_fake_input(other_.connection().get(), type, key, 0, XCB_NONE, 0, 0, 0);
        static_cast<void>(other_.seenInput());
    }

    /// The same on the server's own keyboard, which is another device than the one that XTEST has.
    void holdOnHardware(xcb_keycode_t key) {
        auto* const connection = other_.connection().get();
        std::string_view const name = "XInputExtension";
        auto const extension = other_.connection().reply<xcb_query_extension_reply>(
            xcb_query_extension(connection, static_cast<std::uint16_t>(name.size()), name.data()));
        ASSERT_TRUE(extension && extension->present);
        constexpr std::uint8_t kDeviceKeyPress = 1; // after the extension's first event
        constexpr std::uint8_t kXvfbKeyboard = 7;
        auto const type = static_cast<std::uint8_t>(extension->first_event + kDeviceKeyPress);
        xcb_test_fake_input(connection, type, key, 0, XCB_NONE, 0, 0, kXvfbKeyboard);
        ASSERT_THAT(other_.seenInput(), ElementsAre(down(key, 0)));
        ASSERT_THAT(heldKeys(), ElementsAre(key));
    }

    void type(KeyCode keyCode, EventFlags flags) {
        auto const downEvent = synthesizer_->keyboardEvent(keyCode, KeyAction::down);
        auto const upEvent = synthesizer_->keyboardEvent(keyCode, KeyAction::up);
        ASSERT_TRUE(downEvent && upEvent);
        downEvent->setFlags(flags);
        upEvent->setFlags(flags);
        downEvent->post();
        upEvent->post();
        finish();
    }

    void paste(WrittenContents contents) {
        written_ = contents;
        type(kKeyV, kFlagCommand);
    }

    void click(Point position) {
        auto const downEvent = synthesizer_->mouseEvent(MouseAction::leftDown, position);
        auto const upEvent = synthesizer_->mouseEvent(MouseAction::leftUp, position);
        ASSERT_TRUE(downEvent && upEvent);
        downEvent->post();
        upEvent->post();
        finish();
    }

    /// Waits until the server has done what the synthesizer's connection asked for.
    void finish() {
        static_cast<void>(
            connection_->reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection_->get())));
    }

    [[nodiscard]] std::vector<xcb_keycode_t> heldKeys() {
        return Keymap(other_.connection()).heldKeys();
    }

    TestDisplay display_;
    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    WrittenContents written_ = WrittenContents::picture;
    std::unique_ptr<EventSynthesizerX11> synthesizer_ =
        std::make_unique<EventSynthesizerX11>(*connection_, [this] { return written_; });
    OtherProgram other_;
    xcb_window_t window_ = other_.open({.className = "Alpha", .frame = {100, 100, 400, 300}});
};

TEST_F(EventSynthesizerX11Test, APictureIsPastedByTheKeyThatTypesV) {
    std::pair<char const*, xcb_keycode_t> const expected[] = {
        {"us", kLetterV}, {"de", kLetterV}, {"fr", kLetterV}, {"dvorak", 60}};
    for (auto const& [layout, key] : expected) {
        use(layout);
        paste(WrittenContents::picture);
        EXPECT_THAT(other_.seenInput(),
                    ElementsAre(down(kControl, 0), down(key, XCB_MOD_MASK_CONTROL),
                                up(key, XCB_MOD_MASK_CONTROL), up(kControl, XCB_MOD_MASK_CONTROL)))
            << layout;
    }
}

TEST_F(EventSynthesizerX11Test, AnotherGroupsVIsTakenWhereTheCurrentOneHasNone) {
    use("us,ru");
    other_.useLayoutGroup(1);
    paste(WrittenContents::picture);
    constexpr unsigned kSecondGroup = 1u << 13;
    auto const control = kSecondGroup | XCB_MOD_MASK_CONTROL;
    EXPECT_THAT(other_.seenInput(),
                ElementsAre(down(kControl, kSecondGroup), down(kLetterV, control),
                            up(kLetterV, control), up(kControl, control)));
}

TEST_F(EventSynthesizerX11Test, ALayoutWithoutVPastesWithInsert) {
    use("ru");
    paste(WrittenContents::picture);
    EXPECT_THAT(other_.seenInput(),
                ElementsAre(down(kShift, 0), down(kInsert, XCB_MOD_MASK_SHIFT),
                            up(kInsert, XCB_MOD_MASK_SHIFT), up(kShift, XCB_MOD_MASK_SHIFT)));
}

TEST_F(EventSynthesizerX11Test, TextIsPastedWithInsert) {
    for (auto const* layout : {"us", "dvorak", "ru"}) {
        use(layout);
        paste(WrittenContents::text);
        EXPECT_THAT(other_.seenInput(),
                    ElementsAre(down(kShift, 0), down(kInsert, XCB_MOD_MASK_SHIFT),
                                up(kInsert, XCB_MOD_MASK_SHIFT), up(kShift, XCB_MOD_MASK_SHIFT)))
            << layout;
    }
}

TEST_F(EventSynthesizerX11Test, NoChordIsHalfSent) {
    use("us");
    for (auto const key : {kInsert, kControl}) {
        xcb_keysym_t const otherwise = XKB_KEY_F35;
        xcb_change_keyboard_mapping(other_.connection().get(), 1, key, 1, &otherwise);
    }
    static_cast<void>(other_.seenInput());
    paste(WrittenContents::text);
    paste(WrittenContents::picture);
    EXPECT_THAT(other_.seenInput(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, FlagsBecomeTheKeysOfTheirRoles) {
    type(kKeyReturn, 0);
    EXPECT_THAT(other_.seenInput(), ElementsAre(down(kReturn, 0), up(kReturn, 0)));
    type(kKeyReturn, kFlagCommand);
    EXPECT_THAT(other_.seenInput(),
                ElementsAre(down(kControl, 0), down(kReturn, XCB_MOD_MASK_CONTROL),
                            up(kReturn, XCB_MOD_MASK_CONTROL), up(kControl, XCB_MOD_MASK_CONTROL)));
    type(kKeyV, kFlagCommand | kFlagShift | kFlagOption | kFlagControl | kFlagCapsLock);
    auto const all = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    auto const seen = other_.seenInput();
    ASSERT_EQ(seen.size(), 10u);
    EXPECT_EQ(seen[0], down(kSuper, 0));
    EXPECT_EQ(seen[1], down(kAlt, XCB_MOD_MASK_4));
    EXPECT_EQ(seen[4], down(kLetterV, all));
    EXPECT_EQ(seen[5], up(kLetterV, all));
    EXPECT_THAT(heldKeys(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, ASwappedControlKeyIsFound) {
    ASSERT_TRUE(run({"setxkbmap", "us", "-option", "ctrl:swapcaps"}));
    static_cast<void>(other_.seenInput());
    paste(WrittenContents::picture);
    auto const seen = other_.seenInput();
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_EQ(seen[0], down(kCapsLock, 0));
    EXPECT_EQ(seen[1], down(kLetterV, XCB_MOD_MASK_CONTROL));
}

TEST_F(EventSynthesizerX11Test, HeldModifiersAreLiftedAndNeverPressedAgain) {
    for (auto const key : {kControl, kRightShift, kAlt, kSuper}) hold(key);
    type(kKeyReturn, 0);
    auto const seen = other_.seenInput();
    ASSERT_EQ(seen.size(), 6u);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(seen[i].type, XCB_KEY_RELEASE);
    EXPECT_EQ(seen[4], down(kReturn, 0));
    EXPECT_EQ(seen[5], up(kReturn, 0));
    EXPECT_THAT(heldKeys(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, AModifierThatIsHeldOnTheHardwareIsLiftedAsWell) {
    holdOnHardware(kShift);
    paste(WrittenContents::picture);
    EXPECT_THAT(other_.seenInput(), ElementsAre(up(kShift, XCB_MOD_MASK_SHIFT), down(kControl, 0),
                                                down(kLetterV, XCB_MOD_MASK_CONTROL),
                                                up(kLetterV, XCB_MOD_MASK_CONTROL),
                                                up(kControl, XCB_MOD_MASK_CONTROL)));
    EXPECT_THAT(heldKeys(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, KeysOfTheChordThatAreHeldArePressedAnew) {
    hold(kControl);
    hold(kLetterV);
    paste(WrittenContents::picture);
    auto const seen = other_.seenInput();
    ASSERT_EQ(seen.size(), 6u);
    EXPECT_EQ(seen[0].type, XCB_KEY_RELEASE);
    EXPECT_EQ(seen[1].type, XCB_KEY_RELEASE);
    EXPECT_EQ(seen[2], down(kControl, 0));
    EXPECT_EQ(seen[3], down(kLetterV, XCB_MOD_MASK_CONTROL));
    EXPECT_THAT(heldKeys(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, OtherHeldKeysAreLeftAlone) {
    constexpr xcb_keycode_t kLetterA = 38;
    hold(kLetterA);
    auto const event = synthesizer_->keyboardEvent(kKeyReturn, KeyAction::down);
    event->post();
    synthesizer_->keyboardEvent(kKeyReturn, KeyAction::up)->post();
    finish();
    EXPECT_EQ(other_.seenInput().size(), 2u);
    EXPECT_THAT(heldKeys(), ElementsAre(kLetterA));
    letGo(kLetterA);
}

TEST_F(EventSynthesizerX11Test, CapsLockStaysLockedAndDoesNotMatter) {
    hold(kCapsLock);
    letGo(kCapsLock);
    paste(WrittenContents::picture);
    auto const control = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL;
    EXPECT_THAT(other_.seenInput(),
                ElementsAre(down(kControl, XCB_MOD_MASK_LOCK), down(kLetterV, control),
                            up(kLetterV, control), up(kControl, control)));
    hold(kCapsLock); // and still held
    paste(WrittenContents::picture);
    auto const seen = other_.seenInput();
    ASSERT_EQ(seen.size(), 5u);
    EXPECT_EQ(seen[0].type, XCB_KEY_RELEASE);
    EXPECT_EQ(seen[2].detail, kLetterV);
}

TEST_F(EventSynthesizerX11Test, AClickIsAPlainOneAtThePixelThatThePositionLiesIn) {
    hold(kControl);
    click({123.9, 356.5});
    EXPECT_THAT(other_.seenInput(),
                ElementsAre(up(kControl, XCB_MOD_MASK_CONTROL), SeenInput{XCB_BUTTON_PRESS, 1, 0},
                            SeenInput{XCB_BUTTON_RELEASE, 1, XCB_BUTTON_MASK_1}));
    auto const pointer = other_.connection().reply<xcb_query_pointer_reply>(
        xcb_query_pointer(other_.connection().get(), other_.connection().root()));
    ASSERT_TRUE(pointer);
    EXPECT_EQ(pointer->root_x, 123);
    EXPECT_EQ(pointer->root_y, 356);
    // What the protocol cannot name is the edge of the screen.
    click({1e9, -1e9});
}

TEST_F(EventSynthesizerX11Test, WhatIsPressedIsReleasedWhenTheSynthesizerGoes) {
    auto key = synthesizer_->keyboardEvent(kKeyV, KeyAction::down);
    auto button = synthesizer_->mouseEvent(MouseAction::leftDown, {150, 150});
    key->setFlags(kFlagCommand);
    button->post();
    key->post();
    key.reset();
    button.reset();
    finish();
    EXPECT_THAT(heldKeys(), ElementsAre(kControl, kLetterV));
    synthesizer_.reset();
    finish();
    EXPECT_THAT(heldKeys(), IsEmpty());
    auto const seen = other_.seenInput();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), (SeenInput{XCB_BUTTON_RELEASE, 1, XCB_BUTTON_MASK_1}));
}

TEST_F(EventSynthesizerX11Test, ASecondPressReleasesTheFirst) {
    auto const first = synthesizer_->keyboardEvent(kKeyReturn, KeyAction::down);
    auto const second = synthesizer_->keyboardEvent(kKeyV, KeyAction::down);
    first->post();
    second->post();
    synthesizer_->keyboardEvent(kKeyV, KeyAction::up)->post();
    finish();
    EXPECT_EQ(other_.seenInput().size(), 4u);
    EXPECT_THAT(heldKeys(), IsEmpty());
    // A release without its press is none.
    synthesizer_->keyboardEvent(kKeyReturn, KeyAction::up)->post();
    finish();
    EXPECT_THAT(other_.seenInput(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, AProcessThatIsKilledBetweenPressAndReleaseLeavesNothingDown) {
    auto const process = fork();
    if (process == 0) {
        auto const connection = XcbConnection::open();
        EventSynthesizerX11 synthesizer(*connection, [] { return WrittenContents::picture; });
        auto const key = synthesizer.keyboardEvent(kKeyV, KeyAction::down);
        key->setFlags(kFlagCommand);
        key->post();
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(heldKeys(), IsEmpty());
    EXPECT_THAT(other_.seenInput(), IsEmpty());
}

TEST_F(EventSynthesizerX11Test, ThereIsNoEventForAnUnknownKeyOrWithoutTheExtension) {
    EXPECT_FALSE(synthesizer_->keyboardEvent(63, KeyAction::down));
    EXPECT_FALSE(synthesizer_->keyboardEvent(1000, KeyAction::up));
    TestDisplay const bare({"-screen", "0", "640x480x24", "-extension", "XTEST"});
    auto const connection = XcbConnection::open();
    ASSERT_TRUE(connection);
    EventSynthesizerX11 synthesizer(*connection, [] { return WrittenContents::text; });
    EXPECT_FALSE(synthesizer.keyboardEvent(kKeyV, KeyAction::down));
    EXPECT_FALSE(synthesizer.mouseEvent(MouseAction::leftDown, {1, 1}));
}

TEST_F(EventSynthesizerX11Test, ALostServerIsNoHarm) {
    display_.kill();
    auto const key = synthesizer_->keyboardEvent(kKeyV, KeyAction::down);
    auto const button = synthesizer_->mouseEvent(MouseAction::leftDown, {1, 1});
    if (key) key->post();
    if (button) button->post();
}

} // namespace
} // namespace trovel
