#pragma once

#include "platform/platform.h"
#include "platform/running_application.h"
#include "platform/screens.h"
#include "platform/simulated/effects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

class PixelImage;
class Window;

/// What another program got from the desktop.
struct ProgramReport {
    std::vector<Point> clicks; ///< in the unit of input events
    int pastes = 0;
    std::vector<KeyCode> keys; ///< pressed in it, pastes apart
};

/// A desktop to check the contracts of platform/ on, with what the checks need beside the program's
/// own view of it: the user, other programs and the clock. Each desktop that Trovel runs on has
/// one.
///
/// At first there is one display of at least 800 x 600 points at scale 1 that shows a known
/// pattern, no program runs, both grants are given, and nothing is stored or on the pasteboard.
class ContractWorld {
public:
    using Duration = std::chrono::nanoseconds;

    ContractWorld() = default;
    ContractWorld(ContractWorld const&) = delete;
    ContractWorld& operator=(ContractWorld const&) = delete;
    virtual ~ContractWorld() = default;

    [[nodiscard]] virtual Platform platform() = 0;

    /// Runs the main loop for so long, or until the predicate holds; false when it never did.
    virtual void wait(Duration duration) = 0;
    [[nodiscard]] virtual bool waitUntil(std::function<bool()> const& predicate) = 0;

    /// Has a window of the program that is on the screen lie where its attributes say, which not
    /// every desktop does by itself. It is there on return.
    virtual void place(Window& window) = 0;

    // The user. Points are global screen points; what they do need not have arrived on return.
    virtual void keyDown(KeyCode keyCode, EventFlags flags) = 0;
    virtual void keyUp(KeyCode keyCode, EventFlags flags) = 0;
    virtual void movePointer(Point point) = 0;
    virtual void leftDown() = 0;
    virtual void leftUp() = 0;
    virtual void rightClick() = 0;
    /// The user closes the alert that is up, or the next one, after so long.
    virtual void closeAlertAfter(Duration duration) = 0;

    // Other programs. Each has one window with its corner at `position`, in the unit of input
    // events. They are there, and what was asked is done, on return.
    virtual RunningApplication startProgram(std::string const& name, Point position, Size size) = 0;
    virtual void quitProgram(RunningApplication const& program) = 0;
    virtual void bringToFront(RunningApplication const& program) = 0;
    [[nodiscard]] virtual ProgramReport report(RunningApplication const& program) = 0;
    virtual void takeHotKeyElsewhere(std::uint32_t keyCode, std::uint32_t modifiers) = 0;

    // What lies in the desktop's stores, seen by another program.
    virtual void storePreference(std::string_view key, PreferenceValue const& value) = 0;
    /// The preferences as a later run of the program finds them.
    [[nodiscard]] virtual PreferenceStore& laterPreferences() = 0;
    /// The pixels of the picture on the pasteboard, row by row from the top; nothing when there is
    /// no picture.
    [[nodiscard]] virtual std::optional<std::vector<std::uint32_t>> pastedPixels() = 0;

    /// The pixels of an image, as above, and those that the only display shows in that rectangle.
    [[nodiscard]] virtual std::vector<std::uint32_t> pixelsOf(PixelImage const& image) = 0;
    [[nodiscard]] virtual std::vector<std::uint32_t> displayPixels(PixelRect const& rect) = 0;
};

/// The world of this test program; defined once in each.
[[nodiscard]] std::unique_ptr<ContractWorld> makeContractWorld();

/// A check of a contract in a world of its own.
class ContractTest : public testing::Test {
protected:
    std::unique_ptr<ContractWorld> world = makeContractWorld();
    Platform platform = world->platform();
};

} // namespace trovel
