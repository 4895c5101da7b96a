// The block scans agree with the byte-by-byte scans at every start offset, and CssStructure always advances.
#include "engines/html/css/CssStructure.h"
#include "engines/html/tree/NameKey.h"
#include "text/ByteScan.h"

#include <cstdlib>
#include <string>

namespace {

using namespace quillow;

void require(bool holds) {
    if (!holds) std::abort();
}

template <html::NameEnd end>
void checkName(std::string_view bytes, std::size_t from) {
    const html::ScannedName fast = html::scanName<end>(bytes, from);
    const html::ScannedName slow = html::scanNamePortable<end>(bytes, from);
    require(fast.length == slow.length && fast.asWritten == slow.asWritten && fast.key == slow.key);
}

void checkFrom(std::string_view bytes, std::size_t from) {
    require(text::findFirstOf<'<', '&', '\0'>(bytes, from) == text::findFirstOfPortable<'<', '&', '\0'>(bytes, from));
    require(text::skipBlanks(bytes, from) == text::skipBlanksPortable(bytes, from));
    require(text::findBlank(bytes, from) == text::findBlankPortable(bytes, from));
    require(text::findBlankRun(bytes, from) == text::findBlankRunPortable(bytes, from));
    if (from == bytes.size()) return;
    checkName<html::NameEnd::tag>(bytes, from);
    checkName<html::NameEnd::attribute>(bytes, from);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMostStarts = 64;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (std::size_t from = 0; from <= size && from < kMostStarts; ++from)
        checkFrom(bytes, from);
    require(text::countBinaryBytes(bytes) == text::countBinaryBytesPortable(bytes));
    html::CssStrings strings;
    html::CssStructure structure(bytes, strings);
    std::size_t last = 0;
    for (std::size_t taken = 0; structure.next() != '\0'; ++taken) {
        require(taken <= size && structure.position() >= last && structure.position() < size);
        last = structure.position();
    }
    return 0;
}
