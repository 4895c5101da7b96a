#include "platform/qt/plist/KeyedArchive.h"

#include "platform/qt/plist/BinaryPropertyListWriter.h"
#include "platform/qt/plist/PropertyList.h"

namespace quillow {
namespace {

using Dictionary = Boxed::Dictionary;
using Array = Boxed::Array;

// Keys of the list itself.
constexpr char16_t kArchiver[] = u"$archiver";
constexpr char16_t kArchiverName[] = u"NSKeyedArchiver";
constexpr char16_t kVersion[] = u"$version";
constexpr std::int32_t kFormatVersion = 100000;
constexpr char16_t kTop[] = u"$top";
constexpr char16_t kRoot[] = u"root";
constexpr char16_t kObjects[] = u"$objects";
constexpr char16_t kNull[] = u"$null"; // the object that represents nil

// Keys of the objects.
constexpr char16_t kClass[] = u"$class";
constexpr char16_t kClassName[] = u"$classname";
constexpr char16_t kClasses[] = u"$classes";
constexpr char16_t kString[] = u"NS.string";
constexpr char16_t kData[] = u"NS.data";
constexpr char16_t kTime[] = u"NS.time";
constexpr char16_t kKeys[] = u"NS.keys";
constexpr char16_t kElements[] = u"NS.objects";

QString name(const char16_t* key) {
    return QString::fromUtf16(key);
}

bool isPlain(const Boxed& object) {
    return !object.array() && !object.dictionary() && !object.image();
}

/// Fills a table of objects, starting at the root.
class Archiver {
public:
    [[nodiscard]] std::optional<QByteArray> archive(const Boxed& root) {
        objects_.append(name(kNull));
        const std::optional<Boxed> identifier = add(root, 0);
        if (!identifier) return std::nullopt;
        return binaryPropertyList(Dictionary{{name(kVersion), kFormatVersion},
                                             {name(kArchiver), name(kArchiverName)},
                                             {name(kTop), Dictionary{{name(kRoot), *identifier}}},
                                             {name(kObjects), objects_}});
    }

private:
    /// Adds an object with everything that it refers to and returns its identifier; std::nullopt for objects that an
    /// archive cannot hold.
    std::optional<Boxed> add(const Boxed& object, int depth) { // NOLINT(misc-no-recursion): depth is bounded
        if (depth > kPropertyListDepth || object.image() || object.object()) return std::nullopt;
        if (object.isNil()) return uniqueIdentifier(0);
        // The object's place is reserved before those of its contents, so that the root comes first.
        const qsizetype place = objects_.size();
        objects_.append(object);
        Dictionary fields;
        if (const auto entries = object.dictionary()) {
            const auto keys = addAll(Array(entries->keyBegin(), entries->keyEnd()), depth);
            const auto values = addAll(entries->values(), depth);
            if (!keys || !values) return std::nullopt;
            fields = {{name(kKeys), *keys}, {name(kElements), *values}, {name(kClass), classNamed(u"NSDictionary")}};
        } else if (const auto elements = object.array()) {
            const auto values = addAll(*elements, depth);
            if (!values) return std::nullopt;
            fields = {{name(kElements), *values}, {name(kClass), classNamed(u"NSArray")}};
        } else if (const auto date = object.date()) {
            fields = {{name(kTime), secondsFromReferenceDate(*date)}, {name(kClass), classNamed(u"NSDate")}};
        } else if (object == Boxed(name(kNull))) {
            // A string equal to the nil marker is written as a string object.
            fields = {{name(kString), object}, {name(kClass), classNamed(u"NSString")}};
        }
        if (!fields.isEmpty()) objects_[place] = fields;
        return uniqueIdentifier(place);
    }

    std::optional<Boxed> addAll(const Array& objects, int depth) { // NOLINT(misc-no-recursion): depth is bounded
        Array identifiers;
        for (const Boxed& object : objects) {
            const auto identifier = add(object, depth + 1);
            if (!identifier) return std::nullopt;
            identifiers.append(*identifier);
        }
        return identifiers;
    }

    Boxed classNamed(const char16_t* className) {
        const QString key = name(className);
        if (!classes_.contains(key)) {
            classes_.insert(key, uniqueIdentifier(objects_.size()));
            objects_.append(
                Dictionary{{name(kClassName), key}, {name(kClasses), Array{key, QStringLiteral("NSObject")}}});
        }
        return classes_.value(key);
    }

