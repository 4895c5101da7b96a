#include "engines/pdf/fonts/SimpleEncoding.h"

#include "engines/pdf/fonts/GlyphNames.h"

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

int SimpleEncoding::codeNames() const {
    if (!differences_) return 0;
    int count = 0;
    for (const std::string_view name : *differences_) {
        if (name.empty() || name == ".notdef" || name == "space") continue;
        if (!codeOfName(name)) return 0;
        ++count;
    }
    return count;
}

} // namespace quillow::pdf
