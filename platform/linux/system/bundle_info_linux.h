#pragma once

#include "platform/bundle_info.h"

namespace trovel {

/// The version and build number that were compiled in: there is no bundle to ask.
class BundleInfoLinux final : public BundleInfo {
public:
    std::optional<std::string> stringForKey(std::string_view key) const override;
};

} // namespace trovel
