#pragma once

#include <cstdint>

namespace trovel {

/// What this program itself put on the clipboard last.
enum class WrittenContents : std::uint8_t { picture, text };

} // namespace trovel
