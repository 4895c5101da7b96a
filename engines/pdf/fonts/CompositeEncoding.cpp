#include "engines/pdf/fonts/CompositeEncoding.h"

#include <array>

namespace quillow::pdf {

CompositeEncoding::CompositeEncoding(FontResources& resources, const Object& entry) {
    follow(resources, entry);
    // A CMap without any code is as good as none.
    const bool isEmpty = predefined_ == nullptr && (embedded_.empty() || !embedded_.front()->hasCids());
    isIdentity_ = isIdentity_ || (isEmpty && embedded_.size() <= 1);
}

/// From each CMap to the one in its /UseCMap, or to the one that it names itself (9.7.5.3, table 118).
void CompositeEncoding::follow(FontResources& resources, const Object& entry) {
    Document& document = resources.document();
    Object current = document.resolve(entry);
    while (const CMap* const map = resources.cmapOf(current)) {
        embedded_.push_back(map);
        const Dictionary dictionary = current.dictionary();
        isVertical_ = isVertical_ || map->isVertical() || document.get(dictionary, "WMode").integerOr(0) == 1;
        if (embedded_.size() == kMaximumChain) return;
        current = document.get(dictionary, "UseCMap");
        if (current.isNull()) return followName(map->base());
    }
    followName(current.name());
}

void CompositeEncoding::followName(std::string_view name) {
    if (name.empty()) return;
    predefined_ = predefinedCMap(name);
    if (predefined_ == nullptr) isIdentity_ = true;
    isVertical_ = isVertical_ || (predefined_ != nullptr ? predefined_->isVertical : name.ends_with("-V"));
}

CodeReader CompositeEncoding::reader() const {
    std::vector<CodespaceRange> ranges;
    for (const CMap* const map : embedded_)
        ranges.insert(ranges.end(), map->codespace().begin(), map->codespace().end());
    if (predefined_ != nullptr)
        ranges.insert(ranges.end(), predefined_->codespace.begin(), predefined_->codespace.end());
    return CodeReader(ranges);
}

/// The code of that number in the shortest length in which the CMap has it.
CharacterCode CompositeEncoding::codeOfPredefined(std::uint32_t value) const {
    std::array<char, kMaxBytesOfCode> bytes{};
    for (unsigned length = 1; length <= kMaxBytesOfCode; ++length) {
        if (length < kMaxBytesOfCode && value >> 8 * length != 0) continue;
        for (unsigned i = 0; i < length; ++i)
            bytes[i] = static_cast<char>(value >> 8 * (length - 1 - i) & 0xFF);
        const char* p = bytes.data();
        const CharacterCode code = predefined_->next(p, p + length);
        if (code.bytes == length && code.isInCodespace) return code;
    }
    return {};
}

std::uint32_t CompositeEncoding::cidOf(std::uint32_t code) const {
    for (const CMap* const map : embedded_)
        if (const auto cid = map->cidOf(code)) return *cid;
    if (predefined_ != nullptr) return predefined_->cidOf(codeOfPredefined(code));
    return isIdentity_ ? code : 0;
}

char32_t CompositeEncoding::characterOf(std::uint32_t code) const {
    if (predefined_ == nullptr || !predefined_->isUnicode()) return 0;
    for (const CMap* const map : embedded_)
        if (map->cidOf(code)) return 0;
    return predefined_->unicodeOf(codeOfPredefined(code));
}

CharacterCollection CompositeEncoding::collection() const {
    return predefined_ != nullptr ? predefined_->collection : CharacterCollection::Unknown;
}

} // namespace quillow::pdf
