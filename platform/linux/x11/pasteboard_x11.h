#pragma once

#include "platform/linux/pictures/written_contents.h"
#include "platform/pasteboard.h"

namespace trovel {

class XcbConnection;

/// The clipboard of the X server, served by Qt from the event loop: to large readers in parts, so
/// the program goes on answering. A picture is offered as a PNG and nothing else, because some
/// clipboard managers ask for every type that there is. A text is offered as
/// the primary selection too: terminals paste from that one.
class PasteboardX11 final : public Pasteboard {
public:
    /// The connection must outlive this; needs a QGuiApplication.
    explicit PasteboardX11(XcbConnection& connection);
    ~PasteboardX11();

    void clearContents() override;
    bool writeImage(Image const& image) override;
    bool writeText(std::string_view text) override;

    /// The kind of what was written last; a picture before anything was.
    [[nodiscard]] WrittenContents lastWritten() const { return lastWritten_; }

private:
    XcbConnection& connection_;
    WrittenContents lastWritten_ = WrittenContents::picture;
};

} // namespace trovel
