#include "prefs/MyPrefToolbarDelegate.h"

#include <array>

namespace quillow {

namespace {

struct Pane {
    const char16_t* identifier;
    const char16_t* label;
    const char16_t* imageName;
    std::int32_t height; ///< in points, without title bar and toolbar
};

/// Indexed by tag, which is also the index of the pane in the tab view.
constexpr std::array kPanes = {
    Pane{u"0", u"General", u"generalPref", 200},
    Pane{u"1", u"Update", u"softwareUpdate", 160},
};

} // namespace

std::optional<QList<std::int32_t>> MyPrefToolbarDelegate::heightArray() const {
    QList<std::int32_t> heights;
    for (const Pane& pane : kPanes)
        heights.append(pane.height);
    return heights;
}

std::optional<QStringList> MyPrefToolbarDelegate::returnAllkeys() const {
    QStringList identifiers;
    for (const Pane& pane : kPanes)
        identifiers.append(QString::fromUtf16(pane.identifier));
    return identifiers;
}

std::unique_ptr<ToolbarItem> MyPrefToolbarDelegate::itemForItemIdentifier(Toolbar& /*toolbar*/,
                                                                          const QString& itemIdentifier,
                                                                          bool /*willBeInsertedIntoToolbar*/) {
    for (std::size_t tag = 0; tag < kPanes.size(); ++tag) {
        const Pane& pane = kPanes[tag];
        if (itemIdentifier != QString::fromUtf16(pane.identifier)) continue;
        const QString label = QString::fromUtf16(pane.label);
        auto item = std::make_unique<ToolbarItem>();
        item->itemIdentifier = itemIdentifier;
        item->label = label;
        item->paletteLabel = label;
        item->toolTip = label;
        item->imageName = QString::fromUtf16(pane.imageName);
        item->tag = static_cast<int>(tag);
        item->action = [this](const ToolbarItem* pressed) { PanelAction(pressed); };
        return item;
    }
    return nullptr;
}

} // namespace quillow
