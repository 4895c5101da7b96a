#include "tests/engines/pdf/syntax/Printed.h"

#include <sstream>

namespace quillow::pdf::test {
namespace {

std::string printedDictionary(const Dictionary& dictionary) {
    std::string text = "<<";
    for (const auto& [key, value] : dictionary.entries())
        text.append("/").append(key).append(" ").append(printed(value));
    return text + ">>";
}

std::string printedArray(std::span<const Object> items) {
    std::string text;
    for (const Object& item : items)
        text += (text.empty() ? "" : " ") + printed(item);
    return "[" + text + "]";
}

std::string printedNumber(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

} // namespace

std::string printed(const Object& object) {
    switch (object.type()) {
    case Object::Type::null: return "null";
    case Object::Type::boolean: return object.booleanOr(false) ? "true" : "false";
    case Object::Type::integer: return std::to_string(object.integerOr(0));
    case Object::Type::real: return printedNumber(object.numberOr(0));
    case Object::Type::name: return "/" + std::string(object.name());
    case Object::Type::string: return "(" + std::string(object.string()) + ")";
    case Object::Type::array: return printedArray(object.array());
    case Object::Type::dictionary: return printedDictionary(object.dictionary());
    case Object::Type::stream: return printedDictionary(object.dictionary()) + "stream";
    case Object::Type::reference:
        return std::to_string(object.reference().number) + " " + std::to_string(object.reference().generation) + " R";
    }
    return "";
}

} // namespace quillow::pdf::test