    Array objects_;
    Dictionary classes_;
};

} // namespace

std::optional<KeyedArchive> KeyedArchive::fromData(const QByteArray& bytes) {
    const auto list = propertyListFromData(bytes);
    const auto fields = list ? list->dictionary() : std::nullopt;
    if (!fields || fields->value(name(kArchiver)) != Boxed(name(kArchiverName))) return std::nullopt;
    const auto objects = fields->value(name(kObjects)).array();
    const auto top = fields->value(name(kTop)).dictionary();
    if (!objects || !top) return std::nullopt;
    return KeyedArchive(*objects, top->value(name(kRoot)));
}

Boxed KeyedArchive::referenced(const Boxed& identifier) const {
    const auto number = numberOfUniqueIdentifier(identifier);
    if (!number || *number < 0 || *number >= objects_.size()) return {};
    const Boxed object = objects_[static_cast<qsizetype>(*number)];
    return object == Boxed(name(kNull)) ? Boxed() : object;
}

std::optional<QString> KeyedArchive::string(const Boxed& object) const {
    if (auto plain = object.string()) return plain;
    if (!isOfClass(object, u"NSString")) return std::nullopt;
    const Boxed characters = object.dictionary()->value(name(kString));
    const auto plain = characters.string();
    return plain ? plain : referenced(characters).string();
}

bool KeyedArchive::isOfClass(const Boxed& object, QStringView className) const {
    const auto fields = object.dictionary();
    if (!fields) return false;
    const auto classFields = referenced(fields->value(name(kClass))).dictionary();
    if (!classFields) return false;
    const Boxed wanted(className.toString());
    if (classFields->value(name(kClassName)) == wanted) return true;
    const auto classes = classFields->value(name(kClasses)).array();
    return classes && classes->contains(wanted);
}

std::optional<Boxed> KeyedArchive::valueOf(const Boxed& object) const {
    int objectsLeft = kPropertyListObjects;
    return valueAt(object, 0, objectsLeft);
}

// NOLINTNEXTLINE(misc-no-recursion): depth is bounded
std::optional<Boxed> KeyedArchive::valueAt(const Boxed& object, int depth, int& objectsLeft) const {
    if (depth > kPropertyListDepth || --objectsLeft < 0) return std::nullopt;
    if (isPlain(object)) return object;
    if (const auto text = string(object)) return Boxed(*text);
    const Dictionary fields = object.dictionary().value_or(Dictionary());
    if (isOfClass(object, u"NSDictionary")) {
        const auto keys = elements(fields.value(name(kKeys)), depth, objectsLeft);
        const auto values = elements(fields.value(name(kElements)), depth, objectsLeft);
        if (!keys || !values || keys->size() != values->size()) return std::nullopt;
        Dictionary result;
        for (qsizetype i = 0; i < keys->size(); ++i) {
            const auto key = keys->at(i).string();
            if (!key) return std::nullopt;
            result.insert(*key, values->at(i));
        }
        return Boxed(result);
    }
    if (isOfClass(object, u"NSArray")) {
        const auto values = elements(fields.value(name(kElements)), depth, objectsLeft);
        return values ? std::optional(Boxed(*values)) : std::nullopt;
    }
    if (isOfClass(object, u"NSData")) {
        const auto bytes = fields.value(name(kData)).data();
        return bytes ? std::optional(Boxed(*bytes)) : std::nullopt;
    }
    if (isOfClass(object, u"NSDate")) {
        const auto date = dateFromReferenceDate(fields.value(name(kTime)).doubleValue());
        return date ? std::optional(Boxed(*date)) : std::nullopt;
    }
    return std::nullopt;
}

// NOLINTNEXTLINE(misc-no-recursion): depth is bounded
std::optional<Boxed::Array> KeyedArchive::elements(const Boxed& references, int depth, int& objectsLeft) const {
    const auto identifiers = references.array();
    if (!identifiers) return std::nullopt;
    Array values;
    for (const Boxed& identifier : *identifiers) {
        const auto value = valueAt(referenced(identifier), depth + 1, objectsLeft);
        if (!value) return std::nullopt;
        values.append(*value);
    }
    return values;
}

std::optional<QByteArray> archivedData(const Boxed& root) {
    return Archiver().archive(root);
}

} // namespace quillow
