#include "frame/MWDragDropView.h"

namespace quillow {
namespace {

QString filenamesType() {
    return QString::fromUtf16(kFilenamesPboardType);
}

} // namespace

MWDragDropView::MWDragDropView(ViewArea& area)
    : View(area) {}

MWDragDropView::MWDragDropView(ViewArea& area, const Rect& frame)
    : View(area) {
    area.setFrame(frame);
    area.registerForDraggedTypes({filenamesType()});
}

MWDragDropView::~MWDragDropView() {
    area().unregisterDraggedTypes();
}

void MWDragDropView::awakeFromNib() {
    area().registerForDraggedTypes({filenamesType()});
}

bool MWDragDropView::prepareForDragOperation(const DraggingInfo&) {
    return true;
}

DragOperation MWDragDropView::draggingEntered(const DraggingInfo& sender) {
    const bool offersLink = offers(sender.draggingSourceOperationMask(), DragOperation::link);
    if (!offersLink || !sender.types().contains(filenamesType())) return DragOperation::none;
    setHilited(true);
    return DragOperation::link;
}

void MWDragDropView::draggingExited() {
    setHilited(false);
}

bool MWDragDropView::performDragOperation(const DraggingInfo& sender) {
    const DragOperationMask mask = sender.draggingSourceOperationMask();
    if (sender.types().contains(filenamesType())) {
        const auto files = sender.propertyListForType(filenamesType());
        if (offers(mask, DragOperation::link)) {
            setHilited(false);
            addLinkToFiles(files.value_or(QStringList()));
        }
    }
    return true;
}

void MWDragDropView::addLinkToFiles(const QStringList& files) {
    for (qsizetype i = 0; i < files.size(); ++i) {
        pathsToCome_ = files.size() - 1 - i;
        setValue(files[i], QStringLiteral("myFilePathDropped"));
    }
    pathsToCome_ = 0;
}

void MWDragDropView::drawRect(const Rect&, Drawing&) {}

void MWDragDropView::setHilited(bool hilited) {
    hilited_ = hilited;
    area().setNeedsDisplay();
}

} // namespace quillow
