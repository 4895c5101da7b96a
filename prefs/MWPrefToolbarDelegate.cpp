#include "prefs/MWPrefToolbarDelegate.h"

#include "platform/TabView.h"
#include "platform/Window.h"
#include "prefs/PaneGeometry.h"

namespace quillow {

MWPrefToolbarDelegate::MWPrefToolbarDelegate(ToolbarFactory& toolbarFactory, Window& myWindow, TabView& myTabView)
    : toolbarFactory_(toolbarFactory)
    , myWindow_(myWindow)
    , myTabView_(myTabView) {}

std::unique_ptr<ToolbarItem> MWPrefToolbarDelegate::itemForItemIdentifier(Toolbar& /*toolbar*/,
                                                                          const QString& /*itemIdentifier*/,
                                                                          bool /*willBeInsertedIntoToolbar*/) {
    return nullptr;
}

void MWPrefToolbarDelegate::awakeFromNib() {
    items_.clear();
    toolbar_ = toolbarFactory_.makeToolbar(QStringLiteral("prefToolBar"));
    toolbar_->setDelegate(this);
    toolbar_->setAllowsUserCustomization(false);
    myHeightArray_ = heightArray();
    AttachToWindow();
    PanelAction(nullptr);
}

void MWPrefToolbarDelegate::AttachToWindow() {
    toolbar_->attachToWindow(myWindow_);
    toolbar_->setShowsToolbarButton(false);
}

QStringList MWPrefToolbarDelegate::toolbarDefaultItemIdentifiers(const Toolbar& /*toolbar*/) const {
    return returnAllkeys().value_or(QStringList());
}

QStringList MWPrefToolbarDelegate::toolbarAllowedItemIdentifiers(const Toolbar& /*toolbar*/) const {
    return returnAllkeys().value_or(QStringList());
}

QStringList MWPrefToolbarDelegate::toolbarSelectableItemIdentifiers(const Toolbar& /*toolbar*/) const {
    return returnAllkeys().value_or(QStringList());
}

void MWPrefToolbarDelegate::toolbaritemclicked(const ToolbarItem* /*item*/) {
    // deliberate: does nothing. The items' action is PanelAction.
}

void MWPrefToolbarDelegate::PanelAction(const ToolbarItem* item) {
    std::int32_t index = 0;
    if (item != nullptr) {
        index = item->tag;
        myWindow_.setTitle(item->label);
    } else if (const auto all = toolbar_->items(); !all.isEmpty()) {
        toolbar_->setSelectedItemIdentifier(all.first()->itemIdentifier);
        myWindow_.setTitle(all.first()->label);
    }
    myTabView_.selectTabViewItemAtIndex(index);
    resize(index);
}

void MWPrefToolbarDelegate::SetPanelTab(std::int32_t index) {
    const auto all = toolbar_->items();
    if (index < 0 || index >= all.size()) return;
    const ToolbarItem* item = all.at(index);
    if (item == nullptr) return;
    toolbar_->setSelectedItemIdentifier(item->itemIdentifier);
    myWindow_.setTitle(item->label);
    myTabView_.selectTabViewItemAtIndex(index);
    resize(index);
}

void MWPrefToolbarDelegate::resize(std::int32_t index) {
    const std::int32_t paneHeight = myHeightArray_ ? myHeightArray_->at(index) : 0;
    myWindow_.setFrame(frameForPane(myWindow_.frame(), paneHeight), Animate::yes);
}

} // namespace quillow
