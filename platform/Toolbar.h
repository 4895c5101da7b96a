// Port: a window's toolbar. It requests its items from its delegate when it is attached to a window, and runs an
// item's action when the user presses it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace quillow {

class Toolbar;
class Window;

struct ToolbarItem {
    QString itemIdentifier;
    QString label;
    QString paletteLabel;
    QString toolTip;
    QString imageName; ///< the name of one of the program's own pictures
    int tag = 0;
    std::function<void(const ToolbarItem* item)> action;
};

class ToolbarDelegate {
public:
    virtual ~ToolbarDelegate() = default;
    /// The items shown by default, the items that may be added, and the items that can appear selected.
    [[nodiscard]] virtual QStringList toolbarDefaultItemIdentifiers(const Toolbar& toolbar) const = 0;
    [[nodiscard]] virtual QStringList toolbarAllowedItemIdentifiers(const Toolbar& toolbar) const = 0;
    [[nodiscard]] virtual QStringList toolbarSelectableItemIdentifiers(const Toolbar& toolbar) const = 0;
    /// A new item, or null when the identifier is unknown.
    [[nodiscard]] virtual std::unique_ptr<ToolbarItem>
    itemForItemIdentifier(Toolbar& toolbar, const QString& itemIdentifier, bool willBeInsertedIntoToolbar) = 0;
};

class Toolbar {
public:
    virtual ~Toolbar() = default;
    virtual void setDelegate(ToolbarDelegate* delegate) = 0;
    virtual void setAllowsUserCustomization(bool allows) = 0;
    /// Shows the toolbar on the window, and requests the items from the delegate.
    virtual void attachToWindow(Window& window) = 0;
    /// Whether the window's title bar has a button that hides the toolbar.
    virtual void setShowsToolbarButton(bool shows) = 0;
    /// The items in the order shown; empty until the toolbar is on a window. The pointers stay valid while the
    /// toolbar lives.
    [[nodiscard]] virtual QList<const ToolbarItem*> items() const = 0;
    virtual void setSelectedItemIdentifier(const QString& identifier) = 0;
};

class ToolbarFactory {
public:
    virtual ~ToolbarFactory() = default;
    /// A toolbar that is not attached to a window yet.
    [[nodiscard]] virtual std::unique_ptr<Toolbar> makeToolbar(const QString& identifier) = 0;
};

} // namespace quillow
