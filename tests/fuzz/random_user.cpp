#include "tests/fuzz/random_user.h"

#include "capture/screenshot_manager.h"
#include "platform/carbon_modifiers.h"
#include "platform/ui/menu.h"
#include "platform/ui/view.h"
#include "platform/ui/window.h"
#include "settings/hotkey.h"
#include "settings/preferences.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trovel {

namespace {

using namespace std::chrono_literals;

struct KnownProgram {
    char const* name;
    char const* bundleIdentifier;
};

constexpr std::array<KnownProgram, 10> kPrograms{{
    {"Claude", "com.anthropic.claudefordesktop"},
    {"ChatGPT", "com.openai.chat"},
    {"Perplexity", "com.perplexity.mac"},
    {"Copilot", "com.microsoft.copilot"},
    {"Chrome", "com.google.Chrome"},
    {"Chrome", "com.google.Chrome.app.mail"},
    {"Safari", "com.apple.Safari"},
    {"Notes", "org.example.notes"},
    {"Quo\"ted", "com.google.Gemini"},
    {"", "org.mozilla.firefox"},
}};
constexpr std::array<char const*, 6> kPreferredNames{"Claude", "Gemini", "Safari",
                                                     "MyTool", "",       "Notes"};
constexpr char const* kToolPath = "/Applications/Tool.app";
constexpr std::size_t kMostPrograms = 10;
constexpr std::size_t kMostDisplays = 4;
constexpr std::size_t kMostAlerts = 5;

Product product() {
    return {.displayName = "Trovel",
            .changelogUrl = "https://trovel.example",
            .supportEmail = "help@trovel.example"};
}

/// The event flags that make that Carbon mask.
EventFlags eventFlags(std::uint32_t modifiers) {
    EventFlags flags = 0;
    if ((modifiers & kCmdKey) != 0) flags |= kFlagCommand;
    if ((modifiers & kShiftKey) != 0) flags |= kFlagShift;
    if ((modifiers & kOptionKey) != 0) flags |= kFlagOption;
    if ((modifiers & kControlKey) != 0) flags |= kFlagControl;
    return flags;
}

/// The rows of a menu and its submenus that do something.
void addRows(std::vector<std::shared_ptr<MenuItem>>& rows, Menu const& menu) {
    for (auto const& item : menu.items()) {
        if (item->hasAction()) rows.push_back(item);
        if (item->submenu()) addRows(rows, *item->submenu());
    }
}

void addViews(std::vector<View*>& views, View& view) {
    views.push_back(&view);
    for (auto const& subview : view.subviews()) addViews(views, *subview);
}

} // namespace

RandomUser::RandomUser(std::uint64_t seed, int events)
    : random_(seed), swarm_(Swarm::draw(random_)), eventsLeft_(events), desktop_(random_.next()),
      delegate_(AppDelegate::make({desktop_.platform(), slots_}, updates_, product())),
      invariants_(desktop_, *delegate_) {
    desktop_.application.setSelfActivation(swarm_.selfActivation);
    desktop_.alerts.setReadingTime(swarm_.readingTime);
    desktop_.preferences.store(kHasCompletedOnboarding, random_.chance(700));
    desktop_.openPanels.install(kToolPath, {"org.example", "MyTool"});
    if (random_.chance(300)) desktop_.process.setSystemVersion(15, 0);
    for (std::size_t operation = 0; operation < swarm_.faultsPerMille.size(); ++operation) {
        desktop_.faults.failSometimes(static_cast<Operation>(operation),
                                      swarm_.faultsPerMille[operation]);
    }
}

RandomUser::~RandomUser() = default;

LifeReport RandomUser::live() {
    desktop_.application.setDelegate(delegate_.get());
    desktop_.application.launch();
    desktop_.queue.observe([this] { invariants_.check(); });
    actLater();
    auto const& application = desktop_.application;
    while (eventsLeft_ > 0 && application.isRunning() && !invariants_.failure()) {
        desktop_.queue.step();
    }
    auto const deliveries = invariants_.deliveries();
    auto const virtualTime = desktop_.queue.now();
    if (!invariants_.failure()) heal();
    // The restart of the permissions window ends a life before its time.
    if (application.isRunning() && !invariants_.failure()) expectOneDelivery();
    if (!invariants_.failure()) quit();
    LifeReport report{std::nullopt, desktop_.journal.digest(), deliveries, virtualTime};
    if (auto const& failure = invariants_.failure()) {
        report.failure = invariants_.history() + *failure;
    }
    return report;
}

void RandomUser::note(std::string text) {
    desktop_.journal.record(effect::Noted{std::move(text)});
}

