#include "platform/linux/files/preference_store_linux.h"

#include "platform/linux/files/user_folders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace trovel {

namespace {

namespace fs = std::filesystem;

/// What a program may hold at most that has ten preferences: anything larger is no file of ours.
constexpr std::size_t kMaximumBytes = 1024 * 1024;

class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    ~FileDescriptor() {
        if (number_ >= 0) close(number_);
    }
    FileDescriptor(FileDescriptor const&) = delete;
    FileDescriptor& operator=(FileDescriptor const&) = delete;

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] explicit operator bool() const { return number_ >= 0; }

private:
    int number_;
};

bool isRegularFile(FileDescriptor const& file) {
    struct stat status{};
    return fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
}

/// The content, or nothing when it cannot be read or is larger than a file of ours can be.
std::optional<std::string> contentOf(FileDescriptor const& file) {
    std::string content;
    std::array<char, 4096> buffer{};
    while (true) {
        auto const count = ::read(file.get(), buffer.data(), buffer.size());
        if (count == 0) return content;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 || content.size() > kMaximumBytes) return std::nullopt;
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

bool writeAll(FileDescriptor const& file, std::string_view content) {
    while (!content.empty()) {
        auto const count = ::write(file.get(), content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return fsync(file.get()) == 0;
}

void makeFolder(fs::path const& folder) {
    std::error_code ignored;
    if (folder.empty() || fs::is_directory(folder, ignored)) return;
    makeFolder(folder.parent_path());
    static_cast<void>(mkdir(folder.c_str(), S_IRWXU)); // a failure shows when the file is opened
}

/// Replaces the file at `path`, or the one that a link there points to.
bool replaceFile(fs::path const& path, std::string_view content) {
    makeFolder(path.parent_path());
    std::error_code error;
    auto const resolved = fs::canonical(path, error);
    auto const target = error ? path : resolved;
    auto temporary = target.string() + ".XXXXXX";
    FileDescriptor const file(mkostemp(temporary.data(), O_CLOEXEC)); // made for this user alone
    if (!file) return false;
    if (!writeAll(file, content) || std::rename(temporary.c_str(), target.c_str()) != 0) {
        unlink(temporary.c_str());
        return false;
    }
    // Makes the new name last too; the content is complete under either name.
    FileDescriptor const folder(open(target.parent_path().c_str(), O_RDONLY | O_CLOEXEC));
    if (folder) static_cast<void>(fsync(folder.get()));
    return true;
}

/// Gives the file a name beside its own that nothing has yet, and says which.
std::optional<fs::path> setAside(fs::path const& path) {
    constexpr int kMaximumNames = 1000;
    for (int number = 1; number <= kMaximumNames; ++number) {
        fs::path name = path;
        name += number == 1 ? ".broken" : ".broken." + std::to_string(number);
        if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) {
            return name;
        }
        if (errno != EEXIST) return std::nullopt;
    }
    return std::nullopt;
}

/// Sets the file at `path` aside and puts `content` in its place; when that cannot be done, nothing
/// has changed.
bool replaceBrokenFile(fs::path const& path, std::string_view content) {
    auto const aside = setAside(path);
    if (!aside) return false;
    if (replaceFile(path, content)) return true;
    static_cast<void>(std::rename(aside->c_str(), path.c_str()));
    return false;
}

} // namespace

fs::path preferencesPath() {
    return configurationFolder() / "trovel" / "preferences.ini";
}

PreferenceStoreLinux::PreferenceStoreLinux(fs::path path) : path_(std::move(path)) {}
PreferenceStoreLinux::~PreferenceStoreLinux() = default;

/// What the file holds, an absent file being an empty one; nothing when there is something at its
/// place that must not be replaced.
std::optional<PreferenceText> PreferenceStoreLinux::read() const {
    // Without waiting: what lies there may be a pipe.
    FileDescriptor const file(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) return errno == ENOENT ? std::optional(PreferenceText()) : std::nullopt;
    if (!isRegularFile(file)) return std::nullopt;
    auto const content = contentOf(file);
    PreferenceText const text(content ? *content : std::string_view());
    if (content && !text.wasBroken()) return text;
    if (!replaceBrokenFile(path_, text.text())) return std::nullopt;
    return text;
}

std::optional<StoredPreference> PreferenceStoreLinux::value(std::string_view key) const {
    if (auto const found = unwritten_.find(key); found != unwritten_.end()) return found->second;
    auto const text = read();
    return text ? text->value(key) : std::nullopt;
}

void PreferenceStoreLinux::set(std::string_view key, StoredPreference value) {
    unwritten_.insert_or_assign(std::string(key), std::move(value));
    auto text = read();
    if (!text) return;
    for (auto const& [name, unwritten] : unwritten_) text->set(name, unwritten);
    if (replaceFile(path_, text->text())) unwritten_.clear();
}

bool PreferenceStoreLinux::boolForKey(std::string_view key) const {
    auto const found = value(key);
    auto const* const boolean = found ? std::get_if<bool>(&*found) : nullptr;
    return boolean && *boolean;
}

std::int64_t PreferenceStoreLinux::integerForKey(std::string_view key) const {
    auto const found = value(key);
    auto const* const number = found ? std::get_if<std::int64_t>(&*found) : nullptr;
    return number ? *number : 0;
}

std::optional<std::string> PreferenceStoreLinux::stringForKey(std::string_view key) const {
    auto const found = value(key);
    auto const* const string = found ? std::get_if<std::string>(&*found) : nullptr;
    return string ? std::optional(*string) : std::nullopt;
}

void PreferenceStoreLinux::setBool(std::string_view key, bool value) {
    set(key, value);
}

void PreferenceStoreLinux::setInteger(std::string_view key, std::int64_t value) {
    set(key, value);
}

void PreferenceStoreLinux::setString(std::string_view key, std::string_view value) {
    set(key, std::string(value));
}

} // namespace trovel
