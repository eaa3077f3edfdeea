#pragma once

#include "platform/file_system.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace trovel {

/// The folder of the capture files, ".trovel/captures" under the home folder.
[[nodiscard]] std::string capturesFolder(FileSystem const& files);

/// The name of the file for a capture made at `date`: "Trovel-", whole milliseconds since 1970,
/// ".png".
[[nodiscard]] std::string captureFileName(FileSystem::Date date);

/// Deletes the PNG files of `folder` beyond the `keep` newest by creation date; a file without one
/// counts as the oldest, and among equal dates the greater name as the newer. What cannot be listed
/// or deleted is left alone.
void pruneCaptures(FileSystem& files, std::string_view folder, std::size_t keep);

} // namespace trovel
