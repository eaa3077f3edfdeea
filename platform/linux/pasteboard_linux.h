#pragma once

#include "platform/pasteboard.h"

namespace trovel {

class XcbConnection;

/// The clipboard of the X server, served by Qt from the event loop: to large readers in parts, so
/// the program goes on answering. A picture is offered as a PNG and nothing else, because some
/// clipboard managers ask for every type that there is.
class PasteboardLinux final : public Pasteboard {
public:
    /// The connection must outlive this; needs a QGuiApplication.
    explicit PasteboardLinux(XcbConnection& connection);
    ~PasteboardLinux();

    void clearContents() override;
    bool writeImage(Image const& image) override;

private:
    [[nodiscard]] bool isOwner() const;

    XcbConnection& connection_;
};

} // namespace trovel
