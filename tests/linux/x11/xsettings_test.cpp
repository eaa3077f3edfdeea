#include "platform/linux/x11/xsettings.h"

#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include <cstdint>
#include <string>

namespace trovel {
namespace {

/// Writes an XSETTINGS property.
class SettingsWriter {
public:
    explicit SettingsWriter(bool isBigEndian) : isBigEndian_(isBigEndian) {
        number(isBigEndian ? 1 : 0, 1);
        bytes_ += std::string(3, '\0');
        number(7, 4);
    }

    void number(std::uint32_t value, unsigned byteCount) {
        for (unsigned i = 0; i < byteCount; ++i) {
            auto const shift = 8 * (isBigEndian_ ? byteCount - 1 - i : i);
            bytes_ += static_cast<char>(value >> shift & 0xffU);
        }
    }
    void setting(std::uint8_t type, std::string const& name) {
        number(type, 1);
        number(0, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(3, 4);
    }
    void text(std::string const& name, std::string const& value) {
        setting(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
    }

    [[nodiscard]] std::string const& bytes() const { return bytes_; }

private:
    void padded(std::string const& value) {
        bytes_ += value + std::string((4 - value.size() % 4) % 4, '\0');
    }

    bool isBigEndian_;
    std::string bytes_;
};

std::string settings(std::string const& theme, bool isBigEndian = false) {
    SettingsWriter writer(isBigEndian);
    writer.number(4, 4);
    writer.setting(0, "Xft/DPI");
    writer.number(96, 4);
    writer.setting(2, "Some/Color");
    writer.number(0x1234, 4);
    writer.number(0x5678, 4);
    writer.text("Net/IconThemeName", "dark-icons");
    writer.text("Net/ThemeName", theme);
    return writer.bytes();
}

TEST(XsettingsTest, ATextIsFoundAmongOtherSettings) {
    for (bool const isBigEndian : {false, true}) {
        auto const property = settings("Adwaita", isBigEndian);
        EXPECT_EQ(xsettingsText(property, "Net/ThemeName"), "Adwaita");
        EXPECT_EQ(xsettingsText(property, "Xft/DPI"), std::nullopt);
        EXPECT_EQ(xsettingsText(property, "Net/Theme"), std::nullopt);
    }
}

TEST(XsettingsTest, WhereverItIsCutOffNothingIsReadBehindTheEnd) {
    auto const property = settings("Adwaita");
    for (std::size_t length = 0; length < property.size(); ++length) {
        auto const part = std::string(property, 0, length);
        EXPECT_EQ(xsettingsText(part, "absent"), std::nullopt);
        EXPECT_NE(xsettingsText(part, "Net/ThemeName"), "Adwaita-dark");
    }
}

TEST(XsettingsTest, WindowsFollowTheThemeThatTheDesktopTells) {
    auto const connection = XcbConnection::open();
    ASSERT_TRUE(connection);
    MainQueueLinux queue;
    ApplicationLinux const application(queue);
    auto const window = xcb_generate_id(connection->get());
    xcb_create_window(connection->get(), XCB_COPY_FROM_PARENT, window, connection->root(), 0, 0, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    auto const tell = [&](std::string const& theme) {
        auto const property = settings(theme);
        auto const name = connection->atom("_XSETTINGS_SETTINGS");
        xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, window, name, name, 8,
                            static_cast<std::uint32_t>(property.size()), property.data());
    };
    auto const isDark = [&] {
        followAppearance(readDesktopLook(*connection));
        return QApplication::palette().color(QPalette::Window).lightness() < 128;
    };
    EXPECT_FALSE(isDark()) << "nobody tells anything";
    xcb_set_selection_owner(connection->get(), window, connection->atom("_XSETTINGS_S0"),
                            XCB_CURRENT_TIME);
    EXPECT_FALSE(isDark()) << "the property is not there yet";
    tell("Adwaita-dark");
    EXPECT_TRUE(isDark());
    tell("Adwaita");
    EXPECT_FALSE(isDark());
    tell("Breeze Dark");
    EXPECT_TRUE(isDark());
}

} // namespace
} // namespace trovel
