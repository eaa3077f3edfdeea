#include "platform/linux/system/updater_linux.h"

#include "platform/alerts.h"

#include <string_view>
#include <utility>

namespace trovel {

namespace {

class AdvisingController final : public UpdaterController {
public:
    AdvisingController(Alerts& alerts, std::string advice)
        : alerts_(alerts), advice_(std::move(advice)) {}
    ~AdvisingController() override = default;

    void checkForUpdates(MenuItem const* /*sender*/) override {
        alerts_.runModal({"Trovel", advice_, AlertStyle::informational, {"OK"}, true});
    }

private:
    Alerts& alerts_;
    std::string advice_;
};

/// Whether the package manager put it there: it keeps out of /usr/local (the Filesystem Hierarchy
/// Standard).
bool isPackaged(std::string_view program) {
    bool const isInUsr = program.starts_with("/usr/") && !program.starts_with("/usr/local/");
    return isInUsr || program.starts_with("/bin/");
}

} // namespace

std::string updateAdvice(std::string const& program) {
    std::string const version = "This is Trovel " TROVEL_VERSION ". ";
    if (isPackaged(program)) {
        return version + "It came with a package of your system, whose package manager updates it "
                         "together with your other programs.";
    }
    return version +
           "It does not look for new versions by itself. They are published at " TROVEL_RELEASES_URL
           " for you to install in place of this one.";
}

UpdaterLinux::UpdaterLinux(Alerts& alerts, std::string program)
    : alerts_(alerts), program_(std::move(program)) {}
UpdaterLinux::~UpdaterLinux() = default;

std::unique_ptr<UpdaterController> UpdaterLinux::makeStandardController() {
    return std::make_unique<AdvisingController>(alerts_, updateAdvice(program_));
}

} // namespace trovel
