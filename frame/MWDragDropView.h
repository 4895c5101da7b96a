// The drop area as the logic sees it: each dropped path becomes a write of one observed property.
#pragma once

#include "base/KVObject.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

class MWDragDropView : public KVObject {
public:
    /// Reports dropped paths: each is written to `myFilePathDropped`, in order, and its observers have run before the next
    /// one is. An equal path is written, and reported, again.
    void addLinkToFiles(const QStringList& files);

    /// The path dropped last; nil before the first.
    [[nodiscard]] std::optional<QString> myFilePathDropped() const { return myFilePathDropped_.get(); }

private:
    KVProperty<std::optional<QString>> myFilePathDropped_{*this, u"myFilePathDropped"};
};

} // namespace quillow
