// Value transformers: small one-way and two-way converters between a value and the control that is bound to it,
// and the registry in which bindings look them up by name.
#pragma once

#include "base/Boxed.h"

#include <QHash>
#include <QString>

#include <memory>

namespace quillow {

/// The class of the values that a transformer produces.
enum class ValueClass { image, number, string };

class MWValueTransformer {
public:
    virtual ~MWValueTransformer() = default;
    [[nodiscard]] virtual ValueClass transformedValueClass() const = 0;
    [[nodiscard]] virtual bool allowsReverseTransformation() const = 0;
    [[nodiscard]] virtual Boxed transformedValue(const Boxed& value) const = 0;
    /// For transformers that allow it; the others return nil.
    [[nodiscard]] virtual Boxed reverseTransformedValue(const Boxed& value) const;
};

enum class Reverse { notAllowed, allowed };

/// Fixes the two properties of a transformer's class at compile time; subclasses add the conversions.
template <ValueClass Class, Reverse Allowed>
class MWValueTransformerOf : public MWValueTransformer { // selector: none
public:
    [[nodiscard]] ValueClass transformedValueClass() const final { return Class; }
    [[nodiscard]] bool allowsReverseTransformation() const final { return Allowed == Reverse::allowed; }
};

/// The table of transformers by name. A later registration replaces an earlier one of the same name.
class ValueTransformerRegistry {
public:
    void setValueTransformer(std::shared_ptr<const MWValueTransformer> transformer, const QString& forName);
    /// Null if no transformer has that name.
    [[nodiscard]] std::shared_ptr<const MWValueTransformer> valueTransformerForName(const QString& name) const;

private:
    QHash<QString, std::shared_ptr<const MWValueTransformer>> transformers_;
};

} // namespace quillow
