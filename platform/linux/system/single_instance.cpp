#include "platform/linux/system/single_instance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace trovel {

namespace {

int makeSocket() {
    return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// Calls `function` (bind, connect) with the abstract address of that name.
bool callWithAddress(int (*function)(int, sockaddr const*, socklen_t), int socket,
                     std::string_view name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // The path's first byte stays zero: that makes the name an abstract one.
    auto const length = std::min(name.size(), sizeof(address.sun_path) - 1);
    name.copy(address.sun_path + 1, length);
    auto const size = offsetof(sockaddr_un, sun_path) + 1 + length;
    return function(socket, reinterpret_cast<sockaddr const*>(&address),
                    static_cast<socklen_t>(size)) == 0;
}

bool isPeerThisUser(int socket) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == getuid();
}

/// Whether the socket of that name belongs to this user. A queue that is full says at least that
/// somebody listens.
bool isHeldByThisUser(std::string_view name) {
    int const socket = makeSocket();
    if (socket < 0) return false;
    bool isHeld = false;
    if (callWithAddress(connect, socket, name)) {
        isHeld = isPeerThisUser(socket);
    } else {
        isHeld = errno == EAGAIN;
    }
    close(socket);
    return isHeld;
}

} // namespace

std::optional<SingleInstance> SingleInstance::claim(std::string_view display) {
    auto const name = singleInstanceName(display);
    SingleInstance instance(makeSocket());
    if (instance.socket_ >= 0 && callWithAddress(bind, instance.socket_, name)) {
        static_cast<void>(listen(instance.socket_, SOMAXCONN));
        return instance;
    }
    if (isHeldByThisUser(name)) return std::nullopt;
    return SingleInstance(-1);
}

SingleInstance::SingleInstance(SingleInstance&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)) {}

SingleInstance& SingleInstance::operator=(SingleInstance&& other) noexcept {
    std::swap(socket_, other.socket_);
    return *this;
}

SingleInstance::~SingleInstance() {
    if (socket_ >= 0) close(socket_);
}

bool SingleInstance::takeSecondStarts() const {
    bool isThisUser = false;
    for (int peer = 0; (peer = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        isThisUser = isPeerThisUser(peer) || isThisUser;
        close(peer);
    }
    return isThisUser;
}

std::string singleInstanceName(std::string_view display) {
    auto const colon = display.rfind(':');
    auto const screen = display.find('.', colon == std::string_view::npos ? 0 : colon);
    return "trovel-" + std::to_string(getuid()) + '-' + std::string(display.substr(0, screen));
}

} // namespace trovel
