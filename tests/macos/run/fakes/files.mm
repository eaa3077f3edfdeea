#include "tests/macos/run/fakes/mac.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace fs = std::filesystem;

NSURLResourceKey const NSURLCreationDateKey = @"NSURLCreationDateKey";
NSFileAttributeKey const NSFilePosixPermissions = @"NSFilePosixPermissions";

@implementation NSDate {
@public
    NSTimeInterval since1970_;
}

- (NSTimeInterval)timeIntervalSince1970 {
    return since1970_;
}

@end

@implementation NSURL {
    std::string text_;
    bool isFile_;
}

+ (instancetype)URLWithString:(NSString*)text {
    fakes::require(text != nil, "the URL of nil");
    auto const written = fakes::toText(text);
    if (written.empty()) return nil;
    NSURL* const url = [[NSURL alloc] init];
    url->text_ = written;
    return url;
}

+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory {
    fakes::require(path != nil, "the URL of no path");
    NSURL* const url = [[NSURL alloc] init];
    url->text_ = fakes::toText(path);
    url->isFile_ = true;
    return url;
}

- (NSString*)path {
    return isFile_ ? fakes::toNative(text_) : nil;
}

- (NSString*)description {
    return fakes::toNative(text_);
}

// The time of the last change stands in for that of the creation.
- (BOOL)getResourceValue:(id*)value forKey:(NSURLResourceKey)key error:(NSError**)error {
    struct stat status{};
    if (stat(text_.c_str(), &status) != 0) return NO;
    fakes::require([key isEqualToString:NSURLCreationDateKey], "a value that no fake has");
    NSDate* const date = [[NSDate alloc] init];
    constexpr double kNanosecond = 1e-9;
    date->since1970_ = static_cast<double>(status.st_mtim.tv_sec) +
                       kNanosecond * static_cast<double>(status.st_mtim.tv_nsec);
    *value = date;
    return YES;
}

@end

@implementation NSData {
    std::vector<std::uint8_t> bytes_;
}

+ (instancetype)dataWithBytes:(void const*)bytes length:(NSUInteger)length {
    NSData* const data = [[self alloc] init];
    auto const* const first = static_cast<std::uint8_t const*>(bytes);
    data->bytes_.assign(first, first + length);
    return data;
}

- (void const*)bytes {
    return bytes_.data();
}

- (NSUInteger)length {
    return bytes_.size();
}

- (BOOL)writeToURL:(NSURL*)url options:(NSDataWritingOptions)options error:(NSError**)error {
    std::ofstream file(fakes::toText(url.path), std::ios::binary);
    file.write(reinterpret_cast<char const*>(bytes_.data()),
               static_cast<std::streamsize>(bytes_.size()));
    return static_cast<bool>(file.flush());
}

@end

namespace {

/// "…the value corresponding to NSFilePosixPermissions": the file system's own default without it.
void applyPermissions(fs::path const& path, NSDictionary* _Nullable attributes) {
    NSNumber* const mode = attributes[NSFilePosixPermissions];
    if (mode == nil) return;
    fs::permissions(path, static_cast<fs::perms>(mode.longLongValue));
}

} // namespace

@implementation NSFileManager

+ (NSFileManager*)defaultManager {
    return [[NSFileManager alloc] init];
}

- (NSURL*)homeDirectoryForCurrentUser {
    return [NSURL fileURLWithPath:fakes::toNative(fakes::mac().home) isDirectory:YES];
}

- (BOOL)createDirectoryAtURL:(NSURL*)url
    withIntermediateDirectories:(BOOL)createIntermediates
                     attributes:(NSDictionary*)attributes
                          error:(NSError**)error {
    fs::path const path = fakes::toText(url.path);
    std::error_code problem;
    if (fs::is_directory(path, problem)) return createIntermediates;
    if (createIntermediates) {
        fs::create_directories(path, problem);
    } else {
        fs::create_directory(path, problem);
    }
    if (problem) return NO;
    applyPermissions(path, attributes);
    return YES;
}

- (BOOL)createFileAtPath:(NSString*)path
                contents:(NSData*)data
              attributes:(NSDictionary*)attributes {
    auto const name = fakes::toText(path);
    if (!std::ofstream(name)) return NO;
    applyPermissions(name, attributes);
    return YES;
}

- (BOOL)fileExistsAtPath:(NSString*)path {
    std::error_code problem;
    return fs::exists(fakes::toText(path), problem);
}

// "…nil if an error occurs": where there is no such folder, for one.
- (NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)url
                  includingPropertiesForKeys:(NSArray*)keys
                                     options:(NSDirectoryEnumerationOptions)mask
                                       error:(NSError**)error {
    std::error_code problem;
    fs::directory_iterator const entries(fakes::toText(url.path), problem);
    if (problem) return nil;
    NSMutableArray<NSURL*>* const list = [NSMutableArray array];
    for (auto const& entry : entries) {
        bool const isHidden = entry.path().filename().string().starts_with('.');
        if (isHidden && (mask & NSDirectoryEnumerationSkipsHiddenFiles) != 0) continue;
        [list addObject:[NSURL fileURLWithPath:fakes::toNative(entry.path().string())
                                   isDirectory:entry.is_directory()]];
    }
    return list;
}

- (BOOL)removeItemAtURL:(NSURL*)url error:(NSError**)error {
    std::error_code problem;
    return fs::remove_all(fakes::toText(url.path), problem) > 0;
}

@end
