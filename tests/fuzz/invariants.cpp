#include "tests/fuzz/invariants.h"

#include "capture/screenshot_manager.h"
#include "platform/ui/menu.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

namespace trovel {

namespace {

using namespace std::chrono_literals;

/// The time-out, and what a worker of the slowest kind may add to it.
constexpr auto kLongestSession = 30s + 10s;
constexpr auto kCaptureToDelivery = 300ms;
constexpr auto kPasteToSubmit = 800ms;

constexpr std::array<std::string_view, 8> kWholeAlertTexts{
    "Failed to encode screenshot.",
    "Could not create captures directory.",
    "Failed to save screenshot to disk.",
    "Screenshot file not found after save.",

    "Could not find the target display.",
    "Failed to crop the captured image.",
    "No AI chat app detected. Open Claude, ChatGPT, Gemini, or Perplexity.",
    "Could not bring the target app to front. The screenshot is on your clipboard — paste it "
    "manually."};
constexpr std::string_view kCaptureFailed = "Screen capture failed: ";
constexpr std::string_view kNotRunning = " is not running.";
constexpr std::string_view kAbout = "Version 0.1.0 (7)\n\n";

bool isKnown(Alert const& alert) {
    auto const& text = alert.informativeText;
    if (alert.buttons != std::vector<std::string>{"OK"}) return false;
    if (alert.messageText == "Invalid App" || alert.messageText == "Launch at Login") {
        return alert.style == AlertStyle::warning;
    }
    bool const isWhole = std::ranges::find(kWholeAlertTexts, text) != kWholeAlertTexts.end();
    return alert.messageText == "Trovel" && alert.style == AlertStyle::informational &&
           (isWhole || text.starts_with(kCaptureFailed) || text.starts_with(kAbout) ||
            text.ends_with(kNotRunning));
}

} // namespace

/// Reads one line of the journal after the other.
class Invariants::Reader {
public:
    Reader(Invariants& owner, Time time) : owner_(owner), time_(time) {}

