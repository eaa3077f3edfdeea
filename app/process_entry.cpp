#include "app/process_entry.h"

#include <utility>

namespace trovel {

void runProcess(Platform const& platform, AppDelegate::Hooks hooks) {
    auto& application = platform.application;
    bool const isTestBundle = application.environmentHas("XCTestBundlePath") ||
                              application.environmentHas("XCTestConfigurationFilePath");
    std::shared_ptr<AppDelegate> delegate;
    if (!isTestBundle) {
        delegate = AppDelegate::make(platform, std::move(hooks));
        application.setDelegate(delegate.get());
    }
    application.run();
}

} // namespace trovel
