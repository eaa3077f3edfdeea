#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace trovel {

/// An environment variable with another value, or without one, until the end of its scope.
class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, char const* value) : name_(std::move(name)) {
        if (auto const* const former = std::getenv(name_.c_str())) former_ = former;
        set(value);
    }
    ~ScopedEnvironment() { set(former_ ? former_->c_str() : nullptr); }
    ScopedEnvironment(ScopedEnvironment const&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment const&) = delete;

private:
    void set(char const* value) const {
        if (value != nullptr) {
            setenv(name_.c_str(), value, 1);
        } else {
            unsetenv(name_.c_str());
        }
    }

    std::string name_;
    std::optional<std::string> former_;
};

} // namespace trovel
