#pragma once

#include <QAccessible>

#include <memory>
#include <string>

namespace trovel {

class WindowPeerLinux;
class View;

/// Has screen readers see what is in native windows; to be called when the first one is made.
void installAccessibleWindows();

/// What a screen reader sees of a view that is no widget: a text, a picture or a button that is
/// drawn. It is one thing, whatever is in it.
class AccessibleView final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    /// `peer` is that of the view's window and outlives it.
    AccessibleView(WindowPeerLinux& peer, std::weak_ptr<View> view);

    /// Whether there is anything to say about that view.
    [[nodiscard]] static bool isSpoken(View const& view);
    /// All that is said about it.
    [[nodiscard]] static std::string spokenText(View const& view);

    bool isValid() const override { return !view_.expired(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int childCount() const override { return 0; }
    int indexOfChild(QAccessibleInterface const* child) const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, QString const& text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(QString const& name) override;
    QStringList keyBindingsForAction(QString const& name) const override;

private:
    WindowPeerLinux& peer_;
    std::weak_ptr<View> view_;
};

} // namespace trovel
