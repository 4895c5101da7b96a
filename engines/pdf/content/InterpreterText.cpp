// The text operators (ISO 32000-2, 9.3, 9.4).
#include "engines/pdf/content/Interpreter.h"

namespace quillow::pdf {

namespace {

/// The budget is charged for long strings.
constexpr std::size_t kCodesAnOperator = 4;

} // namespace

bool Interpreter::executeText(std::uint32_t place) {
    switch (place) {
    case placeOf("BT"): writer_.beginObject(); return true;
    case placeOf("ET"): return true;
    case placeOf("Tc"): setNumber(&TextState::characterSpacing, 1, false); return true;
    case placeOf("Tw"): setNumber(&TextState::wordSpacing, 1, false); return true;
    case placeOf("Tz"): setNumber(&TextState::scale, 0.01, true); return true;
    case placeOf("TL"): setNumber(&TextState::leading, 1, false); return true;
    case placeOf("Ts"): setNumber(&TextState::rise, 1, false); return true;
    case placeOf("Tf"): chooseFont(); return true;
    case placeOf("Tr"):
        if (operands_.size() > 0 && operands_.fromEnd(0).isNumber())
            state_.text.mode = operands_.fromEnd(0).number == kInvisibleMode ? kInvisibleMode : 0;
        return true;
    case placeOf("Td"): moveLine(false); return true;
    case placeOf("TD"): moveLine(true); return true;
    case placeOf("T*"): nextLine(); return true;
    case placeOf("Tm"): setTextMatrix(); return true;
    case placeOf("Tj"): showString(); return true;
    case placeOf("TJ"):
        if (operands_.size() > 0 && operands_.fromEnd(0).kind == Operand::Kind::array)
            showStrings(operands_.itemsOf(operands_.fromEnd(0)));
        else
            showString();
        return true;
    case placeOf("'"):
        nextLine();
        showString();
        return true;
    case placeOf("\""): showWithSpacing(); return true;
    default: return false;
    }
}

/// `movesGlyphs`: the frame of the text depends on it.
void Interpreter::setNumber(double TextState::*parameter, double factor, bool movesGlyphs) {
    if (operands_.size() == 0 || !operands_.fromEnd(0).isNumber()) return;
    state_.text.*parameter = operands_.fromEnd(0).number * factor;
    if (movesGlyphs) writer_.stateChanged();
}

void Interpreter::chooseFont() {
    if (operands_.size() == 0 || !operands_.fromEnd(0).isNumber()) return;
    const bool hasName = operands_.size() >= 2 && operands_.fromEnd(1).isName();
    // Where the name is missing, the font stays; no name finds no font, and what that shows has the standard encoding.
    if (hasName || state_.text.font == nullptr)
        state_.text.font =
            &level().resources.font(sources_, hasName ? operands_.fromEnd(1).view() : std::string_view());
    state_.text.size = operands_.fromEnd(0).number;
    spend(level().resources.takeCost() / kCodesAnOperator);
    writer_.stateChanged();
}

void Interpreter::moveLine(bool setsLeading) {
    std::array<double, 2> n{};
    if (!operands_.take(n)) return;
    if (setsLeading) state_.text.leading = -n[1];
    writer_.moveLine(n[0], n[1]);
}

void Interpreter::nextLine() {
    writer_.moveLine(0, -state_.text.leading);
}

void Interpreter::setTextMatrix() {
    std::array<double, 6> n{};
    if (operands_.take(n)) writer_.setMatrix({n[0], n[1], n[2], n[3], n[4], n[5]});
}

void Interpreter::showString() {
    if (operands_.size() > 0 && operands_.fromEnd(0).isString()) showStrings({&operands_.fromEnd(0), 1});
}

/// aw ac string: word spacing, character spacing.
void Interpreter::showWithSpacing() {
    if (operands_.size() >= 3 && operands_.fromEnd(2).isNumber() && operands_.fromEnd(1).isNumber()) {
        state_.text.wordSpacing = operands_.fromEnd(2).number;
        state_.text.characterSpacing = operands_.fromEnd(1).number;
    }
    nextLine();
    showString();
}

void Interpreter::showStrings(std::span<const Operand> items) {
    writer_.show(state_, marks_, items);
    spend(operands_.stringBytes() / kCodesAnOperator);
}

} // namespace quillow::pdf
