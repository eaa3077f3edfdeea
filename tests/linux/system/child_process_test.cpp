#include "platform/linux/system/child_process.h"

#include "tests/linux/support/scoped_environment.h"
#include "tests/linux/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace trovel {
namespace {

namespace fs = std::filesystem;

class ChildProcessTest : public testing::Test {
protected:
    ChildProcessTest() { EXPECT_EQ(mkfifo(output_.c_str(), S_IRWXU), 0); }

    /// What a shell prints that runs `script` as a child.
    [[nodiscard]] std::string outputOf(std::string const& script,
                                       std::vector<std::string> const& further = {}) const {
        std::vector<std::string> arguments{"-c", "exec >\"$0\"; " + script, output_.string()};
        arguments.insert(arguments.end(), further.begin(), further.end());
        if (startChildProcess("/bin/sh", arguments)) return output();
        ADD_FAILURE() << "the child could not be started";
        return {};
    }

    /// What comes through the pipe until its writer closes it.
    [[nodiscard]] std::string output() const {
        std::ifstream file(output_);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TemporaryFolder folder_;
    fs::path output_ = folder_.path() / "output";
};

TEST_F(ChildProcessTest, ArgumentsArriveByteForByte) {
    std::string const odd = "a b'\"$x\\\n*\xe9\xff";
    EXPECT_EQ(outputOf("printf '%s|' \"$@\"", {odd, "", "-n"}), odd + "||-n|");
}

TEST_F(ChildProcessTest, TheChildHasASessionOfItsOwnAndNothingToRead) {
    auto const session = outputOf("cut -d' ' -f6 /proc/$$/stat");
    ASSERT_FALSE(session.empty());
    EXPECT_NE(std::stoi(session), getsid(0));
    EXPECT_EQ(outputOf("readlink /proc/$$/fd/0"), "/dev/null\n");
}

TEST_F(ChildProcessTest, TheChildHasThisProcesssFolderAndEnvironment) {
    ScopedEnvironment const variable("TROVEL_TEST_VARIABLE", "a=b\xe9");
    EXPECT_EQ(outputOf("pwd -P; printf %s \"$TROVEL_TEST_VARIABLE\""),
              fs::current_path().string() + "\na=b\xe9");
}

TEST_F(ChildProcessTest, TheHelpersComeFirstInThePathOnce) {
    ScopedEnvironment const path("PATH", "/usr/bin:/bin");
    std::string const printPath = "printf %s \"$PATH\"";
    auto const child = outputOf(printPath);
    EXPECT_TRUE(child.starts_with(fs::path(ownExecutable()).parent_path().string() + "/libexec:"))
        << child;
    EXPECT_TRUE(child.ends_with(":/usr/bin:/bin")) << child;
    ScopedEnvironment const again("PATH", child.c_str());
    EXPECT_EQ(outputOf(printPath), child);
}

TEST_F(ChildProcessTest, ANameIsLookedUpInThePathOfThisProcessAndNowhereElse) {
    folder_.write("bin/trovel-test-program", "#!/bin/sh\nprintf %s \"$1\" >\"$2\"\n");
    auto const program = folder_.path() / "bin/trovel-test-program";
    fs::permissions(program, fs::perms::owner_all);
    std::array const arguments{std::string("found"), output_.string()};
    auto const former = fs::current_path();
    fs::current_path(program.parent_path());
    EXPECT_FALSE(startChildProcess("trovel-test-program", arguments))
        << "it is in the working folder only";
    fs::current_path(former);
    auto const folders = program.parent_path().string() + ":/usr/bin:/bin";
    ScopedEnvironment const path("PATH", folders.c_str());
    EXPECT_TRUE(startChildProcess("trovel-test-program", arguments));
    EXPECT_EQ(output(), "found");
}

TEST_F(ChildProcessTest, WhatCannotBeStartedIsRefused) {
    folder_.write("text", "not a program");
    EXPECT_FALSE(startChildProcess((folder_.path() / "none").string(), {}));
    EXPECT_FALSE(startChildProcess((folder_.path() / "text").string(), {}));
    EXPECT_FALSE(startChildProcess(folder_.path().string(), {}));
}

TEST_F(ChildProcessTest, NothingIsLeftOfAChildThatHasEnded) {
    auto const child = outputOf("printf %s $$");
    ASSERT_FALSE(child.empty());
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (fs::exists("/proc/" + child) && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(fs::exists("/proc/" + child));
}

} // namespace
} // namespace trovel
