#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/simulated_pixels.h"
#include "tests/contract/contract_world.h"

namespace trovel {

namespace {

using namespace std::chrono_literals;

class SimulatedWorld final : public ContractWorld {
public:
    SimulatedWorld() {
        desktop_.screens.detachAll();
        desktop_.screens.attach({1, {0, 0, 800, 600}, 1, true});
    }

    [[nodiscard]] Platform platform() override { return desktop_.platform(); }

    void wait(Duration duration) override { desktop_.queue.advance(duration); }
    [[nodiscard]] bool waitUntil(std::function<bool()> const& predicate) override {
        return desktop_.queue.advanceUntil(predicate, 10s);
    }

    void place(Window& /*window*/) override {}

    void keyDown(KeyCode keyCode, EventFlags flags) override {
        desktop_.input.keyDown(keyCode, flags);
    }
    void keyUp(KeyCode keyCode, EventFlags /*flags*/) override { desktop_.input.keyUp(keyCode); }
    void movePointer(Point point) override { desktop_.input.movePointer(point); }
    void leftDown() override { desktop_.input.leftDown(desktop_.input.pointer()); }
    void leftUp() override { desktop_.input.leftUp(desktop_.input.pointer()); }
    void rightClick() override { desktop_.input.rightDown(desktop_.input.pointer()); }
    void closeAlertAfter(Duration duration) override {
        desktop_.alerts.setReadingTime(std::nullopt);
        desktop_.queue.after(duration, [this] { desktop_.alerts.close(); });
    }

    RunningApplication startProgram(std::string const& name, Point position, Size size) override {
        SimulatedProgram program;
        program.localizedName = name;
        program.bundleIdentifier = name + ".desktop";
        program.windows.push_back({0, position, size});
        auto const& started = desktop_.workspace.start(std::move(program));
        return {started.processIdentifier, started.bundleIdentifier, started.localizedName,
                started.activationPolicy};
    }
    void quitProgram(RunningApplication const& program) override {
        desktop_.workspace.quit(program.processIdentifier);
    }
    void bringToFront(RunningApplication const& program) override {
        desktop_.workspace.bringToFront(program.processIdentifier);
    }
    [[nodiscard]] ProgramReport report(RunningApplication const& program) override {
        auto const& running = *desktop_.workspace.program(program.processIdentifier);
        ProgramReport report;
        for (auto const& click : running.all<effect::Clicked>()) {
            report.clicks.push_back(click.position);
        }
        report.pastes = static_cast<int>(running.all<effect::Pasted>().size());
        for (auto const& typed : running.all<effect::Typed>()) report.keys.push_back(typed.keyCode);
        return report;
    }
    void takeHotKeyElsewhere(std::uint32_t keyCode, std::uint32_t modifiers) override {
        desktop_.hotkeys.takeElsewhere({keyCode, modifiers});
    }

    void storePreference(std::string_view key, PreferenceValue const& value) override {
        desktop_.preferences.store(key, value);
    }
    [[nodiscard]] PreferenceStore& laterPreferences() override { return desktop_.preferences; }
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> pastedPixels() override {
        auto const& image = desktop_.pasteboard.image();
        if (!image.pixels) return std::nullopt;
        return pixelsOf(*image.pixels);
    }

    [[nodiscard]] std::vector<std::uint32_t> pixelsOf(PixelImage const& image) override {
        auto const& pixels = dynamic_cast<SimulatedPixels const&>(image);
        std::vector<std::uint32_t> colors;
        for (int y = 0; y < image.heightPixels(); ++y) {
            for (int x = 0; x < image.widthPixels(); ++x) colors.push_back(pixels.colorAt(x, y));
        }
        return colors;
    }
    [[nodiscard]] std::vector<std::uint32_t> displayPixels(PixelRect const& rect) override {
        std::vector<std::uint32_t> colors;
        for (auto y = rect.y; y < rect.y + rect.height; ++y) {
            for (auto x = rect.x; x < rect.x + rect.width; ++x) {
                colors.push_back(desktopColor(1, x, y));
            }
        }
        return colors;
    }

private:
    SimulatedDesktop desktop_;
};

} // namespace

std::unique_ptr<ContractWorld> makeContractWorld() {
    return std::make_unique<SimulatedWorld>();
}

} // namespace trovel
