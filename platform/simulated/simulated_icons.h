#pragma once

#include "platform/running_application.h"
#include "platform/simulated/simulated_pixels.h"
#include "platform/ui/icons.h"

#include <map>
#include <set>
#include <string>

namespace trovel {

/// The icons of the desktop: every symbol is known until it is taken away, and applications have an
/// icon once one was given to them. An icon's picture carries the number that it was given.
class SimulatedIcons final : public Icons {
public:
    SimulatedIcons() = default;
    ~SimulatedIcons() = default;

    [[nodiscard]] bool hasSystemSymbol(std::string_view name) const override {
        return !missingSymbols_.contains(name);
    }
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfRunningApplication(RunningApplication const& application, double size) const override {
        return find(running_, application.bundleIdentifier.value_or(""), size);
    }
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const override {
        return find(installed_, bundleIdentifier, size);
    }

    void removeSymbol(std::string name) { missingSymbols_.insert(std::move(name)); }
    /// Gives the running applications with that identifier an icon, and the installed one.
    void setRunningIcon(std::string bundleIdentifier, std::uint32_t number) {
        running_.insert_or_assign(std::move(bundleIdentifier), number);
    }
    void setInstalledIcon(std::string bundleIdentifier, std::uint32_t number) {
        installed_.insert_or_assign(std::move(bundleIdentifier), number);
    }

private:
    using Numbers = std::map<std::string, std::uint32_t, std::less<>>;

    static std::optional<ApplicationIcon> find(Numbers const& numbers, std::string_view identifier,
                                               double size) {
        auto const found = numbers.find(identifier);
        if (found == numbers.end()) return std::nullopt;
        auto const side = static_cast<std::int64_t>(size);
        auto const moment = std::make_shared<SimulatedPixels::Moment>(
            SimulatedPixels::Moment{found->second, {0, 0, side, side}, {}, {}});
        return ApplicationIcon{
            {std::make_shared<SimulatedPixels>(moment, moment->display), {size, size}}};
    }

    std::set<std::string, std::less<>> missingSymbols_;
    Numbers running_;
    Numbers installed_;
};

} // namespace trovel