void RandomUser::actLater() {
    auto pause = std::chrono::milliseconds(random_.between(0, swarm_.longestPause.count()));
    if (random_.chance(swarm_.longPausesPerMille)) {
        pause = std::chrono::milliseconds(random_.between(0, 40000));
    }
    desktop_.queue.after(pause, [this] { act(); });
}

void RandomUser::act() {
    if (eventsLeft_ == 0 || !desktop_.application.isRunning() || invariants_.failure()) return;
    --eventsLeft_;
    actLater(); // first: what follows may nest in an alert
    invariants_.userActs();
    // Each alert that is up nests a loop in the one before: a user has to read some of them.
    bool const mustRead = desktop_.alerts.shown().size() >= kMostAlerts;
    auto const deed = mustRead ? Deed::closeAlert : swarm_.nextDeed(random_);
    note(std::string(kDeedNames[static_cast<std::size_t>(deed)]));
    perform(deed);
}

void RandomUser::perform(Deed deed) {
    switch (deed) {
    case Deed::pressHotkey: return pressHotkey(0);
    case Deed::holdHotkey: return pressHotkey(5);
    case Deed::drag: return drag();
    case Deed::press: return desktop_.user.mouseDown(anyPoint());
    case Deed::move: return desktop_.user.movePointer(anyPoint());
    case Deed::release: return desktop_.user.mouseUp(anyPoint());
    case Deed::click: return desktop_.user.click(anyPoint());
    case Deed::rightClick: return desktop_.user.rightClick(anyPoint());
    case Deed::escape: return desktop_.user.pressKey(kKeyEscape);
    case Deed::otherKey: return otherKey();
    case Deed::closeAlert: return desktop_.alerts.close();
    case Deed::startProgram: return startProgram();
    case Deed::quitProgram: return quitProgram();
    case Deed::switchProgram: return switchProgram();
    case Deed::changeWindows: return changeWindows();
    case Deed::changeGrant: return changeGrant();
    case Deed::changeDisplays: return changeDisplays();
    case Deed::changeFault: return changeFault();
    case Deed::changePreference: return changePreference();
    case Deed::copyElsewhere: return desktop_.pasteboard.copyElsewhere("copied elsewhere");
    case Deed::changeLatency: return changeLatency();
    case Deed::recordHotkey: return recordHotkey();
    case Deed::chooseMenuRow: return chooseMenuRow();
    case Deed::clickInWindow: return clickInWindow();
    case Deed::closeWindow: return closeWindow();
    case Deed::pressKeyWithModifiers: return pressKeyWithModifiers();
    }
}

void RandomUser::pressHotkey(int repeats) {
    auto const [key, modifiers] = hotkey();
    desktop_.user.holdKey(key, eventFlags(modifiers), repeats);
}

void RandomUser::otherKey() {
    constexpr std::array<EventFlags, 4> kFlags{0, kFlagCommand, kFlagShift, kFlagCapsLock};
    auto const flags = kFlags[random_.below(kFlags.size())];
    desktop_.user.pressKey(static_cast<KeyCode>(random_.below(60)), flags);
}

void RandomUser::switchProgram() {
    auto const* program = anyProgram();
    desktop_.workspace.bringToFront(program != nullptr ? program->processIdentifier : 0);
}

void RandomUser::changeGrant() {
    auto const permission =
        random_.chance(500) ? Permission::accessibility : Permission::screenRecording;
    if (random_.chance(300)) {
        desktop_.permissions.revoke(permission);
    } else {
        desktop_.permissions.grant(permission);
    }
}

void RandomUser::changeLatency() {
    auto const latency = random_.chance(300) ? 0 : random_.between(1, 3000);
    desktop_.worker.setLatency(std::chrono::milliseconds(latency));
}

Point RandomUser::anyPoint() {
    auto const& displays = desktop_.screens.displays();
    if (displays.empty() || random_.chance(30)) {
        return {static_cast<double>(random_.between(-3000, 6000)),
                static_cast<double>(random_.between(-3000, 3000))};
    }
    auto const& frame = displays[random_.below(displays.size())].frame;
    // Halves, so that rounding has something to do, and now and then the very edge.
    auto const along = [this](double from, double length) {
        if (random_.chance(50)) return random_.chance(500) ? from : from + length;
        return from + 0.5 * static_cast<double>(random_.below(2 * static_cast<unsigned>(length)));
    };
    double const x = along(frame.x, frame.width);
    return {x, along(frame.y, frame.height)};
}

