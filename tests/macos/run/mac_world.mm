#include "platform/macos/bridge/image_mac.h"
#include "platform/macos/preference_store_mac.h"
#include "tests/contract/contract_world.h"
#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/fakes/images.h"
#include "tests/macos/run/mac_session.h"

#include <cstdint>

namespace trovel {

namespace {

using namespace std::chrono_literals;

NSPoint toNative(Point point) {
    return NSMakePoint(point.x, point.y);
}

/// The macOS backend over the fakes of AppKit and its companions.
class MacWorld final : public ContractWorld {
public:
    MacWorld() { mac().displays = {{1, NSMakeRect(0, 0, 800, 600), 1}}; }

    [[nodiscard]] Platform platform() override { return session_.platform(); }

    void wait(Duration duration) override { session_.wait(duration); }
    [[nodiscard]] bool waitUntil(std::function<bool()> const& predicate) override {
        return session_.waitUntil(predicate, 10s);
    }

    void place(Window& /*window*/) override {}

    void keyDown(KeyCode keyCode, EventFlags flags) override {
        mac().keyDown(keyCode, flags, keyCode == kKeyReturn ? "\r" : "");
    }
    void keyUp(KeyCode keyCode, EventFlags /*flags*/) override { mac().keyUp(keyCode); }
    void movePointer(Point point) override { mac().movePointer(toNative(point)); }
    void leftDown() override { mac().leftDown(); }
    void leftUp() override { mac().leftUp(); }
    void rightClick() override { mac().rightDown(); }
    void closeAlertAfter(Duration duration) override {
        mac().runLoop.later(duration, [this] {
            if (!mac().closeAlert()) closeAlertAfter(1ms);
        });
    }

    RunningApplication startProgram(std::string const& name, Point position, Size size) override {
        fakes::Program program;
        program.name = name;
        program.bundleIdentifier = "com.example." + name;
        program.window = CGRectMake(position.x, position.y, size.width, size.height);
        auto const& started = mac().start(std::move(program));
        return {started.processIdentifier, started.bundleIdentifier, started.name,
                ActivationPolicy::regular};
    }
    void quitProgram(RunningApplication const& program) override {
        mac().quit(program.processIdentifier);
    }
    void bringToFront(RunningApplication const& program) override {
        mac().bringToFront(program.processIdentifier);
    }
    [[nodiscard]] ProgramReport report(RunningApplication const& program) override {
        auto const& running = mac().programs.at(program.processIdentifier);
        ProgramReport report;
        for (auto const& click : running.clicks)
            report.clicks.push_back({click.x, click.y});
        report.pastes = running.pastes;
        report.keys.assign(running.keys.begin(), running.keys.end());
        return report;
    }
    void takeHotKeyElsewhere(std::uint32_t keyCode, std::uint32_t modifiers) override {
        mac().hotKeys.push_back({0, keyCode, modifiers});
    }

    void storePreference(std::string_view key, PreferenceValue const& value) override {
        std::visit([&](auto const& stored) { mac().defaults[std::string(key)] = toObject(stored); },
                   value);
    }
    [[nodiscard]] PreferenceStore& laterPreferences() override { return later_; }
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> pastedPixels() override {
        NSArray* const pasted = mac().pasted;
        if (pasted == nil || pasted.count == 0) return std::nullopt;
        NSImage* const image = [pasted objectAtIndex:0];
        FakeImage* const picture = image->picture_;
        return [picture pixels];
    }

    [[nodiscard]] std::vector<std::uint32_t> pixelsOf(PixelImage const& image) override {
        return [fakes::pictureOf(dynamic_cast<PixelImageMac const&>(image).cgImage()) pixels];
    }
    [[nodiscard]] std::vector<std::uint32_t> displayPixels(PixelRect const& rect) override {
        std::vector<std::uint32_t> pixels;
        for (auto y = rect.y; y < rect.y + rect.height; ++y) {
            for (auto x = rect.x; x < rect.x + rect.width; ++x) {
                pixels.push_back(fakes::Mac::colorAt(1, x, y));
            }
        }
        return pixels;
    }

private:
    [[nodiscard]] static fakes::Mac& mac() { return fakes::mac(); }

    static id _Nonnull toObject(bool value) { return [NSNumber numberWithBool:value]; }
    static id _Nonnull toObject(std::int64_t value) { return [NSNumber numberWithLongLong:value]; }
    static id _Nonnull toObject(double value) { return [NSNumber numberWithDouble:value]; }
    static id _Nonnull toObject(std::string const& value) { return fakes::toNative(value); }

    MacSession session_;
    PreferenceStoreMac later_;
};

} // namespace

std::unique_ptr<ContractWorld> makeContractWorld() {
    return std::make_unique<MacWorld>();
}

} // namespace trovel
