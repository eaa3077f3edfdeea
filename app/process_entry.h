#pragma once

#include "app/product.h"
#include "platform/platform.h"

namespace trovel {

/// Runs the program until its event loop ends. Inside a test bundle, which the process environment
/// tells, it runs without a delegate: no status item, no hotkey, no windows.
void runProcess(Platform const& platform, Product product);

} // namespace trovel
