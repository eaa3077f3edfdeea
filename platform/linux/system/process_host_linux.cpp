#include "platform/linux/system/process_host_linux.h"

#include "platform/linux/system/child_process.h"

#include <unistd.h>

namespace trovel {

std::int32_t ProcessHostLinux::processIdentifier() const {
    return getpid();
}

std::string ProcessHostLinux::bundlePath() const {
    return ownProgram();
}

bool ProcessHostLinux::isSystemAtLeast(int, int) const {
    return true;
}

bool ProcessHostLinux::startChild(std::string const& executable,
                                  std::span<std::string const> arguments) {
    return startChildProcess(executable, arguments);
}

} // namespace trovel
