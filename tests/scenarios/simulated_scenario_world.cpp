#include "platform/simulated/simulated_desktop.h"
#include "platform/ui/window.h"
#include "tests/scenarios/scenario_world.h"
#include "tests/support/views.h"

#include <algorithm>
#include <sstream>

namespace trovel {

namespace {

std::string textOf(PasteboardContents const& contents) {
    std::ostringstream text;
    if (auto const* const picture = std::get_if<Picture>(&contents)) {
        auto const& region = picture->region;
        text << "picture " << region.x << ',' << region.y << ',' << region.width << ','
             << region.height;
    } else if (auto const* const written = std::get_if<std::string>(&contents)) {
        text << "text " << *written;
    }
    return std::move(text).str();
}

std::string textOf(effect::Clicked const& click) {
    std::ostringstream text;
    text << "click " << click.position.x << ',' << click.position.y;
    return std::move(text).str();
}
std::string textOf(effect::Pasted const& paste) {
    return "paste " + textOf(paste.contents);
}
std::string textOf(effect::Typed const& key) {
    return "key " + std::to_string(key.keyCode);
}

class SimulatedScenarioWorld final : public ScenarioWorld {
public:
    [[nodiscard]] Platform platform() override { return desktop_.platform(); }

    void launch() override { desktop_.application.launch(); }
    void wait(Duration duration) override { desktop_.user.wait(duration); }

    void pressKey(KeyCode keyCode, EventFlags flags) override {
        desktop_.user.pressKey(keyCode, flags);
    }
    void drag(Point from, Point to) override { desktop_.user.drag(from, to); }
    void click(View const& view) override {
        auto const centre = centreOf(view);
        auto const& frame = view.window()->attributes().contentRect;
        desktop_.user.click({frame.x + centre.x, frame.y + centre.y});
    }
    bool choose(std::vector<std::string> const& titles) override {
        if (titles.size() == 1) return desktop_.statusBar.choose({titles.front()});
        return desktop_.statusBar.choose({titles.front(), titles.back()});
    }
    void closeWindow(Window& window) override { window.receiveCloseRequest(); }
    void setGrants(bool accessibility, bool screenRecording) override {
        set(Permission::accessibility, accessibility);
        set(Permission::screenRecording, screenRecording);
    }
    void setActivationIsGranted(bool isGranted) override {
        desktop_.application.setSelfActivation(isGranted ? SelfActivation::comesToFront
                                                         : SelfActivation::changesNothing);
    }

    std::int32_t startProgram(std::string const& name, std::string const& bundle) override {
        SimulatedProgram program;
        program.localizedName = name;
        program.bundleIdentifier = bundle;
        program.windows.push_back({0, {100, 50}, {800, 600}});
        auto const started = desktop_.workspace.start(program).processIdentifier;
        bringToFront(started);
        return started;
    }
    void bringToFront(std::int32_t processIdentifier) override {
        desktop_.workspace.bringToFront(processIdentifier);
    }
    [[nodiscard]] std::vector<Received> received(std::int32_t processIdentifier) override {
        std::vector<Received> all;
        for (auto const& [time, input] : desktop_.workspace.program(processIdentifier)->inputs) {
            all.push_back({time, std::visit([](auto const& each) { return textOf(each); }, input)});
        }
        return all;
    }

    [[nodiscard]] int visibleWindows() override {
        return static_cast<int>(desktop_.windows.visibleWindows().size());
    }
    [[nodiscard]] std::vector<std::string> capturedFiles() override {
        std::vector<std::string> paths;
        for (auto const& [path, file] : desktop_.files.files()) paths.push_back(path);
        return paths;
    }

private:
    void set(Permission permission, bool isGranted) {
        isGranted ? desktop_.permissions.grant(permission)
                  : desktop_.permissions.revoke(permission);
    }

    SimulatedDesktop desktop_;
};

} // namespace

std::unique_ptr<ScenarioWorld> makeScenarioWorld() {
    return std::make_unique<SimulatedScenarioWorld>();
}

} // namespace trovel
