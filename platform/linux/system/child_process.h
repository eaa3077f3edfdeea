#pragma once

#include <span>
#include <string>

namespace trovel {

/// Starts a program, without a shell in between, in a session of its own: it ends neither with this
/// process nor with the terminal that this one was started from. A name without a slash is looked
/// up in this process's PATH. The child's PATH begins with the folder of this program's helpers.
/// False when it could not be started.
bool startChildProcess(std::string const& executable, std::span<std::string const> arguments);

/// The file that this process runs; empty when that cannot be seen.
[[nodiscard]] std::string ownExecutable();

/// What starts this program again: its executable, or the AppImage that it lies in.
[[nodiscard]] std::string ownProgram();

} // namespace trovel
