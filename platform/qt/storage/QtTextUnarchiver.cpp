#include "platform/qt/storage/QtTextUnarchiver.h"

#include "platform/qt/plist/KeyedArchive.h"
#include "platform/qt/plist/UnkeyedArchive.h"

namespace quillow {

std::optional<QString> QtTextUnarchiver::stringOfArchivedText(const QByteArray& archive) const {
    const auto table = KeyedArchive::fromData(archive);
    if (!table) return stringOfUnkeyedArchive(archive);
    const Boxed root = table->root();
    if (table->isOfClass(root, u"NSAttributedString"))
        return table->string(table->referenced(root.dictionary()->value(QStringLiteral("NSString"))));
    return table->string(root);
}

} // namespace quillow
