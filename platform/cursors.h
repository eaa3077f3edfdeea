#pragma once

namespace trovel {

/// The program's cursor stack. Main thread only.
class Cursors {
public:
    Cursors(Cursors const&) = delete;
    Cursors& operator=(Cursors const&) = delete;

    virtual void pushCrosshair() = 0;

    /// Takes the top cursor off; the pointer shows what it showed before.
    virtual void pop() = 0;

protected:
    Cursors() = default;
    ~Cursors() = default;
};

} // namespace trovel
