#include "platform/linux/qt/open_panels_linux.h"

#include "platform/linux/applications/application_identity.h"
#include "platform/linux/qt/icons_linux.h"
#include "platform/linux/qt/qt_values.h"
#include "platform/linux/qt/window_activation.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmapCache>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

constexpr int kPathRole = Qt::UserRole;

/// Names sort as people read them: upper and lower case are alike.
bool comesBefore(DesktopEntry const* one, DesktopEntry const* other) {
    auto const order =
        QString::compare(qtString(one->name), qtString(other->name), Qt::CaseInsensitive);
    return order != 0 ? order < 0 : one->id < other->id;
}

class ApplicationPanel final : public QDialog {
public:
    ApplicationPanel(QString const& title, std::vector<DesktopEntry const*> const& entries,
                     WindowActivator activate)
        : activation_(*this, std::move(activate)), search_(new QLineEdit),
          list_(new QListWidget) { // the dialog owns what is in it
        constexpr int kIconSize = 32;
        constexpr int kMargin = 16;
        constexpr QSize kSize(400, 480);
        setWindowTitle(title);
        resize(kSize);
        search_->setPlaceholderText(QStringLiteral("Search"));
        search_->setClearButtonEnabled(true);
        list_->setIconSize(QSize(kIconSize, kIconSize));
        list_->setSpacing(2);
        list_->setUniformItemSizes(true);
        list_->setAccessibleName(title);
        auto const fallback = QIcon::fromTheme(QStringLiteral("application-x-executable"));
        for (auto const* const entry : entries) {
            auto const icon = iconOf(*entry);
            auto* const item =
                new QListWidgetItem(icon.isNull() ? fallback : icon, qtString(entry->name), list_);
            item->setData(kPathRole, QString::fromStdString(entry->path.string()));
        }
        auto* const buttons =
            new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel);
        open_ = buttons->button(QDialogButtonBox::Open);
        auto* const content = new QVBoxLayout(this);
        content->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
        content->addWidget(search_);
        content->addWidget(list_);
        content->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
        connect(list_, &QListWidget::currentItemChanged, this, [this] { showWhetherItOpens(); });
        connect(search_, &QLineEdit::textChanged, this, [this] { filter(); });
        search_->installEventFilter(this);
        filter();
        activation_.wish();
    }
    ApplicationPanel(ApplicationPanel const&) = delete;
    ApplicationPanel& operator=(ApplicationPanel const&) = delete;
    ~ApplicationPanel() override { QPixmapCache::clear(); } // icons of all applications

    [[nodiscard]] std::optional<std::string> chosenPath() const {
        auto const* const item = list_->currentItem();
        if (item == nullptr || item->isHidden()) return std::nullopt;
        return item->data(kPathRole).toString().toStdString();
    }

private:
    void filter() {
        QListWidgetItem* first = nullptr;
        for (int row = 0; row < list_->count(); ++row) {
            auto* const item = list_->item(row);
            item->setHidden(!item->text().contains(search_->text().trimmed(), Qt::CaseInsensitive));
            if (first == nullptr && !item->isHidden()) first = item;
        }
        auto const* const current = list_->currentItem();
        if (current == nullptr || current->isHidden()) list_->setCurrentItem(first);
        showWhetherItOpens();
    }

    void showWhetherItOpens() { open_->setEnabled(chosenPath().has_value()); }

    /// The arrow keys choose in the list while the keyboard is in the search field.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == search_ && event->type() == QEvent::KeyPress) {
            auto const key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
                key == Qt::Key_PageDown) {
                QCoreApplication::sendEvent(list_, event);
                return true;
            }
        }
        return QDialog::eventFilter(watched, event);
    }

    WindowActivation activation_;
    QLineEdit* search_;
    QListWidget* list_;
    QPushButton* open_ = nullptr;
};

} // namespace

OpenPanelsLinux::OpenPanelsLinux(std::vector<std::filesystem::path> dataFolders,
                                 std::function<void()> followAppearance,
                                 WindowActivator activateWindow)
    : entries_(std::move(dataFolders)), followAppearance_(std::move(followAppearance)),
      activateWindow_(std::move(activateWindow)) {}

std::optional<std::string> OpenPanelsLinux::runModal(OpenPanel const& panel) {
    followAppearance_();
    entries_.refresh();
    auto entries = entries_.all();
    std::erase_if(entries, [](auto const* entry) { return !entry->isShown; });
    std::ranges::sort(entries, comesBefore);
    ApplicationPanel dialog(qtString(panel.title), entries, activateWindow_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.chosenPath();
}

std::optional<ApplicationBundle> OpenPanelsLinux::bundleAtPath(std::string const& path) const {
    entries_.refresh();
    auto const entries = entries_.all();
    auto const found = std::ranges::find(entries, std::filesystem::path(path),
                                         [](auto const* entry) { return entry->path; });
    if (found == entries.end()) return std::nullopt;
    auto const identity = identityOf(**found);
    return ApplicationBundle{identity.bundleIdentifier, identity.name};
}

} // namespace trovel
