#include "platform/macos/file_system_mac.h"

#include "platform/macos/bridge/convert.h"

#include <unistd.h>

namespace trovel {

namespace {

constexpr int kFolderPermissions = 0700;
constexpr int kFilePermissions = 0600;

NSURL* _Nonnull folderUrl(std::string_view path) {
    return [NSURL fileURLWithPath:toNSString(path) isDirectory:YES];
}

NSURL* _Nonnull fileUrl(std::string_view path) {
    return [NSURL fileURLWithPath:toNSString(path) isDirectory:NO];
}

NSDictionary<NSFileAttributeKey, id>* _Nonnull permissions(int mode) {
    return @{NSFilePosixPermissions : @(mode)};
}

} // namespace

std::string FileSystemMac::homeDirectory() const {
    return fromNSString(NSFileManager.defaultManager.homeDirectoryForCurrentUser.path);
}

bool FileSystemMac::createDirectory(std::string_view path) {
    return [NSFileManager.defaultManager createDirectoryAtURL:folderUrl(path)
                                  withIntermediateDirectories:YES
                                                   attributes:permissions(kFolderPermissions)
                                                        error:nil];
}

bool FileSystemMac::writeFile(std::string_view path, std::span<std::uint8_t const> contents) {
    NSString* const name = toNSString(path);
    if (![NSFileManager.defaultManager fileExistsAtPath:name]) {
        // Made empty first: a file that NSData makes may be read by everybody.
        [NSFileManager.defaultManager createFileAtPath:name
                                              contents:nil
                                            attributes:permissions(kFilePermissions)];
    }
    NSData* const data = [NSData dataWithBytes:contents.data() length:contents.size()];
    return [data writeToURL:fileUrl(path) options:0 error:nil];
}

bool FileSystemMac::fileExists(std::string_view path) const {
    return [NSFileManager.defaultManager fileExistsAtPath:toNSString(path)];
}

std::optional<std::vector<std::string>>
FileSystemMac::contentsOfDirectory(std::string_view path) const {
    NSArray<NSURL*>* const entries = [NSFileManager.defaultManager
          contentsOfDirectoryAtURL:folderUrl(path)
        includingPropertiesForKeys:@[]
                           options:NSDirectoryEnumerationSkipsHiddenFiles
                             error:nil];
    if (entries == nil) return std::nullopt;
    std::vector<std::string> paths;
    for (NSURL* entry in entries)
        paths.push_back(fromNSString(entry.path));
    return paths;
}

std::optional<FileSystem::Date> FileSystemMac::creationDate(std::string_view path) const {
    id value = nil;
    [fileUrl(path) getResourceValue:&value forKey:NSURLCreationDateKey error:nil];
    if (![value isKindOfClass:NSDate.class]) return std::nullopt;
    std::chrono::duration<double> const since1970(
        static_cast<NSDate*>(value).timeIntervalSince1970);
    return Date(std::chrono::duration_cast<Date::duration>(since1970));
}

bool FileSystemMac::removeItem(std::string_view path) {
    // The file manager would take a folder away with all that is in it.
    return unlink(std::string(path).c_str()) == 0;
}

} // namespace trovel
