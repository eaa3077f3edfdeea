#include "platform/linux/pasteboard_linux.h"

#include "platform/linux/captured_image.h"
#include "platform/linux/xcb/connection.h"

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

namespace trovel {

namespace {

void offer(std::unique_ptr<QMimeData> data) {
    QGuiApplication::clipboard()->setMimeData(data.release(), QClipboard::Clipboard);
}

} // namespace

PasteboardLinux::PasteboardLinux(XcbConnection& connection) : connection_(connection) {}
PasteboardLinux::~PasteboardLinux() = default;

void PasteboardLinux::clearContents() {
    // Qt's own `clear` first asks the owner whether there is anything, and waits for the answer.
    offer(std::make_unique<QMimeData>());
}

bool PasteboardLinux::writeImage(Image const& image) {
    auto const* const captured = dynamic_cast<CapturedImage const*>(image.pixels.get());
    auto const png = captured != nullptr ? captured->pngData() : nullptr;
    if (!png) return false;
    auto const offerPng = [&png] {
        auto data = std::make_unique<QMimeData>();
        data->setData("image/png", QByteArray(reinterpret_cast<char const*>(png->data()),
                                              static_cast<qsizetype>(png->size())));
        offer(std::move(data));
    };
    offerPng();
    if (isOwner()) return true;
    // Qt states the time of the last event that it saw, and the server refuses what is older than
    // the last owner's claim. When the news of that claim has arrived, it is a good time.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::ExcludeSocketNotifiers);
    offerPng();
    return isOwner();
}

/// Whether the clipboard's owner is a window of Qt's connection, as the server sees it.
bool PasteboardLinux::isOwner() const {
    auto const answer = connection_.reply<xcb_get_selection_owner_reply>(
        xcb_get_selection_owner(connection_.get(), connection_.atom("CLIPBOARD")));
    if (!answer || answer->owner == XCB_WINDOW_NONE) return false;
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto const* const setup = xcb_get_setup(x11->connection());
    return (answer->owner & ~setup->resource_id_mask) == setup->resource_id_base;
}

} // namespace trovel
