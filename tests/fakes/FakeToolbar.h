// A toolbar that gets its items from its delegate when it is attached to a window, as the platform's does.
#pragma once

#include "platform/Toolbar.h"

#include <memory>
#include <utility>
#include <vector>

namespace quillow {

class FakeToolbar final : public Toolbar {
public:
    explicit FakeToolbar(QString identifier)
        : identifier_(std::move(identifier)) {}

    void setDelegate(ToolbarDelegate* delegate) override { delegate_ = delegate; }
    void setAllowsUserCustomization(bool allows) override { allowsUserCustomization_ = allows; }
    [[nodiscard]] QList<const ToolbarItem*> items() const override {
        QList<const ToolbarItem*> items;
        for (const auto& item : items_)
            items.append(item.get());
        return items;
    }
    void setSelectedItemIdentifier(const QString& identifier) override { selectedItemIdentifier_ = identifier; }

    void attachToWindow(Window& window) override {
        window_ = &window;
        for (const QString& identifier : delegate_->toolbarDefaultItemIdentifiers(*this))
            if (auto item = delegate_->itemForItemIdentifier(*this, identifier, true))
                items_.push_back(std::move(item));
    }

    void setShowsToolbarButton(bool shows) override { showsToolbarButton_ = shows; }

    [[nodiscard]] const Window* window() const { return window_; }
    [[nodiscard]] bool showsToolbarButton() const { return showsToolbarButton_; }
    [[nodiscard]] const QString& identifier() const { return identifier_; }
    [[nodiscard]] bool allowsUserCustomization() const { return allowsUserCustomization_; }
    [[nodiscard]] const QString& selectedItemIdentifier() const { return selectedItemIdentifier_; }

private:
    QString identifier_;
    ToolbarDelegate* delegate_ = nullptr;
    const Window* window_ = nullptr;
    bool showsToolbarButton_ = true;
    bool allowsUserCustomization_ = true;
    QString selectedItemIdentifier_;
    std::vector<std::unique_ptr<ToolbarItem>> items_;
};

class FakeToolbarFactory final : public ToolbarFactory {
public:
    [[nodiscard]] std::unique_ptr<Toolbar> makeToolbar(const QString& identifier) override {
        auto toolbar = std::make_unique<FakeToolbar>(identifier);
        made_ = toolbar.get();
        return toolbar;
    }
    /// The latest toolbar; valid as long as its owner keeps it.
    [[nodiscard]] FakeToolbar* made() const { return made_; }

private:
    FakeToolbar* made_ = nullptr;
};

} // namespace quillow
