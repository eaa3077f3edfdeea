#include "platform/linux/x11/event_pump.h"

#include "platform/linux/x11/connection.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

namespace trovel {

struct XcbEventPump::Wiring {
    explicit Wiring(XcbConnection& x)
        : notifier(xcb_get_file_descriptor(x.get()), QSocketNotifier::Read) {}

    QSocketNotifier notifier;
    QObject context; // ends the connection to the dispatcher, which outlives this
};

XcbEventPump::XcbEventPump(XcbConnection& connection)
    : wiring_(std::make_unique<Wiring>(connection)) {
    QObject::connect(&wiring_->notifier, &QSocketNotifier::activated, &wiring_->context,
                     [this, &connection] {
                         connection.processEvents();
                         // A dead socket stays readable for ever and would spin the loop.
                         if (connection.isLost()) wiring_->notifier.setEnabled(false);
                     });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     &wiring_->context, [&connection] {
                         connection.processQueuedEvents();
                         connection.flush();
                     });
}

XcbEventPump::~XcbEventPump() = default;

} // namespace trovel
