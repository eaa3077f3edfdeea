#pragma once

#include "platform/simulated/journal.h"
#include "platform/ui/menu.h"
#include "platform/updater.h"

namespace trovel {

/// The update framework, which leaves only lines in the journal.
class SimulatedUpdater final : public Updater {
public:
    explicit SimulatedUpdater(Journal& journal) : journal_(journal) {}
    ~SimulatedUpdater() = default;

    [[nodiscard]] std::unique_ptr<UpdaterController> makeStandardController() override {
        journal_.record(effect::UpdaterMade{});
        return std::make_unique<Controller>(journal_);
    }

private:
    class Controller final : public UpdaterController {
    public:
        explicit Controller(Journal& journal) : journal_(journal) {}
        void checkForUpdates(MenuItem const* sender) override {
            journal_.record(
                effect::UpdatesChecked{sender != nullptr ? sender->title() : std::string()});
        }

    private:
        Journal& journal_;
    };

    Journal& journal_;
};

} // namespace trovel
