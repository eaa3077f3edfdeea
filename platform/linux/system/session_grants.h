#pragma once

#include <string_view>

namespace trovel {

/// What a desktop session lets its programs do, which stands for the grants that people give.
struct SessionGrants {
    bool mayCapture = false; ///< See the screen.
    bool maySend = false;    ///< Send clicks and keys to other programs.
    /// What is missing and what would help, for people; empty when nothing is missing.
    std::string_view explanation = {};
};

} // namespace trovel
