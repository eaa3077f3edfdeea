#pragma once

#include "platform/bundle_info.h"

namespace trovel {

/// The main bundle's information dictionary.
class BundleInfoMac final : public BundleInfo {
public:
    BundleInfoMac() = default;

    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override;
};

} // namespace trovel
