// The drop area: it accepts drags of files if their source offers to link them, shows that it is a target, and
// reports each dropped path by a write to one observed property. The observer processes the paths.
#pragma once

#include "base/KVObject.h"
#include "platform/View.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

class MWDragDropView : public KVObject, public View {
public:
    /// For a view that the window's layout places. It accepts drags only after awakeFromNib().
    explicit MWDragDropView(ViewArea& area); // selector: init
    /// Accepts drags at once.
    MWDragDropView(ViewArea& area, const Rect& frame); // selector: initWithFrame:
    ~MWDragDropView() override;                        // selector: dealloc
    void awakeFromNib();

    [[nodiscard]] bool prepareForDragOperation(const DraggingInfo& sender) override;
    /// Returns link for files that may be linked, otherwise none.
    [[nodiscard]] DragOperation draggingEntered(const DraggingInfo& sender) override;
    void draggingExited() override; // selector: draggingExited:
    /// Writes each path to `myFilePathDropped`, in order. The observers run after each write, even if the path is the
    /// same as before. An observer may change the list: the loop uses its current length.
    void addLinkToFiles(const QStringList& files);
    /// Reports the dropped paths. deliberate: always returns true, even if nothing was accepted.
    [[nodiscard]] bool performDragOperation(const DraggingInfo& sender) override;
    /// Draws nothing.
    void drawRect(const Rect& rect, Drawing& drawing) override; // selector: drawRect:

    /// The last dropped path; nil before the first drop.
    [[nodiscard]] std::optional<QString> myFilePathDropped() const { return myFilePathDropped_.get(); }
    /// While the paths of a drop are reported: the number of paths after the current one.
    [[nodiscard]] qsizetype pathsToCome() const { return pathsToCome_; } // selector: none
    /// True while a drag that the view accepts is over it.
    [[nodiscard]] bool hilited() const { return hilited_; }

private:
    void setHilited(bool hilited);

    KVProperty<std::optional<QString>> myFilePathDropped_{*this, u"myFilePathDropped"};
    qsizetype pathsToCome_ = 0;
    bool hilited_ = false;
};

} // namespace quillow
