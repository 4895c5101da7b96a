#include "engines/pdf/fonts/SimpleEncoding.h"

#include "engines/pdf/fonts/GlyphNames.h"
#include "text/Ascii.h"

#include <charconv>
#include <system_error>

namespace quillow::pdf {

SimpleEncoding::SimpleEncoding(Document& document, const Object& entry) {
    const Object encoding = document.resolve(entry);
    if (encoding.type() == Object::Type::name) {
        base_ = encodingOfName(encoding.name());
        return;
    }
    const Dictionary dictionary = encoding.dictionary();
    base_ = encodingOfName(document.get(dictionary, "BaseEncoding").name());
    readDifferences(document, document.get(dictionary, "Differences").array());
}

/// Each number is the code of the first of the names that follow it (table 112).
void SimpleEncoding::readDifferences(Document& document, std::span<const Object> items) {
    if (items.empty()) return;
    differences_ = std::make_unique<Names>();
    std::int64_t code = 0;
    for (const Object& item : items) {
        const Object value = item.type() == Object::Type::reference ? document.resolve(item) : item;
        if (value.isNumber()) {
            code = value.integerOr(0);
        } else if (value.type() == Object::Type::name) {
            if (code >= 0 && code < 256) (*differences_)[static_cast<std::size_t>(code)] = value.name();
            if (code < 256) ++code;
        }
    }
}

namespace {

/// Whether a name is some letters and the code, in decimal or in hexadecimal digits: "a192" or "C2c".
bool repeats(std::string_view name, std::uint8_t code) {
    const auto isNumber = [&](std::string_view digits, int base) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
        return error == std::errc() && end == digits.data() + digits.size() && value == code;
    };
    for (std::size_t letters = 1; letters < name.size() && text::isLetter(name[letters - 1]); ++letters)
        if (isNumber(name.substr(letters), 10) || isNumber(name.substr(letters), 16)) return true;
    return false;
}

} // namespace

std::optional<std::uint32_t> SimpleEncoding::codeOf(std::string_view name, std::uint8_t code) {
    if (repeats(name, code)) return code;
    return codeOfName(name);
}

SimpleEncoding::CodeNames SimpleEncoding::codeNames() const {
    CodeNames names;
    if (!differences_) return names;
    for (std::size_t code = 0; code < differences_->size(); ++code) {
        const std::string_view name = (*differences_)[code];
        if (name.empty() || name == ".notdef" || name == "space") continue;
        const std::optional<std::uint32_t> repeated = codeOf(name, static_cast<std::uint8_t>(code));
        if (!repeated) return {};
        ++names.count;
        names.isHigh = names.isHigh || *repeated > 0x7F;
    }
    return names;
}

} // namespace quillow::pdf
