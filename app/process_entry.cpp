#include "app/process_entry.h"

#include "app/app_delegate.h"
#include "app/update_manager.h"
#include "setup_windows/window_slots.h"

#include <utility>

namespace trovel {

void runProcess(Platform const& platform, Product product) {
    auto& application = platform.application;
    bool const isTestBundle = application.environmentHas("XCTestBundlePath") ||
                              application.environmentHas("XCTestConfigurationFilePath");
    WindowSlots slots;
    SharedUpdateManager updates;
    std::shared_ptr<AppDelegate> delegate;
    if (!isTestBundle) {
        delegate = AppDelegate::make({platform, slots}, updates, std::move(product));
        application.setDelegate(delegate.get());
    }
    application.run();
}

} // namespace trovel
