#include "platform/linux/qt/alerts_linux.h"

#include "platform/linux/qt/program_icon.h"
#include "platform/linux/qt/window_activation.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFont>
#include <QLabel>
#include <QPixmap>
#include <QPixmapCache>
#include <QPushButton>
#include <QString>
#include <QStyle>
#include <QVBoxLayout>

#include <cstddef>
#include <sstream>
#include <utility>

namespace trovel {

namespace {

/// Comes to the front with the keyboard when it is shown.
class AlertDialog final : public QDialog {
public:
    explicit AlertDialog(WindowActivator activate)
        : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                               Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
          activation_(*this, std::move(activate)) {
        activation_.wish();
    }
    AlertDialog(AlertDialog const&) = delete;
    AlertDialog& operator=(AlertDialog const&) = delete;
    ~AlertDialog() override { QPixmapCache::clear(); } // the style's drawings of its button

private:
    WindowActivation activation_;
};

QLabel* plainLabel(QString const& text, QFont const& font) {
    constexpr int kWidth = 340;
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(font);
    label->setWordWrap(true);
    // A layout of fixed size guesses how high the lines will be, and cuts off some of them.
    label->setFixedSize(kWidth, label->heightForWidth(kWidth));
    return label;
}

/// The picture beside the message; null for an alert that has none.
QPixmap signOf(Alert const& alert, QStyle const& look) {
    auto const size = look.pixelMetric(QStyle::PM_LargeIconSize);
    if (alert.showsApplicationIcon) return programIcon(size);
    if (alert.style != AlertStyle::warning) return {};
    return look.standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size);
}

/// `text` in bold, behind the alert's picture.
QLayout* heading(QString const& text, QPixmap const& picture) {
    auto* const row = new QHBoxLayout;
    if (!picture.isNull()) {
        auto* const sign = new QLabel;
        sign->setPixmap(picture);
        row->addWidget(sign);
    }
    auto font = QApplication::font("QLabel");
    font.setBold(true);
    row->addWidget(plainLabel(text, font));
    return row;
}

/// Whether this character is shown in an alert: the others steer the text around them.
bool isShown(QChar character) {
    constexpr ushort kFirstEmbedding = 0x202a; // to U+202E, marks of Unicode's bidirectional text
    constexpr ushort kLastEmbedding = 0x202e;
    constexpr ushort kFirstIsolate = 0x2066;
    constexpr ushort kLastIsolate = 0x2069;
    auto const code = character.unicode();
    return character.category() != QChar::Other_Control &&
           !(code >= kFirstEmbedding && code <= kLastEmbedding) &&
           !(code >= kFirstIsolate && code <= kLastIsolate);
}

} // namespace

std::string alertText(std::string const& text) {
    constexpr qsizetype kMaximumCharacters = 600;
    constexpr int kMaximumWordCharacters = 30;
    constexpr QChar kBreakHere(0x200b);
    constexpr QChar kEllipsis(0x2026);
    constexpr qsizetype kMaximumBytesOfACharacter = 4;
    // Only the part that can be shown is looked at: a name may be a megabyte long.
    auto const part = QString::fromStdString(text.substr(
        0, static_cast<std::size_t>((kMaximumCharacters + 1) * kMaximumBytesOfACharacter)));
    QString result;
    int wordLength = 0;
    qsizetype count = 0;
    for (auto const character : part) {
        if (++count > kMaximumCharacters) {
            result += kEllipsis;
            break;
        }
        wordLength = character.isSpace() || !isShown(character) ? 0 : wordLength + 1;
        result += isShown(character) ? character : QChar(' ');
        // A character of two halves stays whole.
        if (wordLength >= kMaximumWordCharacters && !character.isHighSurrogate()) {
            result += kBreakHere;
            wordLength = 0;
        }
    }
    return result.toStdString();
}

std::string alertParagraphs(std::string const& text) {
    constexpr std::size_t kMostLines = 20;
    std::string result;
    std::istringstream lines(text);
    std::string line;
    for (std::size_t i = 0; i < kMostLines && std::getline(lines, line); ++i) {
        if (i > 0) result += '\n';
        result += alertText(line);
    }
    return result;
}

AlertsLinux::AlertsLinux(std::function<void()> followAppearance, WindowActivator activateWindow)
    : followAppearance_(std::move(followAppearance)), activateWindow_(std::move(activateWindow)) {}

AlertsLinux::~AlertsLinux() = default;

void AlertsLinux::runModal(Alert const& alert) {
    makeDialog(alert)->exec();
}

void AlertsLinux::show(Alert const& alert) {
    shown_ = makeDialog(alert);
    shown_->show();
}

std::unique_ptr<QDialog> AlertsLinux::makeDialog(Alert const& alert) {
    followAppearance_();
    auto dialog = std::make_unique<AlertDialog>(activateWindow_);
    auto const message = QString::fromStdString(alertText(alert.messageText));
    dialog->setWindowTitle(message);
    auto* const buttons = new QDialogButtonBox;
    for (auto const& title : alert.buttons) {
        buttons->addButton(QString::fromStdString(title), QDialogButtonBox::AcceptRole);
    }
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog.get(), &QDialog::accept);
    auto* const content = new QVBoxLayout(dialog.get()); // the dialog owns what is in it
    constexpr int kMargin = 20;
    constexpr int kSpacing = 12;
    content->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    content->setSpacing(kSpacing);
    content->setSizeConstraint(QLayout::SetFixedSize);
    content->addLayout(heading(message, signOf(alert, *dialog->style())));
    content->addWidget(plainLabel(QString::fromStdString(alertParagraphs(alert.informativeText)),
                                  QApplication::font("QLabel")));
    content->addWidget(buttons);
    return dialog;
}

} // namespace trovel
