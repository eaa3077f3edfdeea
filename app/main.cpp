#include "app/process_entry.h"
#include "platform/backend.h"

int main() {
    auto const backend = trovel::makeBackend();
    if (!backend) return backend.error();
    trovel::runProcess((*backend)->platform(),
                       {.showOnboardingWindow = [] {},
                        .showPermissionsWindow = [](auto const& /*onComplete*/) {},
                        .deliverToTerminal = [](auto const& /*image*/) {}});
    return 0;
}
