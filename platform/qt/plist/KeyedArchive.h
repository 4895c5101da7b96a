// Keyed archives: property lists with a table of objects that name one another by unique identifiers. "$objects" is the table,
// whose first object stands for nil; "$top" names the root in it; an object of a class is a dictionary of its fields with
// "$class", which names the class's own dictionary ("$classname", and in "$classes" all classes above it).
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

/// An archive's table of objects, and the steps from one to another. Nobody vouches for what it holds.
class KeyedArchive {
public:
    /// The archive, binary or XML; nothing when the bytes are no property list, or one that is no keyed archive.
    [[nodiscard]] static std::optional<KeyedArchive> fromData(const QByteArray& bytes);

    /// The root as it stands in the table.
    [[nodiscard]] Boxed root() const { return root_; }

    /// The object that a unique identifier names; nil for anything else. Every step leads through here once, so that
    /// references in a circle end.
    [[nodiscard]] Boxed referenced(const Boxed& identifier) const;
    /// A string object: plain, or an object of a string class with its characters, themselves plain or referred to.
    [[nodiscard]] std::optional<QString> string(const Boxed& object) const;
    /// Whether the object is of the class or of one derived from it.
    [[nodiscard]] bool isOfClass(const Boxed& object, QStringView name) const;

    /// The whole value of an object: strings, numbers, booleans, bytes, dates, arrays and dictionaries with strings as keys.
    /// Nothing when there is an object of any other kind in it, a circle, or more than kPropertyListDepth levels or
    /// kPropertyListObjects objects, each reference counted.
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

/// The root as a keyed archive, a binary property list that every reader of the format reads. Nothing when it holds a picture or
/// more than kPropertyListDepth levels.
[[nodiscard]] std::optional<QByteArray> archivedData(const Boxed& root);

} // namespace quillow
