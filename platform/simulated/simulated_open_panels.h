#pragma once

#include "platform/open_panels.h"
#include "platform/simulated/journal.h"

#include <map>
#include <utility>

namespace trovel {

/// Open panels that the user answers at once, and the bundles that lie on the disk.
class SimulatedOpenPanels final : public OpenPanels {
public:
    explicit SimulatedOpenPanels(Journal& journal) : journal_(journal) {}
    ~SimulatedOpenPanels() = default;

    [[nodiscard]] std::optional<std::string> runModal(OpenPanel const& panel) override {
        journal_.record(effect::PanelShown{panel});
        return answer_;
    }
    [[nodiscard]] std::optional<ApplicationBundle>
    bundleAtPath(std::string const& path) const override {
        auto const found = bundles_.find(path);
        return found != bundles_.end() ? std::optional(found->second) : std::nullopt;
    }

    /// What the user chooses in the panels from now on; nothing is "Cancel".
    void setAnswer(std::optional<std::string> path) { answer_ = std::move(path); }
    void install(std::string path, ApplicationBundle bundle) {
        bundles_.insert_or_assign(std::move(path), std::move(bundle));
    }

private:
    Journal& journal_;
    std::optional<std::string> answer_;
    std::map<std::string, ApplicationBundle> bundles_;
};

} // namespace trovel
