// The area of the window onto which documents are dropped. It is a button as well: pressing it by keyboard, mouse or an
// assistive tool asks for documents in a dialog.
#pragma once

#include "platform/qt/DropRule.h"

#include <QAbstractButton>

#include <functional>

namespace quillow {

class DropArea final : public QAbstractButton {
public:
    static constexpr int kInset = 3; ///< from the widget's edge to the outline, in points

    explicit DropArea(LinkAction linkAction, QWidget* parent = nullptr);

    /// Called with the paths of each drop, before the drop is answered as finished.
    void setDropHandler(std::function<void(const QStringList& paths)> handler) { dropHandler_ = std::move(handler); }

    /// True while a drag that would be taken hovers; it makes the outline heavier.
    [[nodiscard]] bool isHilited() const { return isHilited_; }

    [[nodiscard]] QSize sizeHint() const override { return {587, 114}; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setHilited(bool isHilited);

    LinkAction linkAction_;
    std::function<void(const QStringList&)> dropHandler_;
    Qt::DropAction answer_ = Qt::IgnoreAction; ///< given on entry, kept while the drag moves
    bool isHilited_ = false;
};

/// The link action under the running window system.
[[nodiscard]] LinkAction linkActionOfWindowSystem();

} // namespace quillow
