#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// The claim to be the one Trovel of this user on a display: a socket with an abstract name, which
/// the kernel takes back when the process ends, however it ends.
class SingleInstance {
public:
    /// Nothing when another process of this user holds the claim; its socket was connected to.
    /// Where the claim cannot be made for another reason, such as another user's squatting on the
    /// name, the program runs without one.
    [[nodiscard]] static std::optional<SingleInstance> claim(std::string_view display);

    SingleInstance(SingleInstance&& other) noexcept;
    SingleInstance& operator=(SingleInstance&& other) noexcept;
    SingleInstance(SingleInstance const&) = delete;
    SingleInstance& operator=(SingleInstance const&) = delete;
    ~SingleInstance();

    /// Becomes readable when another start of the program was turned away; -1 without a claim.
    [[nodiscard]] int fileDescriptor() const { return socket_; }

    /// Takes note of those starts. True when one of them was this user's.
    [[nodiscard]] bool takeSecondStarts() const;

private:
    explicit SingleInstance(int socket) : socket_(socket) {}

    int socket_;
};

/// What stands for `display` (the X server's name, as in DISPLAY) among this user's claims: its
/// screen number plays no part.
[[nodiscard]] std::string singleInstanceName(std::string_view display);

} // namespace trovel
