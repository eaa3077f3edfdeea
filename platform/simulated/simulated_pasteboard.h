#pragma once

#include "platform/pasteboard.h"
#include "platform/simulated/faults.h"

#include <cstdint>

namespace trovel {

/// The general pasteboard, which the user's other programs write to as well.
class SimulatedPasteboard final : public Pasteboard {
public:
    SimulatedPasteboard(Journal& journal, Faults& faults) : journal_(journal), faults_(faults) {}
    ~SimulatedPasteboard() = default;

    void clearContents() override;
    bool writeImage(Image const& image) override;
    bool writeText(std::string_view text) override;

    /// Another program writes a text.
    void copyElsewhere(std::string text) { replace(std::move(text)); }

    [[nodiscard]] PasteboardContents const& contents() const { return contents_; }
    /// The picture on the pasteboard with its pixels; without pixels when there is none.
    [[nodiscard]] Image const& image() const { return image_; }
    /// Goes up with every change, whoever makes it.
    [[nodiscard]] std::uint64_t changeCount() const { return changeCount_; }

private:
    void replace(PasteboardContents contents);

    Journal& journal_;
    Faults& faults_;
    PasteboardContents contents_;
    Image image_;
    std::uint64_t changeCount_ = 0;
};

} // namespace trovel
