#include "platform/linux/x11/pasteboard_x11.h"

#include "platform/linux/pictures/captured_image.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/properties.h"

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QStringList>

#include <memory>
#include <utility>

namespace trovel {

namespace {

void offer(std::unique_ptr<QMimeData> data, QClipboard::Mode mode = QClipboard::Clipboard) {
    QGuiApplication::clipboard()->setMimeData(data.release(), mode);
}

/// Whether the selection's owner is a window of Qt's connection, as the server sees it.
bool isOwner(XcbConnection& connection, QClipboard::Mode mode) {
    auto const* const name = mode == QClipboard::Selection ? "PRIMARY" : "CLIPBOARD";
    auto const owner = selectionOwner(connection, name);
    if (owner == XCB_WINDOW_NONE) return false;
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto const* const setup = xcb_get_setup(x11->connection());
    return (owner & ~setup->resource_id_mask) == setup->resource_id_base;
}

/// Takes the selection and offers `bytes` as each of those types. False when somebody else has it
/// afterwards.
bool take(XcbConnection& connection, QClipboard::Mode mode, QStringList const& types,
          QByteArray const& bytes) {
    auto const offerBytes = [&] {
        auto data = std::make_unique<QMimeData>();
        for (auto const& type : types) data->setData(type, bytes);
        offer(std::move(data), mode);
    };
    offerBytes();
    if (isOwner(connection, mode)) return true;
    // Qt states the time of the last event that it saw, and the server refuses what is older than
    // the last owner's claim. When the news of that claim has arrived, it is a good time.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::ExcludeSocketNotifiers);
    offerBytes();
    return isOwner(connection, mode);
}

} // namespace

PasteboardX11::PasteboardX11(XcbConnection& connection) : connection_(connection) {}
PasteboardX11::~PasteboardX11() = default;

void PasteboardX11::clearContents() {
    // Qt's own `clear` first asks the owner whether there is anything, and waits for the answer.
    offer(std::make_unique<QMimeData>());
}

bool PasteboardX11::writeImage(Image const& image) {
    auto const* const captured = dynamic_cast<CapturedImage const*>(image.pixels.get());
    auto const png = captured != nullptr ? captured->pngData() : nullptr;
    if (!png) return false;
    lastWritten_ = WrittenContents::picture;
    return take(connection_, QClipboard::Clipboard, {QStringLiteral("image/png")},
                QByteArray(reinterpret_cast<char const*>(png->data()),
                           static_cast<qsizetype>(png->size())));
}

bool PasteboardX11::writeText(std::string_view text) {
    // Qt adds the names of X11 to the first; some readers know the second only.
    QStringList const types{QStringLiteral("text/plain"),
                            QStringLiteral("text/plain;charset=utf-8")};
    QByteArray const bytes(text.data(), static_cast<qsizetype>(text.size()));
    lastWritten_ = WrittenContents::text;
    bool const isOffered = take(connection_, QClipboard::Clipboard, types, bytes);
    return take(connection_, QClipboard::Selection, types, bytes) && isOffered;
}

} // namespace trovel
