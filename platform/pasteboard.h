#pragma once

#include "platform/image.h"

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

protected:
    Pasteboard() = default;
    ~Pasteboard() = default;
};

} // namespace trovel
