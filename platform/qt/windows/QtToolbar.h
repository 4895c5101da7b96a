// The toolbar of a preferences window: a row of buttons, each with an icon above a label. One button is selected. The
// toolbar cannot be moved and has no menu of its own.
#pragma once

#include "platform/Toolbar.h"

#include <QPointer>

#include <map>
#include <memory>
#include <vector>

class QToolBar;

namespace quillow {

class PaneButton;

class QtToolbar final : public Toolbar {
public:
    /// The bar has this height on its window, whatever the font.
    QtToolbar(QString identifier, int height);
    ~QtToolbar() override;

    void setDelegate(ToolbarDelegate* delegate) override { delegate_ = delegate; }
    void setAllowsUserCustomization(bool allows) override;
    /// The window's widget must be a QMainWindow. The bar is added at its top.
    void attachToWindow(Window& window) override;
    void setShowsToolbarButton(bool shows) override;
    [[nodiscard]] QList<const ToolbarItem*> items() const override;
    void setSelectedItemIdentifier(const QString& identifier) override;

private:
    void addItem(std::unique_ptr<ToolbarItem> item, bool isSelectable);

    QString identifier_;
    int height_;
    ToolbarDelegate* delegate_ = nullptr;
    QPointer<QToolBar> bar_; ///< owned by the window once it is on one
    std::vector<std::unique_ptr<ToolbarItem>> items_;
    std::map<QString, QPointer<PaneButton>> buttons_; ///< by identifier
};

class QtToolbarFactory final : public ToolbarFactory {
public:
    explicit QtToolbarFactory(int height)
        : height_(height) {}
    [[nodiscard]] std::unique_ptr<Toolbar> makeToolbar(const QString& identifier) override;

private:
    int height_;
};

} // namespace quillow
