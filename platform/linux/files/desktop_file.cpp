#include "platform/linux/files/desktop_file.h"

#include "platform/linux/files/plain_text.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <ios>

namespace trovel {

namespace {

/// The text that a desktop file's string stands for.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text.push_back(value[i]);
            continue;
        }
        switch (value[++i]) {
        case 's': text.push_back(' '); break;
        case 'n': text.push_back('\n'); break;
        case 't': text.push_back('\t'); break;
        case 'r': text.push_back('\r'); break;
        default: text.push_back(value[i]);
        }
    }
    return text;
}

} // namespace

bool readDesktopFile(std::filesystem::path const& path, DesktopKeyHandler const& onKey) {
    constexpr std::size_t kLongestFile = std::size_t{64} * 1024;
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    std::string text(kLongestFile, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    std::string_view rest(text.data(), static_cast<std::size_t>(file.gcount()));
    bool isMainGroup = false;
    while (!rest.empty()) {
        auto const whole = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(whole.size() + 1, rest.size()));
        auto const line = trimmed(whole);
        if (line.starts_with('[')) isMainGroup = line == "[Desktop Entry]";
        auto const equals = line.find('=');
        if (!isMainGroup || line.starts_with('#') || equals == std::string_view::npos) continue;
        onKey(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return true;
}

std::string programOfExec(std::string_view value) {
    auto const line = unescaped(value);
    bool const isQuoted = line.starts_with('"');
    std::string program;
    for (std::size_t i = isQuoted ? 1 : 0; i < line.size(); ++i) {
        if (line[i] == (isQuoted ? '"' : ' ')) break;
        bool const isEscape = isQuoted && line[i] == '\\';
        bool const isPercent = line[i] == '%' && line.substr(i + 1).starts_with('%');
        if ((isEscape || isPercent) && i + 1 < line.size()) ++i;
        program.push_back(line[i]);
    }
    return program;
}

} // namespace trovel
