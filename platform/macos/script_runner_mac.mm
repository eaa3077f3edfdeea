#include "platform/macos/script_runner_mac.h"

#include "platform/activation_script.h"
#include "platform/macos/bridge/convert.h"

namespace trovel {

void ScriptRunnerMac::execute(std::string_view source) {
    if (!activatedApplicationName(source)) return;
    [[[NSAppleScript alloc] initWithSource:toNSString(source)] executeAndReturnError:nil];
}

} // namespace trovel
