#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// The text that asks the application called `name` to come to the front.
[[nodiscard]] std::string activationScript(std::string_view name);

/// The name in an activation script, or nothing when `source` is any other text. A name with a
/// double quote, a backslash or a control character in it makes it another text: such a name could
/// smuggle further statements into the script.
[[nodiscard]] std::optional<std::string> activatedApplicationName(std::string_view source);

} // namespace trovel
