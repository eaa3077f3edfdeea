#pragma once

#include "platform/image.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>

namespace trovel {

/// Why a capture gave no image.
struct CaptureError {
    enum class Kind : std::uint8_t { sckFailed, cancelled, noMatchingDisplay, cropFailed };

    Kind kind = Kind::cancelled;
    /// The system's own description; with sckFailed only.
    std::string message;

    friend bool operator==(CaptureError const&, CaptureError const&) = default;
};

using CaptureResult = std::expected<Image, CaptureError>;

/// What the user is told; nothing about a capture that the user cancelled.
[[nodiscard]] std::optional<std::string> userText(CaptureError const& error);

} // namespace trovel
