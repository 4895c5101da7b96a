// The toolbar of a preferences window: it selects the pane, gives the window the pane's title and resizes the window
// to the height of the pane. An application defines its panes in a subclass.
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
    /// The window and the tab view must outlive this object.
    MWPrefToolbarDelegate(ToolbarFactory& toolbarFactory, Window& myWindow, TabView& myTabView); // selector: none
    MWPrefToolbarDelegate(const MWPrefToolbarDelegate&) = delete;
    MWPrefToolbarDelegate& operator=(const MWPrefToolbarDelegate&) = delete;

    // A subclass overrides these: the heights of the panes in points by tag, the identifiers of the items, and the
    // items. Here all three are nil, which means no items and a pane height of 0.
    [[nodiscard]] virtual std::optional<QList<std::int32_t>> heightArray() const { return std::nullopt; }
    [[nodiscard]] virtual std::optional<QStringList> returnAllkeys() const { return std::nullopt; }
    [[nodiscard]] std::unique_ptr<ToolbarItem> itemForItemIdentifier(
        Toolbar& toolbar, const QString& itemIdentifier,
        bool willBeInsertedIntoToolbar) override; // selector: toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:

    /// Creates the toolbar and shows the first pane. Called after the window has been created.
    void awakeFromNib();
    void AttachToWindow();
    [[nodiscard]] QStringList toolbarDefaultItemIdentifiers(const Toolbar& toolbar) const override;
    [[nodiscard]] QStringList toolbarAllowedItemIdentifiers(const Toolbar& toolbar) const override;
    [[nodiscard]] QStringList toolbarSelectableItemIdentifiers(const Toolbar& toolbar) const override;
    void toolbaritemclicked(const ToolbarItem* item);
    /// Shows the pane of the item, or the first one for null.
    void PanelAction(const ToolbarItem* item);
    /// Shows the pane at an index. An index out of range changes nothing.
    void SetPanelTab(std::int32_t index);

private:
    void resize(std::int32_t index);

    ToolbarFactory& toolbarFactory_;
    Window& myWindow_;
    TabView& myTabView_;
    std::unique_ptr<Toolbar> toolbar_;
    /// deliberate: set to an empty list in awakeFromNib and not used otherwise; part of the class.
    [[maybe_unused]] QStringList items_;
    std::optional<QList<std::int32_t>> myHeightArray_;
};

} // namespace quillow
