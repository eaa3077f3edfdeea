#include "platform/linux/system/application_linux.h"

#include "platform/linux/system/main_queue_linux.h"

#include <QApplication>
#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace trovel {

namespace {

/// Counts the signals that asked the program to end. One for the process, since a signal handler
/// can be handed nothing.
int endRequests() {
    static int const number = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    return number;
}

void requestEnd(int /*signal*/) {
    int const error = errno;
    std::uint64_t const one = 1;
    static_cast<void>(!write(endRequests(), &one, sizeof(one))); // full means that it is asked for
    errno = error;
}

/// Has SIGINT and SIGTERM counted as long as it lives.
class EndSignals {
public:
    EndSignals() {
        struct sigaction action{};
        action.sa_handler = requestEnd;
        action.sa_flags = SA_RESTART;
        static_cast<void>(endRequests()); // made here, outside the handler
        for (auto& [number, former] : former_) sigaction(number, &action, &former);
    }
    ~EndSignals() {
        for (auto const& [number, former] : former_) sigaction(number, &former, nullptr);
    }
    EndSignals(EndSignals const&) = delete;
    EndSignals& operator=(EndSignals const&) = delete;

private:
    std::array<std::pair<int, struct sigaction>, 2> former_{{{SIGINT, {}}, {SIGTERM, {}}}};
};

/// An environment variable with another value, until the end of its scope.
class ScopedVariable {
public:
    ScopedVariable(char const* name, char const* value)
        : name_(name), had_(qEnvironmentVariableIsSet(name)), former_(qgetenv(name)) {
        if (value != nullptr) {
            qputenv(name, value);
        } else {
            qunsetenv(name);
        }
    }
    ~ScopedVariable() {
        if (had_) {
            qputenv(name_, former_);
        } else {
            qunsetenv(name_);
        }
    }
    ScopedVariable(ScopedVariable const&) = delete;
    ScopedVariable& operator=(ScopedVariable const&) = delete;

private:
    char const* name_;
    bool had_;
    QByteArray former_;
};

/// Arguments for Qt, which keeps a reference to them. The platform is named here because its
/// variable would be inherited by the programs that this one starts.
struct Arguments {
    std::string name = "trovel";
    std::string platform = "-platform";
    std::string xcb = "xcb";
    std::string theme = "-platformtheme";
    std::string generic = "generic";
    std::array<char*, 6> values{name.data(),  platform.data(), xcb.data(),
                                theme.data(), generic.data(),  nullptr};
    int count = 5;
};

/// Leaves out what Qt notes about the desktop, such as a connection that broke: nobody who started
/// this program from a desktop can read it or has to.
void reportSeriousMessages(QtMsgType type, QMessageLogContext const& /*context*/,
                           QString const& message) {
    if (type != QtCriticalMsg && type != QtFatalMsg) return;
    std::fprintf(stderr, "trovel: %s\n", message.toLocal8Bit().constData());
}

std::unique_ptr<QApplication> makeQtApplication(Arguments& arguments) {
    // None of these is of use to a program with a few small windows, and each costs time at the
    // start or memory for good: the session manager's connection, input methods and GLib's loop.
    ScopedVariable const noSessionManager("SESSION_MANAGER", nullptr);
    ScopedVariable const noInputMethod("QT_IM_MODULE", "none");
    ScopedVariable const noGLib("QT_NO_GLIB", "1");
    qInstallMessageHandler(reportSeriousMessages);
    return std::make_unique<QApplication>(arguments.count, arguments.values.data());
}

} // namespace

class ApplicationLinux::Toolkit {
public:
    Toolkit(ApplicationLinux& application, MainQueueLinux& mainQueue)
        : qt_(makeQtApplication(arguments_)),
          queueNotifier_(mainQueue.fileDescriptor(), QSocketNotifier::Read),
          endNotifier_(endRequests(), QSocketNotifier::Read) {
        QApplication::setQuitOnLastWindowClosed(false);
        QObject::connect(&queueNotifier_, &QSocketNotifier::activated, qt_.get(),
                         [&mainQueue] { mainQueue.runDue(); });
        QObject::connect(&endNotifier_, &QSocketNotifier::activated, qt_.get(), [&application] {
            std::uint64_t count = 0;
            static_cast<void>(!read(endRequests(), &count, sizeof(count)));
            application.terminate();
        });
    }

private:
    Arguments arguments_;
    EndSignals endSignals_;
    std::unique_ptr<QApplication> qt_;
    QSocketNotifier queueNotifier_;
    QSocketNotifier endNotifier_;
};

ApplicationLinux::ApplicationLinux(MainQueueLinux& mainQueue)
    : mainQueue_(mainQueue), toolkit_(std::make_unique<Toolkit>(*this, mainQueue)) {}

ApplicationLinux::~ApplicationLinux() = default;

bool ApplicationLinux::environmentHas(std::string_view name) const {
    return std::getenv(std::string(name).c_str()) != nullptr;
}

void ApplicationLinux::setDelegate(ApplicationDelegate* delegate) {
    delegate_ = delegate;
}

void ApplicationLinux::run() {
    isRunning_ = true;
    mainQueue_.post([this] {
        if (delegate_ != nullptr) delegate_->applicationDidFinishLaunching();
    });
    // Not QApplication's own `exec`: that one sets up the accessibility bus, before there is a
    // window.
    QCoreApplication::exec();
    tellDelegateOfEnd(); // something other than `terminate` may have ended the loop
}

void ApplicationLinux::tellDelegateOfEnd() {
    if (!std::exchange(isRunning_, false)) return;
    mainQueue_.stop();
    if (delegate_ != nullptr) delegate_->applicationWillTerminate();
}

void ApplicationLinux::terminate() {
    if (!isRunning_) return;
    tellDelegateOfEnd();
    QApplication::exit(); // of every loop, those of alerts too
}

void ApplicationLinux::activate() {
    if (activator_) activator_();
}

void ApplicationLinux::activateIgnoringOtherApps() {
    activate();
}

} // namespace trovel
