#include "engines/rtf/Charset.h"

#include "text/Unicode.h"
#include "text/Utf8.h"

#include <algorithm>
#include <string>

namespace quillow::rtf {

Charset::Charset(const text::CodePage* page)
    : page_(page) {
    prepareSingles();
}

Charset::Charset(text::SymbolFontDecoder decoder)
    : symbols_(decoder) {
    prepareSingles();
}

char32_t Charset::decodeByte(std::uint8_t byte) const {
    if (symbols_ != nullptr) return byte <= 0x20 ? char32_t{byte} : symbols_(byte);
    if (page_ != nullptr) return page_->decodeByte(byte);
    return byte < 0x80 ? char32_t{byte} : text::kReplacementCharacter;
}

void Charset::prepareSingles() {
    std::string encoded;
    for (unsigned byte = 0x20; byte < 0x100; ++byte) {
        const char32_t c = decodeByte(static_cast<std::uint8_t>(byte));
        const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
        if (isControl || text::isPrivateUse(c) || c == text::kReplacementCharacter) continue;
        encoded.clear();
        text::appendUtf8(encoded, c);
        lengths_[byte] = static_cast<std::uint8_t>(encoded.size());
        for (std::size_t i = 0; i < encoded.size(); ++i)
            utf8_[byte] |= std::uint32_t{static_cast<std::uint8_t>(encoded[i])} << (8 * i);
    }
}

const Charset* CharsetPool::forCodePage(int number) {
    const auto isNumber = [number](const Entry& entry) {
        return entry.codePage == number && !entry.charset->isSymbolFont();
    };
    if (const auto found = std::find_if(entries_.begin(), entries_.end(), isNumber); found != entries_.end())
        return found->charset.get();
    const text::CodePage* page = nullptr;
    if (number != text::kUtf8CodePage) {
        page = text::CodePage::forNumber(number);
        if (page == nullptr) return forCodePage(text::kWindowsLatin);
    }
    entries_.push_back({number, std::make_unique<Charset>(page)});
    return entries_.back().charset.get();
}

const Charset* CharsetPool::forSymbols(text::SymbolFontDecoder symbols) {
    const auto isFont = [symbols](const Entry& entry) { return entry.charset->symbols() == symbols; };
    if (const auto found = std::find_if(entries_.begin(), entries_.end(), isFont); found != entries_.end())
        return found->charset.get();
    entries_.push_back({0, std::make_unique<Charset>(symbols)});
    return entries_.back().charset.get();
}

} // namespace quillow::rtf
