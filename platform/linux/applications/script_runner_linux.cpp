#include "platform/linux/applications/script_runner_linux.h"

#include "platform/activation_script.h"
#include "platform/linux/applications/application_groups.h"

namespace trovel {

void ScriptRunnerLinux::execute(std::string_view source) {
    auto const name = activatedApplicationName(source);
    if (!name) return;
    if (auto const group = groups_.withName(*name)) groups_.activate(*group);
}

} // namespace trovel
