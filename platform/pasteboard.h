#pragma once

#include "platform/image.h"

#include <string_view>

namespace trovel {

/// The general pasteboard. Main thread only. What is written stays until somebody writes again.
class Pasteboard {
public:
    Pasteboard(Pasteboard const&) = delete;
    Pasteboard& operator=(Pasteboard const&) = delete;

    /// Empties the pasteboard.
    virtual void clearContents() = 0;

    /// Offers `image` in the types that the system derives from a native image: no file, no URL and
    /// no text. False when the system refused it; the pasteboard is then empty.
    virtual bool writeImage(Image const& image) = 0;

    /// Offers `text` as plain text only, byte for byte. False when the system refused it.
    virtual bool writeText(std::string_view text) = 0;

protected:
    Pasteboard() = default;
    ~Pasteboard() = default;
};

} // namespace trovel
