#include "frame/MWDragDropView.h"

namespace quillow {

void MWDragDropView::addLinkToFiles(const QStringList& files) {
    for (const QString& file : files)
        setValue(file, QStringLiteral("myFilePathDropped"));
}

} // namespace quillow
