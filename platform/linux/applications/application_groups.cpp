#include "platform/linux/applications/application_groups.h"

#include <algorithm>
#include <set>
#include <utility>

namespace trovel {

namespace {

template <class Matches>
std::optional<ApplicationGroup> firstOf(RunningGroups running, Matches const& matches) {
    auto const found = std::ranges::find_if(
        running.groups, [&](ApplicationGroup const& group) { return matches(group.application); });
    if (found == running.groups.end()) return std::nullopt;
    return std::move(*found);
}

} // namespace

ApplicationGroups::ApplicationGroups(WindowSource& windows,
                                     std::vector<std::filesystem::path> dataFolders,
                                     std::int32_t ownProcess)
    : windows_(windows), identities_(std::move(dataFolders)), ownProcess_(ownProcess) {}

RunningGroups ApplicationGroups::read() {
    auto const list = windows_.read();
    identities_.refresh();
    RunningGroups running;
    std::map<std::string, std::size_t> groupOf; // by the identity's key
    std::map<WindowId, std::size_t> groupOfWindow;
    std::vector<ApplicationIdentity> identities;
    for (auto const& client : list.clients) {
        auto identity = identities_.of(client.properties);
        // Of a window that says nothing only that it is there is known.
        if (identity.key.empty()) {
            identity.key = std::to_string(static_cast<std::uint64_t>(client.id));
        }
        auto const [at, isNew] = groupOf.emplace(identity.key, running.groups.size());
        if (isNew) {
            running.groups.emplace_back();
            running.groups.back().application.activationPolicy = ActivationPolicy::accessory;
            identities.push_back(std::move(identity));
        }
        auto& application = running.groups[at->second].application;
        if (client.isInSwitcher && client.properties.systemProcess != ownProcess_) {
            application.activationPolicy = ActivationPolicy::regular;
        }
        groupOfWindow.emplace(client.id, at->second);
    }

    // Numbers and names of those that are gone become free before new ones are given.
    std::erase_if(given_, [&](auto const& pair) { return !groupOf.contains(pair.first); });
    for (std::size_t i = 0; i < running.groups.size(); ++i) {
        auto const& [number, name] = given(identities[i]);
        auto& application = running.groups[i].application;
        application.processIdentifier = number;
        application.bundleIdentifier = identities[i].bundleIdentifier;
        application.localizedName = name;
    }
    for (std::size_t i = 0; i < list.byRecency.size(); ++i) {
        auto const window = list.byRecency[i];
        auto& group = running.groups[groupOfWindow.at(window)];
        if (group.windows.empty()) group.recency = i;
        group.windows.push_back(window);
    }
    if (list.active != WindowId::none) {
        running.frontmost = running.groups[groupOfWindow.at(list.active)].application;
    }
    return running;
}

ApplicationGroups::Given const& ApplicationGroups::given(ApplicationIdentity const& identity) {
    auto const [at, isNew] = given_.try_emplace(identity.key);
    auto& [number, name] = at->second;
    if (!isNew) return at->second;
    number = ++lastGiven_;
    auto const isTaken = std::ranges::any_of(given_, [&](auto const& other) {
        return other.first != identity.key && other.second.name == identity.name;
    });
    name = identity.name;
    if (name && isTaken) name->append(" (").append(identity.key).append(")");
    return at->second;
}

std::optional<ApplicationGroup> ApplicationGroups::withProcessIdentifier(std::int32_t identifier) {
    return firstOf(read(), [&](RunningApplication const& application) {
        return application.processIdentifier == identifier;
    });
}

std::optional<ApplicationGroup> ApplicationGroups::withName(std::string_view name) {
    return firstOf(read(), [&](RunningApplication const& application) {
        return application.localizedName == name;
    });
}

} // namespace trovel
