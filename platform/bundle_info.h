#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// What the program's own bundle says of it. Main thread only.
class BundleInfo {
public:
    BundleInfo(BundleInfo const&) = delete;
    BundleInfo& operator=(BundleInfo const&) = delete;

    /// The value of an information-dictionary key; none when it is missing or no string.
    [[nodiscard]] virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;

protected:
    BundleInfo() = default;
    ~BundleInfo() = default;
};

} // namespace trovel
