// Keyed archives: property lists with a table of objects that refer to one another by unique identifiers. "$objects"
// is the table; its first object represents nil. "$top" refers to the root. An object of a class is a dictionary of
// its fields, and its "$class" refers to the class's dictionary ("$classname", and "$classes" with the class and its
// base classes).
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

/// An archive's object table and the navigation between its objects. The contents are not trusted.
class KeyedArchive {
public:
    /// Parses a binary or XML archive. Returns std::nullopt if the bytes are not a property list or the list is not a
    /// keyed archive.
    [[nodiscard]] static std::optional<KeyedArchive> fromData(const QByteArray& bytes);

    /// The root as stored in the table.
    [[nodiscard]] Boxed root() const { return root_; }

    /// The object that a unique identifier names; nil for anything else. An identifier that refers to an identifier
    /// is not followed further, so circular references end.
    [[nodiscard]] Boxed referenced(const Boxed& identifier) const;
    /// The characters of a string object: a plain string, or an object of a string class whose characters are a plain
    /// string or a reference to one.
    [[nodiscard]] std::optional<QString> string(const Boxed& object) const;
    /// Whether the object is an instance of the class or of a derived class.
    [[nodiscard]] bool isOfClass(const Boxed& object, QStringView name) const;

    /// The whole value of an object: strings, numbers, booleans, bytes, dates, arrays and dictionaries with strings
    /// as keys. Returns std::nullopt if it contains an object of any other kind, a cycle, more than
    /// kPropertyListDepth levels, or more than kPropertyListObjects objects. Each reference counts as an object.
    [[nodiscard]] std::optional<Boxed> valueOf(const Boxed& object) const;

private:
    KeyedArchive(const Boxed::Array& objects, const Boxed& rootIdentifier)
        : objects_(objects)
        , root_(referenced(rootIdentifier)) {}
    [[nodiscard]] std::optional<Boxed> valueAt(const Boxed& object, int depth, int& objectsLeft) const;
    [[nodiscard]] std::optional<Boxed::Array> elements(const Boxed& references, int depth, int& objectsLeft) const;

    Boxed::Array objects_;
    Boxed root_;
};

/// The root as a keyed archive in the form of a binary property list. Returns std::nullopt if it contains a picture
/// or more than kPropertyListDepth levels.
[[nodiscard]] std::optional<QByteArray> archivedData(const Boxed& root);

} // namespace quillow
