// The tokens of a content stream (ISO 32000-2, 7.8.2): operands are collected until an operator comes. Makes no
// objects: names and strings stay views of the content.
#pragma once

#include "engines/pdf/content/Operands.h"
#include "engines/pdf/content/Operators.h"

#include <string_view>

namespace quillow::pdf {

class ContentScanner {
public:
    ContentScanner() = default;
    /// `content` is followed by ContentBuffer::kGuard in memory.
    explicit ContentScanner(std::string_view content)
        : p_(content.data())
        , end_(content.data() + content.size()) {}

    /// Pushes operands up to the next operator and returns it; kNoOperator at the end.
    [[nodiscard]] Operator next(Operands& operands);

    /// What has not been scanned yet.
    [[nodiscard]] std::string_view rest() const { return {p_, static_cast<std::size_t>(end_ - p_)}; }
    /// Goes on at a place in rest().
    void goTo(const char* place) { p_ = place; }

private:
    const char* pushArray(const char* p, Operands& operands);
    const char* pushDictionary(const char* p, Operands& operands);
    const char* pushString(const char* p, Operands& operands);
    [[nodiscard]] Operand scanLiteral(const char*& p, std::size_t& bytes) const;
    [[nodiscard]] Operand scanHex(const char*& p, std::size_t& bytes, char*& to) const;
    [[nodiscard]] char* roomForDecoded(const char* p, Operands& operands) const;

    const char* p_ = nullptr;
    const char* end_ = nullptr;
    bool dictionariesEnd_ = true; ///< false after a dictionary without an end: no other one is searched for its end
};

/// The end of the dictionary whose contents begin at `p`: at its ">>". Null if it has no end.
[[nodiscard]] const char* endOfDictionary(const char* p, const char* end);

} // namespace quillow::pdf
