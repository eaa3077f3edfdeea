#pragma once

#include "platform/updater.h"

#include <string>

namespace trovel {

class Alerts;

/// There is no update framework here, so the controller says how this copy is updated.
class UpdaterLinux final : public Updater {
public:
    /// `program` is the file that this copy is started from. What is handed in must outlive this
    /// and its controllers.
    UpdaterLinux(Alerts& alerts, std::string program);
    ~UpdaterLinux();

    std::unique_ptr<UpdaterController> makeStandardController() override;

private:
    Alerts& alerts_;
    std::string program_;
};

/// How the copy of the program that lies at that path is updated, as whole sentences.
[[nodiscard]] std::string updateAdvice(std::string const& program);

} // namespace trovel
