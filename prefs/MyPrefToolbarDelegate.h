// The panes of this product's preferences window: General and Update.
#pragma once

#include "prefs/MWPrefToolbarDelegate.h"

namespace quillow {

class MyPrefToolbarDelegate final : public MWPrefToolbarDelegate {
public:
    using MWPrefToolbarDelegate::MWPrefToolbarDelegate;
    [[nodiscard]] std::optional<QList<std::int32_t>> heightArray() const override;
    [[nodiscard]] std::optional<QStringList> returnAllkeys() const override;
    [[nodiscard]] std::unique_ptr<ToolbarItem> itemForItemIdentifier(
        Toolbar& toolbar, const QString& itemIdentifier,
        bool willBeInsertedIntoToolbar) override; // selector: toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:
};

} // namespace quillow
