#include "platform/qt/windows/PaneButton.h"

#include "platform/Toolbar.h"
#include "platform/qt/windows/PaneGlyphs.h"

#include <QAccessibleWidget>
#include <QKeySequence>
#include <QSignalBlocker>

#include <utility>

namespace quillow {
namespace {

constexpr int kIconSize = 32;
constexpr int kLeastWidth = 72;

/// Qt reports a checkable tool button as a check box, and its accessible action does not click.
class PaneButtonAccess final : public QAccessibleWidget {
public:
    explicit PaneButtonAccess(PaneButton* button)
        : QAccessibleWidget(button) {}

    [[nodiscard]] QAccessible::Role role() const override {
        return button().isCheckable() ? QAccessible::RadioButton : QAccessible::PushButton;
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button().isCheckable();
        state.checked = button().isChecked();
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Accelerator ? accelerator() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QStringList actionNames() const override {
        const QStringList others = QAccessibleWidget::actionNames();
        return button().isEnabled() ? QStringList(ownAction()) + others : others;
    }
    void doAction(const QString& name) override {
        if (name == ownAction())
            button().click();
        else
            QAccessibleWidget::doAction(name);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override {
        return name == ownAction() ? QStringList(accelerator()) : QAccessibleWidget::keyBindingsForAction(name);
    }

private:
    [[nodiscard]] QAbstractButton& button() const { return *static_cast<QAbstractButton*>(widget()); }
    [[nodiscard]] QString ownAction() const { return button().isCheckable() ? toggleAction() : pressAction(); }
    [[nodiscard]] QString accelerator() const {
        return QKeySequence::mnemonic(button().text()).toString(QKeySequence::NativeText);
    }
};

QAccessibleInterface* makeAccess(const QString&, QObject* object) {
    auto* button = dynamic_cast<PaneButton*>(object);
    return button ? new PaneButtonAccess(button) : nullptr;
}

} // namespace

PaneButton::PaneButton(const ToolbarItem& item, Selectable selectable, std::function<void()> action) {
    // Installed once, before the first button has a text. Qt asks the latest factory first.
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(&makeAccess), true);
    // The first letter is the mnemonic. An ampersand in the label is not.
    QString label = item.label;
    setText(QLatin1Char('&') + label.replace(QLatin1Char('&'), QLatin1String("&&")));
    setToolTip(item.toolTip);
    setAccessibleName(item.label);
    setIcon(imageNamed(item.imageName));
    setIconSize({kIconSize, kIconSize});
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setAutoRaise(true);
    setMinimumWidth(kLeastWidth);
    setFocusPolicy(Qt::StrongFocus);
    setCheckable(selectable == Selectable::yes);
    setAutoExclusive(selectable == Selectable::yes);

    connect(this, &QAbstractButton::toggled, this, [action](bool isSelected) {
        if (isSelected) action();
    });
    // A press on the selected button emits no toggled().
    connect(this, &QAbstractButton::pressed, this, [this] { wasSelectedWhenPressed_ = isChecked(); });
    connect(this, &QAbstractButton::clicked, this, [this, action = std::move(action)] {
        if (!isCheckable() || wasSelectedWhenPressed_) action();
    });
}

void PaneButton::select() {
    const QSignalBlocker noAction(this);
    setChecked(true);
}

} // namespace quillow
