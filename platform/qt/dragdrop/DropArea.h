// The area of the window onto which documents are dropped: it forwards drags and drawing to the logic's views in it,
// and reports their responses to the window system. It is also a button: a press by keyboard, mouse or an assistive
// tool opens the dialog for choosing documents.
#pragma once

#include "platform/View.h"
#include "platform/qt/controls/KeyedButton.h"
#include "platform/qt/controls/OutcomeMark.h"
#include "platform/qt/dragdrop/DragWay.h"
#include "platform/qt/dragdrop/DropContent.h"
#include "platform/qt/dragdrop/FileTransferPortal.h"

#include <QBasicTimer>

#include <vector>

namespace quillow {

class DropArea final : public KeyedButton, public ViewArea {
public:
    /// Between the edges of the area and those of its inner area, in points. A frame and an outline closer to one
    /// another look like a fault of the drawing.
    static constexpr int kInnerInset = 10;
    /// How long the mark of an outcome is shown.
    static constexpr int kMarkMilliseconds = 2500;

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

    /// An area within this one, away from its edges. Drags over the margin are its drags too.
    [[nodiscard]] ViewArea& innerArea() { return innerArea_; }

    /// Shows for a moment whether everything of the latest drop was converted.
    void showMark(OutcomeMark mark);
    [[nodiscard]] OutcomeMark mark() const { return mark_; }
    /// From now on the area says that the program ends after the current document.
    void showEnding();

    [[nodiscard]] QString title() const { return texts().title; }
    /// Where the glyph and the texts are now.
    [[nodiscard]] DropContent content() const;
    /// The room that they have, within the outline.
    [[nodiscard]] QRectF contentRoom() const;

    [[nodiscard]] QSize sizeHint() const override { return {587, 114}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    class InnerArea final : public ViewArea {
    public:
        explicit InnerArea(DropArea& outer)
            : outer_(outer) {}
        void addView(View& view) override { outer_.add(view, kInnerInset); }
        void removeView(View& view) override { outer_.removeView(view); }
        void setFrame(const Rect&) override {} // the outer area decides
        [[nodiscard]] Rect bounds() const override;
        void setNeedsDisplay() override { outer_.setNeedsDisplay(); }
        void registerForDraggedTypes(const QStringList& types) override { outer_.registerForDraggedTypes(types); }
        void unregisterDraggedTypes() override { outer_.unregisterDraggedTypes(); }

    private:
        DropArea& outer_;
    };
    struct PlacedView {
        View* view; ///< not owned
        int inset;
    };
    struct Texts {
        QString title;
        QString hint;
        QStringList hintLines; ///< the hint, broken where it does not fit on one line
    };
    /// The view that gets the drags; null if there is none.
    [[nodiscard]] View* target() const { return views_.empty() ? nullptr : views_.back().view; }
    void add(View& view, int inset);
    [[nodiscard]] bool isLit() const { return answer_ != DragOperation::none; }
    [[nodiscard]] Texts texts() const;
    [[nodiscard]] bool bringsRegisteredType(const DraggingInfo& info) const;
    /// Gives the window system the view's response from the entry, if that action is still offered.
    void answer(QDropEvent& event) const;
    void paintContent(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    DragWayFinder wayOfDrag_;
    FileTransferPortal portal_;
    InnerArea innerArea_{*this};
    std::vector<PlacedView> views_;
    QStringList draggedTypes_;
    // State of the hovering drag, set when it enters.
    DragWay way_ = DragWay::direct;
    DragOperation answer_ = DragOperation::none;

    OutcomeMark mark_ = OutcomeMark::none;
    QBasicTimer markTimer_;
    bool isEnding_ = false;
};

} // namespace quillow
