#pragma once

#include <functional>
#include <utility>

namespace trovel {

/// Something that lasts until it is taken back: a repeating timer, an event monitor. Destroying or
/// resetting it ends what it stands for; an empty one stands for nothing. Main thread only.
class [[nodiscard]] Registration {
public:
    Registration() = default;
    explicit Registration(std::function<void()> end) : end_(std::move(end)) {}
    Registration(Registration&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    Registration(Registration const&) = delete;
    Registration& operator=(Registration const&) = delete;
    ~Registration() { reset(); }

    /// Ends it now. Later calls do nothing.
    void reset() {
        if (auto end = std::exchange(end_, nullptr)) end();
    }

    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(end_); }

private:
    std::function<void()> end_;
};

} // namespace trovel
