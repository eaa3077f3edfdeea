#include "platform/linux/qt/icons_linux.h"

#include "platform/linux/applications/application_identity.h"
#include "platform/linux/qt/qt_image.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/symbols.h"

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

/// A view of the icon's pixels, which it must not outlive.
QImage imageOf(WindowIcon const& icon) {
    return {reinterpret_cast<uchar const*>(icon.words.data()), icon.width, icon.height,
            QImage::Format_ARGB32};
}

} // namespace

QIcon iconOf(DesktopEntry const& entry) {
    if (entry.icon.empty()) return {};
    auto const name = qtString(entry.icon);
    return entry.icon.starts_with('/') ? QIcon(name) : QIcon::fromTheme(name);
}

IconsLinux::IconsLinux(ApplicationGroups& groups, std::vector<std::filesystem::path> dataFolders)
    : groups_(groups), entries_(std::move(dataFolders)) {}

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
    auto const icon = groups_.icon(*group, pixels);
    if (!icon) return std::nullopt;
    return applicationIcon(
        imageOf(*icon).scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation), size);
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
