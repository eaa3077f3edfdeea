#pragma once

#include <string_view>

namespace trovel {

/// Stops the process for a state that cannot be: writes `what` and a newline to standard error and
/// aborts. For programming errors and impossible data only; ordinary failures are values.
[[noreturn]] void fatal(std::string_view what);

} // namespace trovel
