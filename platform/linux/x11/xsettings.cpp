#include "platform/linux/x11/xsettings.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/properties.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

namespace trovel {

namespace {

/// Reads numbers and bytes one after the other; what lies behind the end is empty and zero.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }
    void setBigEndian(bool isBigEndian) { isBigEndian_ = isBigEndian; }

    std::string_view take(std::size_t count) {
        auto const taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    /// Takes `count` bytes and those that fill up the last four.
    std::string_view takePadded(std::size_t count) {
        auto const taken = take(count);
        take((4 - count % 4) % 4);
        return taken;
    }

    std::uint32_t number(std::size_t byteCount) {
        auto bytes = std::string(take(byteCount));
        if (!isBigEndian_) std::ranges::reverse(bytes);
        std::uint32_t result = 0;
        for (char const byte : bytes) result = result << 8U | static_cast<unsigned char>(byte);
        return result;
    }

private:
    std::string_view rest_;
    bool isBigEndian_ = false;
};

std::string settingsProperty(XcbConnection& connection) {
    auto const owner = selectionOwner(connection, "_XSETTINGS_S0");
    if (owner == XCB_WINDOW_NONE) return {};
    constexpr std::uint32_t kMaximumWords = 16 * 1024;
    auto const property = readProperty(connection, owner, "_XSETTINGS_SETTINGS", kMaximumWords);
    return std::string(bytesOf(property));
}

/// Whether the theme is a dark one. The name is all that desktops agree on: dark themes are called
/// something with "dark".
bool isDark(std::string_view settings) {
    auto theme = xsettingsText(settings, "Net/ThemeName").value_or("");
    std::ranges::transform(theme, theme.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return theme.find("dark") != std::string::npos;
}

} // namespace

std::optional<std::string> xsettingsText(std::string_view property, std::string_view name) {
    enum Type : std::uint8_t { integer = 0, text = 1 };
    constexpr std::size_t kHeaderPadding = 3;
    Reader reader(property);
    reader.setBigEndian(reader.number(1) == XCB_IMAGE_ORDER_MSB_FIRST);
    reader.take(kHeaderPadding);
    reader.number(4); // the serial number of the last change
    for (auto count = reader.number(4); count > 0 && !reader.isAtEnd(); --count) {
        auto const type = reader.number(1);
        reader.take(1);
        auto const settingName = reader.takePadded(reader.number(2));
        reader.number(4); // the serial number of its last change
        if (type == text) {
            auto const value = reader.takePadded(reader.number(4));
            if (settingName == name) return std::string(value);
        } else {
            constexpr std::size_t kIntegerBytes = 4;
            constexpr std::size_t kColorBytes = 8;
            reader.take(type == integer ? kIntegerBytes : kColorBytes);
        }
    }
    return std::nullopt;
}

DesktopLook readDesktopLook(XcbConnection& connection) {
    auto const settings = settingsProperty(connection);
    return {isDark(settings), xsettingsText(settings, "Net/IconThemeName").value_or("Adwaita")};
}

} // namespace trovel
