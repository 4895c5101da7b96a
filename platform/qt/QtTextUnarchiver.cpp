#include "platform/qt/QtTextUnarchiver.h"

#include "platform/qt/PropertyList.h"

namespace quillow {

namespace {

constexpr char16_t kNull[] = u"$null"; // the object that stands for nil

/// The archive's table of objects, and the steps from one to another. Every step leads through it once, so references in a
/// circle end.
class ObjectTable {
public:
    explicit ObjectTable(const Boxed::Array& objects)
        : objects_(objects) {}

    /// The object that a unique identifier names; nil for anything else.
    [[nodiscard]] Boxed referenced(const Boxed& identifier) const {
        const auto dictionary = identifier.dictionary();
        if (!dictionary || dictionary->size() != 1 || !dictionary->contains(QStringLiteral("CF$UID"))) return {};
        const std::int64_t number = dictionary->first().longValue();
        if (number < 0 || number >= objects_.size()) return {};
        const Boxed object = objects_[static_cast<qsizetype>(number)];
        return object == Boxed(QString::fromUtf16(kNull)) ? Boxed() : object;
    }

    /// A string object: plain, or an object of a string class with its characters, themselves plain or referred to.
    [[nodiscard]] std::optional<QString> string(const Boxed& object) const {
        if (const auto plain = object.string()) return plain;
        if (!isOfClass(object, u"NSString")) return std::nullopt;
        const Boxed characters = object.dictionary()->value(QStringLiteral("NS.string"));
        const auto plain = characters.string();
        return plain ? plain : referenced(characters).string();
    }

    /// Whether the object is of the class or of one derived from it: an archive names an object's class and all above it.
    [[nodiscard]] bool isOfClass(const Boxed& object, QStringView name) const {
        const auto fields = object.dictionary();
        if (!fields) return false;
        const auto classFields = referenced(fields->value(QStringLiteral("$class"))).dictionary();
        if (!classFields) return false;
        const Boxed className(name.toString());
        if (classFields->value(QStringLiteral("$classname")) == className) return true;
        const auto classes = classFields->value(QStringLiteral("$classes")).array();
        return classes && classes->contains(className);
    }

private:
    Boxed::Array objects_;
};

} // namespace

std::optional<QString> QtTextUnarchiver::stringOfArchivedText(const QByteArray& archive) const {
    const auto list = propertyListFromData(archive);
    const auto fields = list ? list->dictionary() : std::nullopt;
    if (!fields || fields->value(QStringLiteral("$archiver")) != Boxed(QStringLiteral("NSKeyedArchiver")))
        return std::nullopt;
    const auto objects = fields->value(QStringLiteral("$objects")).array();
    const auto top = fields->value(QStringLiteral("$top")).dictionary();
    if (!objects || !top) return std::nullopt;

    const ObjectTable table(*objects);
    const Boxed root = table.referenced(top->value(QStringLiteral("root")));
    if (table.isOfClass(root, u"NSAttributedString"))
        return table.string(table.referenced(root.dictionary()->value(QStringLiteral("NSString"))));
    return table.string(root);
}

} // namespace quillow
