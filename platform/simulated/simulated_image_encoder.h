#pragma once

#include "platform/image_encoder.h"
#include "platform/simulated/faults.h"

namespace trovel {

/// An encoder whose files say which picture is in them, as text.
class SimulatedImageEncoder final : public ImageEncoder {
public:
    explicit SimulatedImageEncoder(Faults& faults) : faults_(faults) {}
    ~SimulatedImageEncoder() = default;

    [[nodiscard]] ByteBuffer pngRepresentation(Image const& image) override;

private:
    Faults& faults_;
};

/// The content of the file for `image`.
[[nodiscard]] std::vector<std::uint8_t> simulatedPng(Image const& image);

} // namespace trovel
