#include "platform/ui/window.h"
#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/mac_session.h"
#include "tests/macos/run/native_tree.h"
#include "tests/scenarios/scenario_world.h"

#include <algorithm>
#include <filesystem>

namespace trovel {

namespace {

namespace fs = std::filesystem;

class MacScenarioWorld final : public ScenarioWorld {
public:
    [[nodiscard]] Platform platform() override { return session_.platform(); }

    void launch() override {
        [fakes::application() launch];
        session_.settle();
    }
    void wait(Duration duration) override { session_.wait(duration); }

    void pressKey(KeyCode keyCode, EventFlags flags) override {
        mac().keyDown(keyCode, flags);
        session_.settle();
        mac().keyUp(keyCode);
    }
    void drag(Point from, Point to) override {
        mac().movePointer(NSMakePoint(from.x, from.y));
        mac().leftDown();
        mac().movePointer(NSMakePoint((from.x + to.x) / 2, (from.y + to.y) / 2));
        mac().movePointer(NSMakePoint(to.x, to.y));
        mac().leftUp();
        session_.settle();
    }
    void click(View const& view) override {
        mac().movePointer(onScreen(view));
        mac().leftDown();
        mac().leftUp();
        session_.settle();
    }
    bool choose(std::vector<std::string> const& titles) override {
        bool const isChosen = fakes::chooseRow(titles);
        session_.settle();
        return isChosen;
    }
    void closeWindow(Window& window) override {
        @autoreleasepool {
            [nativeWindow(window) performClose];
        }
        session_.settle();
    }
    void setGrants(bool accessibility, bool screenRecording) override {
        mac().isTrusted = accessibility;
        mac().mayRecordScreen = screenRecording;
    }
    void setActivationIsGranted(bool isGranted) override {
        mac().activation = isGranted ? fakes::Activation::atOnce : fakes::Activation::never;
    }

    std::int32_t startProgram(std::string const& name, std::string const& bundle) override {
        fakes::Program program;
        program.name = name;
        program.bundleIdentifier = bundle;
        program.window = CGRectMake(100, 50, 800, 600);
        return mac().start(std::move(program)).processIdentifier;
    }
    void bringToFront(std::int32_t processIdentifier) override {
        mac().bringToFront(processIdentifier);
        session_.settle();
    }
    [[nodiscard]] std::vector<Received> received(std::int32_t processIdentifier) override {
        std::vector<Received> all;
        for (auto const& [time, what] : mac().programs.at(processIdentifier).received) {
            all.push_back({time, what});
        }
        return all;
    }

    [[nodiscard]] int visibleWindows() override {
        return static_cast<int>(std::ranges::count_if(
            mac().shown, [](auto const& each) { return each.window != nil; }));
    }
    [[nodiscard]] std::vector<std::string> capturedFiles() override {
        std::vector<std::string> paths;
        for (auto const& entry : fs::recursive_directory_iterator(mac().home)) {
            if (entry.is_regular_file()) paths.push_back(entry.path());
        }
        return paths;
    }

private:
    [[nodiscard]] static fakes::Mac& mac() { return fakes::mac(); }

    MacSession session_;
};

} // namespace

std::unique_ptr<ScenarioWorld> makeScenarioWorld() {
    return std::make_unique<MacScenarioWorld>();
}

} // namespace trovel
