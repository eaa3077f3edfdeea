#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace trovel {

/// Bytes that are shared and never change.
using ByteBuffer = std::shared_ptr<std::vector<std::uint8_t> const>;

} // namespace trovel
