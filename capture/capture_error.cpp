#include "capture/capture_error.h"

#include "platform/fatal.h"

namespace trovel {

std::optional<std::string> userText(CaptureError const& error) {
    switch (error.kind) {
    case CaptureError::Kind::sckFailed: return "Screen capture failed: " + error.message;
    case CaptureError::Kind::cancelled: return std::nullopt;
    case CaptureError::Kind::noMatchingDisplay: return "Could not find the target display.";
    case CaptureError::Kind::cropFailed: return "Failed to crop the captured image.";
    }
    fatal("a capture error of no kind");
}

} // namespace trovel
