// The drop area: it takes drags of files whose source offers to link them, shows that it is a target, and reports each dropped
// path as a write of one observed property. What becomes of the paths is the observer's business.
#pragma once

#include "base/KVObject.h"
#include "platform/View.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

class MWDragDropView : public KVObject, public View {
public:
    /// Takes drags only after awakeFromNib(), the way of a view whose place the window's layout sets.
    explicit MWDragDropView(ViewArea& area); // selector: init
    /// Takes drags at once.
    MWDragDropView(ViewArea& area, const Rect& frame); // selector: initWithFrame:
    ~MWDragDropView() override;                        // selector: dealloc
    void awakeFromNib();

    [[nodiscard]] bool prepareForDragOperation(const DraggingInfo& sender) override;
    /// Answers link for files that may be linked, else none.
    [[nodiscard]] DragOperation draggingEntered(const DraggingInfo& sender) override;
    void draggingExited() override; // selector: draggingExited:
    /// Reports the paths: each is written to `myFilePathDropped`, in order, and its observers have run before the next one is.
    /// An equal path is written, and reported, again. An observer may change the list: its current length counts.
    void addLinkToFiles(const QStringList& files);
    /// Reports the dropped paths. deliberate: answers yes in every case, also when nothing was taken.
    [[nodiscard]] bool performDragOperation(const DraggingInfo& sender) override;
    /// Draws nothing.
    void drawRect(const Rect& rect, Drawing& drawing) override; // selector: drawRect:

    /// The path dropped last; nil before the first.
    [[nodiscard]] std::optional<QString> myFilePathDropped() const { return myFilePathDropped_.get(); }
    /// True while a drag that would be taken hovers.
    [[nodiscard]] bool hilited() const { return hilited_; }

private:
    void setHilited(bool hilited);

    KVProperty<std::optional<QString>> myFilePathDropped_{*this, u"myFilePathDropped"};
    bool hilited_ = false;
};

} // namespace quillow
