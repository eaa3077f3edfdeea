#include "platform/linux/x11/monitors.h"

#include "platform/linux/files/plain_text.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/properties.h"

#include <QByteArray>
#include <QtGlobal>

#include <xcb/randr.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace trovel {

namespace {

constexpr double kLargestScale = 16;

std::optional<double> parsedFactor(std::string_view text) {
    text = trimmed(text);
    double value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool const isNumber = error == std::errc{} && end == text.data() + text.size();
    if (!isNumber || !std::isfinite(value) || value <= 0 || value > kLargestScale) return {};
    return value;
}

/// Takes the text up to the next `separator` off the front of `rest`.
std::string_view takePart(std::string_view& rest, char separator) {
    auto const end = rest.find(separator);
    auto const part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return part;
}

std::optional<double> factorOfScreen(std::string_view list, std::string_view name,
                                     std::size_t index) {
    for (std::size_t position = 0; !list.empty(); ++position) {
        auto const entry = takePart(list, ';');
        auto const equals = entry.rfind('=');
        bool const isMeant = equals == std::string_view::npos
                                 ? position == index
                                 : trimmed(entry.substr(0, equals)) == name;
        if (isMeant) return parsedFactor(entry.substr(equals + 1));
    }
    return {};
}

std::optional<double> factorOfText(std::string_view resources) {
    constexpr std::string_view kDpi = "Xft.dpi:";
    constexpr double kPlainDpi = 96;
    constexpr double kLargestDpi = kPlainDpi * kLargestScale;
    while (!resources.empty()) {
        auto const line = trimmed(takePart(resources, '\n'));
        if (!line.starts_with(kDpi)) continue;
        auto const text = trimmed(line.substr(kDpi.size()));
        double dpi = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), dpi);
        if (error != std::errc{} || !(dpi > 0 && dpi <= kLargestDpi)) return {};
        return dpi / kPlainDpi;
    }
    return {};
}

std::string nameOfAtom(XcbConnection const& x, xcb_get_atom_name_cookie_t cookie) {
    auto const reply = x.reply<xcb_get_atom_name_reply>(cookie);
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::vector<Monitor> listedByRandr(XcbConnection& x) {
    std::vector<Monitor> monitors;
    if (x.extension(xcb_randr_id) == nullptr) return monitors;
    auto const reply = x.reply<xcb_randr_get_monitors_reply>(
        xcb_randr_get_monitors(x.get(), x.root(), /*get_active=*/1));
    if (!reply) return monitors;
    std::vector<xcb_get_atom_name_cookie_t> names;
    std::ptrdiff_t primary = 0;
    auto each = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; each.rem > 0; xcb_randr_monitor_info_next(&each)) {
        auto const& info = *each.data;
        if (info.width == 0 || info.height == 0) continue;
        if (info.primary != 0) primary = std::ssize(monitors);
        monitors.push_back({info.name, {}, {info.x, info.y, info.width, info.height}, 1});
        names.push_back(xcb_get_atom_name(x.get(), info.name));
    }
    for (std::size_t i = 0; i < names.size(); ++i) monitors[i].name = nameOfAtom(x, names[i]);
    std::rotate(monitors.begin(), monitors.begin() + primary,
                monitors.begin() + std::min(primary + 1, std::ssize(monitors)));
    return monitors;
}

} // namespace

double scaleOfMonitor(ScaleSettings const& settings, std::string_view name, std::size_t index) {
    if (auto const own = factorOfScreen(settings.screenFactors, name, index)) return *own;
    if (auto const all = parsedFactor(settings.factor)) return *all;
    return factorOfText(settings.resources).value_or(1);
}

std::vector<Monitor> listMonitors(XcbConnection& x) {
    constexpr std::uint32_t kAll = 1U << 20U; // in units of four bytes
    auto const resources =
        xcb_get_property(x.get(), 0, x.root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, kAll);
    auto monitors = listedByRandr(x);
    auto const property = propertyFrom(x, resources);
    if (x.isLost()) return {};
    if (monitors.empty()) {
        auto const& screen = x.screen();
        monitors.push_back(
            {screen.root, "", {0, 0, screen.width_in_pixels, screen.height_in_pixels}, 1});
    }
    ScaleSettings const settings{qgetenv("QT_SCREEN_SCALE_FACTORS").toStdString(),
                                 qgetenv("QT_SCALE_FACTOR").toStdString(),
                                 std::string(bytesOf(property))};
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        monitors[i].scale = scaleOfMonitor(settings, monitors[i].name, i);
    }
    return monitors;
}

} // namespace trovel