    void operator()(effect::CaptureSessionBegan const&) {
        auto const& permissions = owner_.desktop_.permissions;
        owner_.require(permissions.isGranted(Permission::accessibility) &&
                           permissions.isGranted(Permission::screenRecording),
                       "a capture began without a grant");
        owner_.sessionBegan_ = time_;
        owner_.screensAtBegin_ = owner_.desktop_.screens.displays().size();
    }
    void operator()(effect::DisplayCaptured const& captured) {
        owner_.require(!captured.configuration.showsCursor, "a capture shows the pointer");
        owner_.captures_.insert(time_);
    }
    void operator()(effect::PasteboardCleared const&) {
        auto const source = owner_.captures_.find(time_ - kCaptureToDelivery);
        owner_.require(source != owner_.captures_.end(),
                       "the pasteboard was touched without a capture 0.3 s before");
        if (source != owner_.captures_.end()) owner_.captures_.erase(source);
        ++owner_.clears_;
    }
    void operator()(effect::PictureWritten const& written) {
        ++owner_.writes_;
        owner_.require(written.picture.isClean, "a picture shows the overlay or the pointer");
        owner_.require(!written.picture.region.isEmpty(), "an empty picture was written");
    }
    void operator()(effect::ScriptExecuted const&) {
        owner_.require(++owner_.scripts_ <= owner_.clears_, "a script ran without a delivery");
    }
    void operator()(effect::KeyPosted const& posted) {
        if (posted.action == KeyAction::up) return;
        auto const& preferences = owner_.desktop_.preferences;
        if (posted.keyCode == kKeyV) {
            owner_.require(++owner_.pastes_ <= owner_.clears_, "more pastes than deliveries");
            owner_.require(posted.flags == kFlagCommand, "a paste with other flags than Command");
            if (preferences.boolForKey("autoSendEnabled")) owner_.pastesToSubmit_.insert(time_);
        } else {
            auto const paste = owner_.pastesToSubmit_.find(time_ - kPasteToSubmit);
            owner_.require(posted.keyCode == kKeyReturn && posted.flags == 0,
                           "a key was posted that is neither paste nor Return");
            owner_.require(paste != owner_.pastesToSubmit_.end(),
                           "a Return without a paste 0.8 s before that asked for it");
            if (paste != owner_.pastesToSubmit_.end()) owner_.pastesToSubmit_.erase(paste);
        }
    }
    void operator()(effect::AlertShown const& shown) {
        owner_.require(isKnown(shown.alert), "an alert that the program does not have");
    }
    void operator()(effect::FaultStruck const& fault) {
        // The submission follows a paste that could not be made as well.
        if (fault.operation == Operation::makeKeyEvent) owner_.pastesToSubmit_.insert(time_);
        owner_.wasHotkeyRefused_ |= fault.operation == Operation::registerHotKey ||
                                    fault.operation == Operation::installEventHandler;
    }
    void operator()(effect::MenuOpened const&) { owner_.wasMenuOpened_ = true; }
    template <class Other>
    void operator()(Other const&) {}

private:
    Invariants& owner_;
    Time time_;
};

void Invariants::fail(std::string const& what) {
    if (!failure_) failure_ = what;
}

void Invariants::check() {
    constexpr std::size_t kHistoryLimit = 120;
    if (failure_) return;
    auto entries = desktop_.journal.take();
    for (auto const& entry : entries) std::visit(Reader(*this, entry.time), entry.effect);
    checkInput(entries);
    checkState();
    checkHotkeys();
    checkMenu();
    isUsersBlock_ = false;
    for (auto& entry : entries) history_.push_back(std::move(entry));
    while (history_.size() > kHistoryLimit) history_.pop_front();
}

void Invariants::checkState() {
    auto const depth = desktop_.cursors.depth();
    auto const shown = desktop_.windows.visibleWindows();
    auto const overlays = static_cast<std::size_t>(std::ranges::count_if(
        shown, [](auto* window) { return window->attributes().level == kScreenSaverWindowLevel; }));
    auto const sessions = desktop_.capturer.openSessions();
    bool const isCapturing = delegate_.screenshotManager().isCapturing();
    require(depth == 0 || depth == 1, "the cursor stack is out of balance");
    require(desktop_.monitors.count() == static_cast<std::size_t>(depth),
            "the key monitor does not last as long as the crosshair");
    std::set<std::pair<double, double>> sizes;
    for (auto const* window : shown) {
        auto const& frame = window->attributes().contentRect;
        bool const isSetup =
            window->canBecomeKey() && window->attributes().level == kNormalWindowLevel;
        require(!isSetup || sizes.emplace(frame.width, frame.height).second,
                "a setup window is open twice");
    }
    require(overlays == 0 || depth == 1, "an overlay without its crosshair");
    require(overlays <= screensAtBegin_, "more than one overlay session");
    require(sessions == (isCapturing ? 1 : 0), "the capture session is not the manager's");
    require(isCapturing || (depth == 0 && overlays == 0), "an overlay outlives its capture");
    require(!isCapturing || desktop_.queue.now() - sessionBegan_ <= kLongestSession,
            "a capture never ends");
}

void Invariants::checkHotkeys() {
    auto const& hotkeys = desktop_.hotkeys;
    require(hotkeys.hotKeyCount() <= 1 && hotkeys.handlerCount() <= 1,
            "more than one hotkey or handler");
    if (wasHotkeyRefused_ || !desktop_.application.isRunning()) return;
    require(hotkeys.hotKeyCount() == 1 && hotkeys.handlerCount() == 1,
            "the hotkey or its handler is gone");
}

void Invariants::checkMenu() {
    auto const menu = desktop_.statusBar.menu();
    if (!menu || !wasMenuOpened_) return;
    auto const& rows = menu->items();
    auto const terminal = std::ranges::find(rows, "Terminal Mode", &MenuItem::title);
    auto const& targets = (*terminal)->submenu()->items();
    require(std::ranges::count(targets, MenuItem::State::on, &MenuItem::state) == 1,
            "not exactly one terminal item is checked");
}

void Invariants::checkInput(std::vector<JournalEntry> const& entries) {
    bool const isTrusted = desktop_.permissions.isGranted(Permission::accessibility);
    bool wasEventRefused = false;
    int buttonsDown = 0;
    std::optional<effect::KeyPosted> keyDown;
    for (auto const& [time, each] : entries) {
        if (auto const* mouse = std::get_if<effect::MousePosted>(&each)) {
            bool const isDown = mouse->action == MouseAction::leftDown;
            buttonsDown += isDown ? 1 : -1;
            postedWithGrant_ += isDown && isTrusted ? 1 : 0;
        } else if (auto const* key = std::get_if<effect::KeyPosted>(&each)) {
            bool const isDown = key->action == KeyAction::down;
            require(isDown != keyDown.has_value(), "a key press and its release are not a pair");
            if (!isDown && keyDown) {
                require(key->keyCode == keyDown->keyCode && key->flags == keyDown->flags,
                        "a release of another key than the one pressed");
            }
            keyDown = isDown ? std::optional(*key) : std::nullopt;
            postedWithGrant_ += isDown && isTrusted ? 1 : 0;
        } else if (auto const* fault = std::get_if<effect::FaultStruck>(&each)) {
            wasEventRefused |= fault->operation == Operation::makeMouseEvent;
        } else if (!isUsersBlock_ && (std::holds_alternative<effect::Clicked>(each) ||
                                      std::holds_alternative<effect::Typed>(each) ||
                                      std::holds_alternative<effect::Pasted>(each))) {
            ++arrivedFromProgram_;
        }
    }
    require(!keyDown, "a key stays down");
    require(buttonsDown == 0 || wasEventRefused, "the mouse button stays down");
    require(arrivedFromProgram_ <= postedWithGrant_, "an event arrived without the grant");
}

std::string Invariants::history() const {
    std::ostringstream stream;
    for (auto const& entry : history_) stream << entry << '\n';
    return std::move(stream).str();
}

} // namespace trovel
