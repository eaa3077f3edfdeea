#include "platform/linux/applications/application_identity.h"

#include "platform/linux/files/plain_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trovel {

namespace {

constexpr std::string_view kEnding = ".desktop";

/// More windows than anybody opens between two changes of the desktop entries.
constexpr std::size_t kMostKnown = 1000;

struct Known {
    std::string_view name;
    std::string_view bundleIdentifier;
};

constexpr std::string_view kChrome = "com.google.Chrome";
constexpr std::string_view kFirefox = "org.mozilla.firefox";
constexpr std::string_view kEdge = "com.microsoft.edgemac";
constexpr std::string_view kClaude = "com.anthropic.claudefordesktop";
constexpr std::string_view kCode = "com.microsoft.VSCode";
constexpr std::string_view kCursor = "com.todesktop.230313mzl4w4u92";
constexpr std::string_view kWarp = "dev.warp.Warp-Stable";

// Desktop ids without their ending and window classes, in lower case, as distributions, Flatpak and
// Snap name them.
constexpr auto kPrograms = std::to_array<Known>({
    {"google-chrome", kChrome},
    {"google-chrome-stable", kChrome},
    {"com.google.chrome", kChrome},
    {"chromium", kChrome},
    {"chromium-browser", kChrome},
    {"chromium_chromium", kChrome},
    {"org.chromium.chromium", kChrome},
    {"firefox", kFirefox},
    {"firefox-esr", kFirefox},
    {"firefox_firefox", kFirefox},
    {"org.mozilla.firefox", kFirefox},
    {"microsoft-edge", kEdge},
    {"microsoft-edge-stable", kEdge},
    {"com.microsoft.edge", kEdge},
    {"claude", kClaude},
    {"claude-desktop", kClaude},
    {"com.anthropic.claude", kClaude},
    {"code", kCode},
    {"code_code", kCode},
    {"com.visualstudio.code", kCode},
    {"cursor", kCursor},
    {"warp", kWarp},
    {"warp-terminal", kWarp},
    {"dev.warp.warp", kWarp},
});

// The chat services have web apps and clients by many makers; what they share is the name that
// their desktop entries show.
constexpr auto kChats = std::to_array<Known>({
    {"Claude", kClaude},
    {"ChatGPT", "com.openai.chat"},
    {"Gemini", "com.google.Gemini"},
    {"Perplexity", "com.perplexity"},
    {"Copilot", "com.microsoft.copilot"},
});

// Desktop ids without their ending and window classes, in lower case.
constexpr auto kTerminals = std::to_array<std::string_view>({
    "org.gnome.terminal",
    "gnome-terminal",
    "gnome-terminal-server",
    "org.kde.konsole",
    "konsole",
    "xfce4-terminal",
    "xterm",
    "debian-xterm",
    "uxterm",
    "debian-uxterm",
    "kitty",
    "alacritty",
    "org.wezfurlong.wezterm",
    "wezterm",
});

template <std::size_t count>
std::optional<std::string_view> lookUp(std::array<Known, count> const& table,
                                       std::string_view name) {
    auto const found = std::ranges::find(table, name, &Known::name);
    if (found == table.end()) return std::nullopt;
    return found->bundleIdentifier;
}

std::string desktopId(std::string_view name) {
    return std::string(name).append(kEnding);
}

/// The identity of the application with that desktop id, installed or not.
ApplicationIdentity identity(std::string_view id, std::string_view name) {
    auto stem = asciiLowerCase(id);
    if (stem.ends_with(kEnding)) stem.resize(stem.size() - kEnding.size());
    auto known = lookUp(kPrograms, stem);
    if (!known) known = lookUp(kChats, name);
    return {std::string(id), std::string(known.value_or(id)),
            std::string(name.empty() ? id : name)};
}

/// Chromium gives the windows of an installed web app this instance, and its own class.
bool isWebApp(std::string_view instance) {
    return instance.starts_with("crx_");
}

/// The file name of the program that a process runs; empty when that cannot be seen.
std::string executableOf(std::int32_t process) {
    if (process <= 0) return {};
    std::error_code failed;
    auto const path =
        std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", failed);
    auto name = path.filename().string();
    constexpr std::string_view kReplaced = " (deleted)"; // the program was updated while it ran
    if (name.ends_with(kReplaced)) name.resize(name.size() - kReplaced.size());
    return plainText(name);
}

} // namespace

ApplicationIdentity identityOf(DesktopEntry const& entry) {
    return identity(entry.id, entry.name);
}

bool isTerminal(std::string_view bundleIdentifier) {
    auto const name = asciiLowerCase(bundleIdentifier);
    if (!name.ends_with(kEnding)) return false;
    auto const stem = std::string_view(name).substr(0, name.size() - kEnding.size());
    return std::ranges::find(kTerminals, stem) != kTerminals.end();
}

ApplicationIdentities::ApplicationIdentities(std::vector<std::filesystem::path> dataFolders)
    : entries_(std::move(dataFolders)) {}

void ApplicationIdentities::refresh() {
    if (entries_.refresh() || known_.size() > kMostKnown) known_.clear();
}

ApplicationIdentity const& ApplicationIdentities::of(WindowProperties const& properties) {
    auto const known = known_.find(properties);
    if (known != known_.end()) return known->second;
    return known_.emplace(properties, find(properties)).first->second;
}

ApplicationIdentity ApplicationIdentities::find(WindowProperties const& properties) const {
    if (auto const* const entry = entryOf(properties)) return identityOf(*entry);
    auto const& [gtkId, instance, className, process] = properties;
    auto const self = isWebApp(instance)   ? instance
                      : !gtkId.empty()     ? gtkId
                      : !className.empty() ? className
                      : !instance.empty()  ? instance
                                           : executableOf(process);
    return self.empty() ? ApplicationIdentity{} : identity(desktopId(self), self);
}

DesktopEntry const* ApplicationIdentities::entryOf(WindowProperties const& properties) const {
    auto const& [gtkId, instance, className, process] = properties;
    if (!gtkId.empty()) {
        if (auto const* const entry = entries_.withId(desktopId(gtkId))) return entry;
    }
    // The instance comes first, for a web app shares its class with the browser.
    if (!instance.empty()) {
        if (auto const* const entry = entries_.withStartupClass(instance)) return entry;
        if (isWebApp(instance)) return nullptr;
    }
    if (!className.empty()) {
        if (auto const* const entry = entries_.withStartupClass(className)) return entry;
    }
    for (auto const* const name : {&className, &instance}) {
        if (name->empty()) continue;
        if (auto const* const entry = entries_.withId(desktopId(*name))) return entry;
    }
    auto const executable = executableOf(process);
    return executable.empty() ? nullptr : entries_.soleWithExecutable(executable);
}

} // namespace trovel
