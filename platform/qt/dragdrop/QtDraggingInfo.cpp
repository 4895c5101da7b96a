#include "platform/qt/dragdrop/QtDraggingInfo.h"

namespace quillow {

QtDraggingInfo::QtDraggingInfo(const QDropEvent& event, DragWay way, const FileTransferPortal& portal)
    : mask_(operationMaskOf(event.possibleActions(), way))
    , data_(*event.mimeData())
    , portal_(portal)
    , localFiles_(localFilesOf(data_)) {}

QStringList QtDraggingInfo::types() const {
    // A list of URLs that are not all local is refused, whatever else the drag contains.
    const bool areFiles = localFiles_ || (FileTransferPortal::hasKey(data_) && data_.urls().isEmpty());
    return areFiles ? QStringList{QString::fromUtf16(kFilenamesPboardType)} : QStringList();
}

std::optional<QStringList> QtDraggingInfo::propertyListForType(const QString& type) const {
    if (!types().contains(type)) return std::nullopt;
    if (FileTransferPortal::hasKey(data_)) {
        if (auto files = portal_.retrieveFiles(data_)) return files;
    }
    return localFiles_;
}

} // namespace quillow
