#include "tests/linux/support/private_x_server.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace trovel {

namespace {

/// The first line that comes out of a pipe, without its end.
std::string readLine(int pipe) {
    std::string line;
    char character = 0;
    while (read(pipe, &character, 1) == 1 && character != '\n') line += character;
    return line;
}

} // namespace

PrivateXServer::PrivateXServer(std::vector<std::string> arguments) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) return;
    arguments.insert(arguments.begin(), {"Xvfb", "-displayfd", std::to_string(pipe[1]), "-nolisten",
                                         "tcp", "-noreset"});
    std::vector<char*> pointers;
    for (auto& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (posix_spawnp(&process_, "Xvfb", &actions, nullptr, pointers.data(), environ) != 0) {
        process_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    close(pipe[1]);
    if (auto const number = readLine(pipe[0]); !number.empty()) display_ = ':' + number;
    close(pipe[0]);
}

PrivateXServer::~PrivateXServer() {
    kill();
}

void PrivateXServer::kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
}

} // namespace trovel
