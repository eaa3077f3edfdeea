#pragma once

#include "platform/bundle_info.h"

#include <map>

namespace trovel {

/// The program's bundle, version 0.1.0 build 7 until a test says otherwise.
class SimulatedBundleInfo final : public BundleInfo {
public:
    SimulatedBundleInfo() = default;
    ~SimulatedBundleInfo() = default;

    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override {
        auto const found = values_.find(key);
        return found != values_.end() ? std::optional(found->second) : std::nullopt;
    }

    void set(std::string key, std::string value) {
        values_.insert_or_assign(std::move(key), std::move(value));
    }
    void removeAll() { values_.clear(); }

private:
    std::map<std::string, std::string, std::less<>> values_{{"CFBundleShortVersionString", "0.1.0"},
                                                            {"CFBundleVersion", "7"}};
};

} // namespace trovel
