// Value transformers: the small one-way and two-way converters through which the windows' controls are bound to values, and the
// registry by whose names the bindings pick them.
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
    /// For transformers that allow it; the others answer nil.
    [[nodiscard]] virtual Boxed reverseTransformedValue(const Boxed& value) const;
};

enum class Reverse { notAllowed, allowed };

/// The two facts about a transformer's class, fixed at compile time; what is left to each one are its conversions.
template <ValueClass Class, Reverse Allowed>
class MWValueTransformerOf : public MWValueTransformer { // selector: none
public:
    [[nodiscard]] ValueClass transformedValueClass() const final { return Class; }
    [[nodiscard]] bool allowsReverseTransformation() const final { return Allowed == Reverse::allowed; }
};

/// The table of transformers by name. The last registration of a name holds.
class ValueTransformerRegistry {
public:
    void setValueTransformer(std::shared_ptr<const MWValueTransformer> transformer, const QString& forName);
    /// Null when no transformer has that name.
    [[nodiscard]] std::shared_ptr<const MWValueTransformer> valueTransformerForName(const QString& name) const;

private:
    QHash<QString, std::shared_ptr<const MWValueTransformer>> transformers_;
};

} // namespace quillow
