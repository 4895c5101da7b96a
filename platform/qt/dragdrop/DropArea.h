// The area of the window onto which documents are dropped: it forwards drags and drawing to the logic's views in it,
// and reports their responses to the window system. It is also a button: a press by keyboard, mouse or an assistive
// tool opens the dialog for choosing documents.
#pragma once

#include "platform/View.h"
#include "platform/qt/controls/KeyedButton.h"
#include "platform/qt/dragdrop/DragWay.h"
#include "platform/qt/dragdrop/FileTransferPortal.h"

#include <vector>

namespace quillow {

class DropArea final : public KeyedButton, public ViewArea {
public:
    explicit DropArea(DragWayFinder wayOfDrag, FileTransferPortal portal = FileTransferPortal(),
                      QWidget* parent = nullptr);

    // ViewArea. A frame is valid until the window's layout sets another one.
    void addView(View& view) override;
    void removeView(View& view) override;
    void setFrame(const Rect& frame) override;
    [[nodiscard]] Rect bounds() const override;
    void setNeedsDisplay() override { update(); }
    void registerForDraggedTypes(const QStringList& types) override;
    void unregisterDraggedTypes() override;

    [[nodiscard]] QSize sizeHint() const override { return {587, 114}; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    /// The view that gets the drags; null if there is none.
    [[nodiscard]] View* target() const { return views_.empty() ? nullptr : views_.back(); }
    [[nodiscard]] bool bringsRegisteredType(const DraggingInfo& info) const;
    /// Gives the window system the view's response from the entry, if that action is still offered.
    void answer(QDropEvent& event) const;
    void paintContent(QPainter& painter) const;

    DragWayFinder wayOfDrag_;
    FileTransferPortal portal_;
    std::vector<View*> views_; ///< not owned
    QStringList draggedTypes_;
    // State of the hovering drag, set when it enters.
    DragWay way_ = DragWay::direct;
    DragOperation answer_ = DragOperation::none;
};

} // namespace quillow
