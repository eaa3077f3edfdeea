#include "app/process_entry.h"
#include "platform/backend.h"

int main() {
    auto const backend = trovel::makeBackend();
    if (!backend) return backend.error();
    trovel::runProcess((*backend)->platform(), {.displayName = "Trovel",
                                                .changelogUrl = TROVEL_CHANGELOG_URL,
                                                .supportEmail = TROVEL_SUPPORT_EMAIL});
    return 0;
}
