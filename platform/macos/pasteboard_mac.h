#pragma once

#include "platform/pasteboard.h"

namespace trovel {

/// The general pasteboard of the login session.
class PasteboardMac final : public Pasteboard {
public:
    PasteboardMac() = default;

    void clearContents() override;
    bool writeImage(Image const& image) override;
    bool writeText(std::string_view text) override;
};

} // namespace trovel
