// The toolbar of a preferences window: it selects the pane that is shown, titles the window after it and resizes the window to
// the height that the pane needs. An application says in a subclass which panes there are.
#pragma once

#include "platform/Toolbar.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace quillow {

class TabView;
class Window;

class MWPrefToolbarDelegate : public ToolbarDelegate {
public:
    /// The window and the tab view are outlets: they outlive this object.
    MWPrefToolbarDelegate(ToolbarFactory& toolbarFactory, Window& myWindow, TabView& myTabView); // selector: none
    MWPrefToolbarDelegate(const MWPrefToolbarDelegate&) = delete;
    MWPrefToolbarDelegate& operator=(const MWPrefToolbarDelegate&) = delete;

    // For a subclass to override: the panes' heights in points by tag, the items' identifiers, and the items. All three are nil
    // here, which means no items and a pane height of 0.
    [[nodiscard]] virtual std::optional<QList<std::int32_t>> heightArray() const { return std::nullopt; }
    [[nodiscard]] virtual std::optional<QStringList> returnAllkeys() const { return std::nullopt; }
    [[nodiscard]] std::unique_ptr<ToolbarItem> itemForItemIdentifier(
        Toolbar& toolbar, const QString& itemIdentifier,
        bool willBeInsertedIntoToolbar) override; // selector: toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:

    /// Makes the toolbar and shows the first pane. Called once the window stands.
    void awakeFromNib();
    void AttachToWindow();
    [[nodiscard]] QStringList toolbarDefaultItemIdentifiers(const Toolbar& toolbar) const override;
    [[nodiscard]] QStringList toolbarAllowedItemIdentifiers(const Toolbar& toolbar) const override;
    [[nodiscard]] QStringList toolbarSelectableItemIdentifiers(const Toolbar& toolbar) const override;
    void toolbaritemclicked(const ToolbarItem* item);
    /// Shows the pane of the item, or the first one for null.
    void PanelAction(const ToolbarItem* item);
    /// Shows the pane of that number; a number that is none is ignored.
    void SetPanelTab(std::int32_t index);

private:
    void resize(std::int32_t index);

    ToolbarFactory& toolbarFactory_;
    Window& myWindow_;
    TabView& myTabView_;
    std::unique_ptr<Toolbar> toolbar_;
    /// deliberate: made empty in awakeFromNib and used by nothing; part of the class.
    [[maybe_unused]] QStringList items_;
    std::optional<QList<std::int32_t>> myHeightArray_;
};

} // namespace quillow
