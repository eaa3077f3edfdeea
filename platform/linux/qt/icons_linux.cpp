#include "platform/linux/qt/icons_linux.h"

#include "platform/linux/applications/application_identity.h"
#include "platform/linux/qt/qt_image.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/symbols.h"
#include "platform/linux/x11/connection.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace trovel {

namespace {

ApplicationIcon applicationIcon(QImage image, double size) {
    return {{std::make_shared<QtImage const>(std::move(image)), {size, size}}};
}

/// The pixels that an icon of that size has on the finest screen.
int pixelsOf(double size) {
    return static_cast<int>(std::lround(size * qGuiApp->devicePixelRatio()));
}

std::optional<ApplicationIcon> applicationIcon(QIcon const& icon, double size) {
    auto const pixmap = icon.pixmap(QSize(pixelsOf(size), pixelsOf(size)), 1);
    if (pixmap.isNull()) return std::nullopt;
    return applicationIcon(pixmap.toImage(), size);
}

/// The picture in a window's `_NET_WM_ICON` that fits `pixels` best; null when there is none. The
/// property holds pictures one after the other: width, height, and ARGB words that are not
/// premultiplied.
QImage iconOfWindow(XcbConnection& connection, xcb_window_t window, int pixels) {
    constexpr std::uint32_t kMostWords = 1024 * 1024;
    constexpr std::uint32_t kMostPixelsPerSide = 1024;
    auto const reply = connection.reply<xcb_get_property_reply>(
        xcb_get_property(connection.get(), 0, window, connection.atom("_NET_WM_ICON"),
                         XCB_ATOM_CARDINAL, 0, kMostWords));
    if (!reply || reply->format != 32) return {};
    auto const* words = static_cast<std::uint32_t const*>(xcb_get_property_value(reply.get()));
    auto left = static_cast<std::size_t>(reply->value_len);
    QImage best;
    while (left > 2) {
        auto const width = words[0];
        auto const height = words[1];
        auto const count = std::size_t{width} * height;
        if (width == 0 || height == 0 || width > kMostPixelsPerSide ||
            height > kMostPixelsPerSide || count > left - 2) {
            break;
        }
        // The smallest that is large enough, else the largest.
        auto const size = static_cast<int>(width);
        bool const isBetter = best.isNull() || (best.width() < pixels && size > best.width()) ||
                              (size >= pixels && size < best.width());
        if (isBetter) {
            best = QImage(reinterpret_cast<uchar const*>(words + 2), size, static_cast<int>(height),
                          QImage::Format_ARGB32)
                       .copy();
        }
        words += 2 + count;
        left -= 2 + count;
    }
    return best;
}

} // namespace

QIcon iconOf(DesktopEntry const& entry) {
    if (entry.icon.empty()) return {};
    auto const name = qtString(entry.icon);
    return entry.icon.starts_with('/') ? QIcon(name) : QIcon::fromTheme(name);
}

IconsLinux::IconsLinux(XcbConnection& connection, ApplicationGroups& groups,
                       std::vector<std::filesystem::path> dataFolders)
    : connection_(connection), groups_(groups), entries_(std::move(dataFolders)) {}

bool IconsLinux::hasSystemSymbol(std::string_view name) const {
    return hasSymbol(name);
}

std::optional<ApplicationIcon>
IconsLinux::iconOfRunningApplication(RunningApplication const& application, double size) const {
    if (application.bundleIdentifier) {
        auto icon = iconOfInstalledApplication(*application.bundleIdentifier, size);
        if (icon) return icon;
    }
    auto const group = groups_.withProcessIdentifier(application.processIdentifier);
    if (!group) return std::nullopt;
    auto const pixels = pixelsOf(size);
    auto const image = iconOfWindow(connection_, group->windows.front(), pixels);
    if (image.isNull()) return std::nullopt;
    return applicationIcon(
        image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation), size);
}

std::optional<ApplicationIcon>
IconsLinux::iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const {
    entries_.refresh();
    DesktopEntry const* found = nullptr;
    for (auto const* const entry : entries_.all()) {
        if (identityOf(*entry).bundleIdentifier != bundleIdentifier) continue;
        // Of several, one that is shown, then the first by its id.
        if (found == nullptr || std::pair(!entry->isShown, std::string_view(entry->id)) <
                                    std::pair(!found->isShown, std::string_view(found->id))) {
            found = entry;
        }
    }
    return found != nullptr ? applicationIcon(iconOf(*found), size) : std::nullopt;
}

} // namespace trovel
