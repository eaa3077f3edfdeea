#pragma once

#include <memory>

namespace trovel {

class XcbConnection;

/// Serves a connection's events from Qt's event loop, nested loops included, and sends what was
/// asked of the server before the loop goes to sleep. Causes no wake-ups of its own. The connection
/// must outlive it; needs a QCoreApplication.
class XcbEventPump {
public:
    explicit XcbEventPump(XcbConnection& connection);
    XcbEventPump(XcbEventPump const&) = delete;
    XcbEventPump& operator=(XcbEventPump const&) = delete;
    ~XcbEventPump();

private:
    struct Wiring;
    std::unique_ptr<Wiring> wiring_;
};

} // namespace trovel
