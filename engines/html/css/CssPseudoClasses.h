// The pseudo-classes of Selectors Level 4 that do not contain selectors, by name.
#pragma once

#include "engines/html/css/CssSelectors.h"

#include <optional>
#include <string_view>

namespace quillow::html {

/// The simple selector of a pseudo-class without arguments. std::nullopt if it is unknown: the rule is then not valid.
/// `name` is in lower case.
[[nodiscard]] std::optional<SimpleSelector> pseudoClass(std::string_view name);

/// The same for a pseudo-class with arguments, other than :is(), :where() and :not().
[[nodiscard]] std::optional<SimpleSelector> functionalPseudoClass(std::string_view name, std::string_view arguments);

} // namespace quillow::html
