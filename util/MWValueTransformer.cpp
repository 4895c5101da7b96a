#include "util/MWValueTransformer.h"

#include <utility>

namespace quillow {

Boxed MWValueTransformer::reverseTransformedValue(const Boxed& /*value*/) const {
    return {};
}

void ValueTransformerRegistry::setValueTransformer(std::shared_ptr<const MWValueTransformer> transformer,
                                                   const QString& forName) {
    transformers_.insert(forName, std::move(transformer));
}

std::shared_ptr<const MWValueTransformer> ValueTransformerRegistry::valueTransformerForName(const QString& name) const {
    return transformers_.value(name);
}

} // namespace quillow
