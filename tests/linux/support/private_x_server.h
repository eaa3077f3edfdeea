#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace trovel {

/// An X server without a screen of the machine's (Xvfb), on a free display number. Ends with this
/// object.
class PrivateXServer {
public:
    /// With further arguments for the server, such as `-screen 0 1920x1080x24`.
    explicit PrivateXServer(std::vector<std::string> arguments);
    ~PrivateXServer();
    PrivateXServer(PrivateXServer const&) = delete;
    PrivateXServer& operator=(PrivateXServer const&) = delete;

    /// Its name, as in DISPLAY; empty when it did not start.
    [[nodiscard]] std::string const& display() const { return display_; }

    /// Ends it at once, with every connection to it.
    void kill();

private:
    pid_t process_ = -1;
    std::string display_;
};

} // namespace trovel
