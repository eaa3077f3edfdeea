#include "platform/carbon_modifiers.h"
#include "platform/hotkey_service.h"
#include "tests/contract/contract_world.h"

#include <algorithm>

namespace trovel {
namespace {

using namespace std::chrono_literals;

constexpr KeyCode kKey2 = 19;
constexpr std::uint32_t kModifiers = kCmdKey + kShiftKey;
constexpr EventFlags kFlags = kFlagCommand | kFlagShift;
constexpr EventHotKeyId kId{0x54524f56, 1};

class HotkeyContract : public ContractTest {
protected:
    static std::int32_t countPress(void* userData) {
        ++*static_cast<int*>(userData);
        return kNoErr;
    }

    void press(KeyCode keyCode, EventFlags flags) {
        world->keyDown(keyCode, flags);
        world->keyUp(keyCode, flags);
    }

    int presses = 0;
};

TEST_F(HotkeyContract, OnePressIsOneCallHoweverLongTheKeyIsHeld) {
    auto const handler = platform.hotkeys.installEventHandler(countPress, &presses);
    auto const hotKey = platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId);
    ASSERT_TRUE(handler && hotKey);
    world->keyDown(kKey2, kFlags);
    world->wait(800ms); // long enough for a keyboard to repeat
    world->keyUp(kKey2, kFlags);
    ASSERT_TRUE(world->waitUntil([&] { return presses > 0; }));
    EXPECT_EQ(presses, 1);
    press(kKey2, kFlags);
    EXPECT_TRUE(world->waitUntil([&] { return presses == 2; }));
    platform.hotkeys.unregisterEventHotKey(*hotKey);
    platform.hotkeys.removeEventHandler(*handler);
}

TEST_F(HotkeyContract, OtherModifiersAndOtherKeysAreNotTheHotKey) {
    auto const handler = platform.hotkeys.installEventHandler(countPress, &presses);
    auto const hotKey = platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId);
    ASSERT_TRUE(handler && hotKey);
    press(kKey2, 0);
    press(kKey2, kFlagCommand);
    press(kKey2, kFlags | kFlagOption);
    press(kKey2 + 1, kFlags);
    world->wait(100ms);
    EXPECT_EQ(presses, 0);
    platform.hotkeys.unregisterEventHotKey(*hotKey);
    platform.hotkeys.removeEventHandler(*handler);
}

TEST_F(HotkeyContract, AnUnregisteredHotKeyIsDeadAndGoesToTheProgramInFrontAgain) {
    auto const program = world->startProgram("editor", {50, 50}, {400, 300});
    world->bringToFront(program);
    auto const handler = platform.hotkeys.installEventHandler(countPress, &presses);
    auto const hotKey = platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId);
    ASSERT_TRUE(handler && hotKey);
    press(kKey2, kFlags);
    ASSERT_TRUE(world->waitUntil([&] { return presses == 1; }));
    EXPECT_THAT(world->report(program).keys, testing::Not(testing::Contains(kKey2)));
    platform.hotkeys.unregisterEventHotKey(*hotKey);
    press(kKey2, kFlags);
    EXPECT_TRUE(world->waitUntil([&] {
        auto const keys = world->report(program).keys;
        return std::ranges::find(keys, kKey2) != keys.end();
    }));
    EXPECT_EQ(presses, 1);
    platform.hotkeys.removeEventHandler(*handler);
}

TEST_F(HotkeyContract, WithoutAHandlerAPressDoesNothing) {
    auto const handler = platform.hotkeys.installEventHandler(countPress, &presses);
    auto const hotKey = platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId);
    ASSERT_TRUE(handler && hotKey);
    platform.hotkeys.removeEventHandler(*handler);
    press(kKey2, kFlags);
    world->wait(100ms);
    EXPECT_EQ(presses, 0);
    platform.hotkeys.unregisterEventHotKey(*hotKey);
}

TEST_F(HotkeyContract, RefusesACombinationThatAnotherProgramHas) {
    world->takeHotKeyElsewhere(kKey2, kModifiers);
    EXPECT_EQ(platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId), std::nullopt);
    auto const other = platform.hotkeys.registerEventHotKey(kKey2, kModifiers + kOptionKey, kId);
    ASSERT_TRUE(other);
    platform.hotkeys.unregisterEventHotKey(*other);
}

TEST_F(HotkeyContract, ACombinationCanBeRegisteredAgainAfterItWasGivenBack) {
    for (int round = 0; round < 3; ++round) {
        auto const hotKey = platform.hotkeys.registerEventHotKey(kKey2, kModifiers, kId);
        ASSERT_TRUE(hotKey) << round;
        platform.hotkeys.unregisterEventHotKey(*hotKey);
    }
}

} // namespace
} // namespace trovel
