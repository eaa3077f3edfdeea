#pragma once

#include "app/app_delegate.h"
#include "platform/platform.h"

namespace trovel {

/// Runs the process until its event loop ends. When the environment says that a test bundle is
/// loaded into it, the loop runs without a delegate.
void runProcess(Platform const& platform, AppDelegate::Hooks hooks);

} // namespace trovel