void RandomUser::drag() {
    auto const from = anyPoint();
    auto to = anyPoint();
    if (random_.chance(150)) {
        to = {from.x + static_cast<double>(random_.between(-6, 6)),
              from.y + static_cast<double>(random_.between(-6, 6))};
    }
    desktop_.user.drag(from, to);
}

SimulatedProgram* RandomUser::anyProgram() {
    auto const& programs = desktop_.workspace.programs();
    return programs.empty() ? nullptr : programs[random_.below(programs.size())].get();
}

KeyCombination RandomUser::hotkey() const {
    auto const combinations = desktop_.hotkeys.combinations();
    return combinations.empty() ? KeyCombination{kDefaultHotkey.keyCode, kDefaultHotkey.modifiers}
                                : combinations.front();
}

void RandomUser::startProgram() {
    if (desktop_.workspace.programs().size() >= kMostPrograms) return quitProgram();
    auto const& known = kPrograms[random_.below(kPrograms.size())];
    SimulatedProgram program;
    program.localizedName = known.name;
    program.bundleIdentifier = known.bundleIdentifier;
    if (random_.chance(30)) program.localizedName.reset();
    if (random_.chance(30)) program.bundleIdentifier.reset();
    if (random_.chance(100)) program.activationPolicy = ActivationPolicy::accessory;
    program.activationDelay = std::chrono::milliseconds(random_.between(0, 3000));
    program.refusesActivation = random_.chance(150);
    auto const windows = random_.below(3);
    for (std::uint64_t window = 0; window < windows; ++window) {
        auto const corner = anyPoint();
        program.windows.push_back({0, desktop_.screens.flipped(corner), {500, 400}});
    }
    auto const& started = desktop_.workspace.start(std::move(program));
    if (random_.chance(500)) desktop_.workspace.bringToFront(started.processIdentifier);
}

void RandomUser::quitProgram() {
    if (auto const* program = anyProgram()) desktop_.workspace.quit(program->processIdentifier);
}

void RandomUser::changeWindows() {
    auto* program = anyProgram();
    if (program == nullptr) return;
    switch (random_.below(4)) {
    case 0:
        desktop_.workspace.openWindow(program->processIdentifier, anyPoint(), {300, 300});
        break;
    case 1: program->windows.clear(); break;
    case 2: program->hidesFocusedWindow = !program->hidesFocusedWindow; break;
    default: program->hidesWindowList = !program->hidesWindowList; break;
    }
}

void RandomUser::changeDisplays() {
    auto const& displays = desktop_.screens.displays();
    if (displays.size() >= kMostDisplays || (!displays.empty() && random_.chance(500))) {
        desktop_.screens.detach(displays[random_.below(displays.size())].displayId);
        return;
    }
    constexpr std::array<double, 5> kScales{1, 1.25, 1.5, 1.75, 2};
    double const x = static_cast<double>(random_.between(-2, 2)) * 1600;
    double const y = displays.empty() ? 0 : static_cast<double>(random_.between(-400, 400));
    desktop_.screens.attach({nextDisplay_++,
                             {displays.empty() ? 0 : x, y, 1600, 900},
                             kScales[random_.below(kScales.size())],
                             !random_.chance(50)});
}

void RandomUser::changeFault() {
    auto const operation = static_cast<Operation>(random_.below(kOperationNames.size()));
    switch (random_.below(4)) {
    case 0: desktop_.faults.failOnce(operation); break;
    case 1: desktop_.faults.failAlways(operation); break;
    default: desktop_.faults.heal(operation); break;
    }
}

void RandomUser::changePreference() {
    auto& preferences = desktop_.preferences;
    switch (random_.below(6)) {
    case 0: preferences.store(kAutoSendEnabled, random_.chance(500)); break;
    case 1: preferences.store(kTerminalModeEnabled, random_.chance(100)); break;
    case 2:
        preferences.store(kPreferredAIApp,
                          std::string(kPreferredNames[random_.below(kPreferredNames.size())]));
        break;
    case 3: preferences.remove(kPreferredAIApp); break;
    case 4:
        preferences.store(kCustomAppName, std::string("MyTool"));
        preferences.store(kCustomAppBundleID, std::string("org.example"));
        break;
    default: preferences.store(kAutoSendEnabled, std::string("yes")); break; // no Boolean
    }
}

void RandomUser::recordHotkey() {
    delegate_->registerHotkey(random_.chance(500) ? kDefaultHotkey
                                                  : Hotkey{111, kControlKey + kOptionKey});
}

