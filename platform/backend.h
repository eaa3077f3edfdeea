#pragma once

#include "platform/platform.h"

#include <expected>
#include <memory>

namespace trovel {

/// One operating system's side of Trovel. It lives on the main thread, from the start of the
/// process to its end. When it goes, tasks and blocks that still wait are dropped first: they may
/// hold the last reference to objects that use the rest of it.
class Backend {
public:
    Backend(Backend const&) = delete;
    Backend& operator=(Backend const&) = delete;
    virtual ~Backend() = default;

    [[nodiscard]] virtual Platform platform() = 0;

protected:
    Backend() = default;
};

/// Connects to the desktop. Defined once in each backend's library; the program links one of them.
/// An error is the exit status of a process that has no reason to run: 0 when another Trovel of
/// this user runs already, 1 when there is no desktop to connect to, which standard error then
/// says.
[[nodiscard]] std::expected<std::unique_ptr<Backend>, int> makeBackend();

} // namespace trovel
