#pragma once

#include <cstdint>
#include <expected>
#include <string>

namespace trovel {

/// The states of a login item (SMAppService.Status).
enum class LoginItemStatus : std::uint8_t { notRegistered, enabled, requiresApproval, notFound };

/// The program's own login item. Main thread only.
class LoginItem {
public:
    /// An error is the system's localized description.
    using Result = std::expected<void, std::string>;

    LoginItem(LoginItem const&) = delete;
    LoginItem& operator=(LoginItem const&) = delete;

    /// Read from the system each time.
    [[nodiscard]] virtual LoginItemStatus status() const = 0;
    [[nodiscard]] virtual Result registerItem() = 0;
    [[nodiscard]] virtual Result unregisterItem() = 0;

protected:
    LoginItem() = default;
    ~LoginItem() = default;
};

} // namespace trovel
