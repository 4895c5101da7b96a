#include "engines/pdf/content/OptionalContent.h"

namespace quillow::pdf {

namespace {

/// Nesting and operands of a visibility expression (8.11.2.2). Past them its parts count as true.
constexpr int kMaximumExpressionDepth = 32;
constexpr std::size_t kMaximumExpressionSteps = 10'000;

} // namespace

OptionalContent::OptionalContent(Document& document)
    : document_(document) {}

/// 8.11.4.3: /D of /OCProperties with /BaseState, /ON and /OFF.
void OptionalContent::readConfiguration() {
    isKnown_ = true;
    const Dictionary properties = document_.get(document_.catalog(), "OCProperties").dictionary();
    const Dictionary configuration = document_.get(properties, "D").dictionary();
    isBaseOn_ = !document_.get(configuration, "BaseState").isName("OFF");
    for (const Object& group : document_.get(configuration, isBaseOn_ ? "OFF" : "ON").array())
        if (group.reference().number != 0) exceptions_.insert(group.reference().number);
}

bool OptionalContent::isShown(const Object& entry) {
    if (entry.isNull()) return true;
    if (!isKnown_) readConfiguration();
    const std::uint32_t number = entry.reference().number;
    if (number == 0) return evaluate(entry);
    const auto known = shown_.find(number);
    if (known != shown_.end()) return known->second;
    const bool shown = evaluate(entry);
    shown_.emplace(number, shown);
    return shown;
}

bool OptionalContent::evaluate(const Object& entry) {
    const Dictionary dictionary = document_.resolve(entry).dictionary();
    if (document_.get(dictionary, "Type").isName("OCMD")) return isMembershipShown(dictionary);
    return isGroupOn(entry);
}

bool OptionalContent::isGroupOn(const Object& group) const {
    const std::uint32_t number = group.reference().number;
    if (number == 0) return true;
    return exceptions_.contains(number) != isBaseOn_;
}

OptionalContent::Policy OptionalContent::policyOf(std::string_view name) {
    if (name == "AllOn") return Policy::allOn;
    if (name == "AnyOff") return Policy::anyOff;
    if (name == "AllOff") return Policy::allOff;
    return Policy::anyOn;
}

/// Table 97. /VE goes before /OCGs. A membership without any group is shown.
bool OptionalContent::isMembershipShown(const Dictionary& membership) {
    const Object expression = document_.get(membership, "VE");
    if (!expression.array().empty()) {
        steps_ = 0;
        return isExpressionTrue(expression, 0);
    }
    const Object entry = membership.find("OCGs");
    const Object groups = document_.resolve(entry);
    if (groups.type() == Object::Type::dictionary) return isGroupOn(entry);

    std::size_t on = 0;
    std::size_t count = 0;
    for (const Object& group : groups.array()) {
        if (document_.resolve(group).type() != Object::Type::dictionary) continue;
        ++count;
        if (isGroupOn(group)) ++on;
    }
    if (count == 0) return true;
    switch (policyOf(document_.get(membership, "P").name())) {
    case Policy::allOn: return on == count;
    case Policy::anyOff: return on < count;
    case Policy::allOff: return on == 0;
    default: return on > 0;
    }
}

bool OptionalContent::isExpressionTrue(const Object& expression, int depth) {
    const Object value = document_.resolve(expression);
    if (value.type() != Object::Type::array) return isGroupOn(expression);
    if (value.array().empty() || depth == kMaximumExpressionDepth) return true;
    const std::string_view operation = document_.resolve(value.array()[0]).name();
    const bool isNot = operation == "Not";
    const bool isOr = operation == "Or";
    for (const Object& operand : value.array().subspan(1)) {
        if (++steps_ > kMaximumExpressionSteps) return true;
        const bool isTrue = isExpressionTrue(operand, depth + 1);
        if (isNot) return !isTrue;
        if (isTrue == isOr) return isOr;
    }
    return !isOr;
}

} // namespace quillow::pdf