void RandomUser::chooseMenuRow() {
    desktop_.statusBar.open();
    std::vector<std::shared_ptr<MenuItem>> rows;
    addRows(rows, *desktop_.statusBar.menu());
    rows.pop_back(); // "Quit": lives would be too short
    rows[random_.below(rows.size())]->receiveChosen();
}

void RandomUser::clickInWindow() {
    auto const windows = desktop_.windows.visibleWindows();
    if (windows.empty()) return;
    desktop_.openPanels.setAnswer(random_.chance(500) ? std::optional<std::string>(kToolPath)
                                                      : std::nullopt);
    std::vector<View*> views;
    addViews(views, *windows.front()->contentView());
    auto const& frame = windows.front()->attributes().contentRect;
    auto const& view = *views[random_.below(views.size())];
    auto const origin = view.convertFromWindow({-frame.x, -frame.y});
    desktop_.user.click({view.frame().width / 2 - origin.x, view.frame().height / 2 - origin.y});
}

void RandomUser::closeWindow() {
    auto const windows = desktop_.windows.visibleWindows();
    if (!windows.empty()) windows[random_.below(windows.size())]->receiveCloseRequest();
}

void RandomUser::pressKeyWithModifiers() {
    auto const flags = eventFlags(static_cast<std::uint32_t>(random_.below(0x20)) << 8U);
    desktop_.user.holdModifiers(flags);
    desktop_.user.pressKey(static_cast<KeyCode>(random_.below(60)), flags);
    desktop_.user.holdModifiers(0);
}

void RandomUser::heal() {
    note("heal");
    desktop_.faults.healAll();
    desktop_.permissions.grant(Permission::accessibility);
    desktop_.permissions.grant(Permission::screenRecording);
    desktop_.worker.setLatency(20ms);
    desktop_.user.mouseUp({0, 0});
    closeWindows();
    // Whatever is under way ends by itself: an overlay by its time-out, a delivery by its alert.
    desktop_.queue.advance(2min);
    invariants_.check();
    auto const& manager = delegate_->screenshotManager();
    if (manager.isCapturing()) invariants_.fail("a capture goes on two minutes later");
    if (desktop_.input.isAnythingDown()) invariants_.fail("a key or button is down at rest");
}

void RandomUser::closeWindows() {
    for (auto* window : desktop_.windows.visibleWindows()) window->receiveCloseRequest();
}

void RandomUser::expectOneDelivery() {
    note("one capture must arrive");
    while (auto const* program = anyProgram()) {
        desktop_.workspace.quit(program->processIdentifier);
    }
    desktop_.screens.detachAll();
    desktop_.screens.attach({1, {0, 0, 1440, 900}, 2, true});
    desktop_.preferences.store(kTerminalModeEnabled, false);
    desktop_.preferences.store(kAutoSendEnabled, true);
    desktop_.preferences.remove(kPreferredAIApp);
    SimulatedProgram claude;
    claude.localizedName = "Claude";
    claude.bundleIdentifier = "com.anthropic.claudefordesktop";
    claude.windows.push_back({0, {100, 50}, {800, 600}});
    auto const& target = desktop_.workspace.start(std::move(claude));

    delegate_->registerHotkey(kDefaultHotkey);
    desktop_.user.pressDefaultHotkey();
    desktop_.queue.advance(100ms);
    desktop_.user.drag({100, 100}, {400, 300});
    desktop_.queue.advance(5s);
    invariants_.check();
    PasteboardContents const expected = Picture{1, {200, 1200, 600, 400}, {300, 200}};
    auto const pastes = target.all<effect::Pasted>();
    if (pastes.size() != 1 || pastes.front().contents != expected) {
        invariants_.fail("a capture on a healed desktop did not arrive in five seconds");
    }
    auto const keys = target.all<effect::Typed>();
    if (keys.size() != 1 || keys.front().keyCode != kKeyReturn) {
        invariants_.fail("a capture on a healed desktop was not submitted once");
    }
}

void RandomUser::quit() {
    note("quit");
    desktop_.application.terminate();
    invariants_.check();
    auto const& hotkeys = desktop_.hotkeys;
    if (hotkeys.hotKeyCount() + hotkeys.handlerCount() > 0) {
        invariants_.fail("a hotkey or its handler is left behind");
    }
    std::weak_ptr<AppDelegate> const weak = delegate_;
    desktop_.queue.observe(nullptr);
    slots_ = {};
    delegate_.reset();
    if (!weak.expired()) invariants_.fail("the delegate is kept alive at rest");
    desktop_.queue.advance(1min);
    if (desktop_.queue.pending() > 0) invariants_.fail("something waits for ever");
}

} // namespace trovel
