#include "engines/pdf/content/Interpreter.h"

#include "engines/pdf/content/InlineDictionary.h"
#include "engines/pdf/content/InlineImage.h"
#include "engines/pdf/syntax/TextString.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillow::pdf {

namespace {

/// What the budget is charged, in operators.
constexpr std::size_t kCostOfForm = 50;
constexpr std::size_t kEntriesAnOperator = 8;
constexpr std::size_t kCodesAnOperator = 4;
constexpr std::size_t kBytesAnOperator = 16;

/// A number for an MCID; the type has no room for others.
std::int32_t idOf(std::int64_t value) {
    const bool fits = value >= 0 && value <= std::numeric_limits<std::int32_t>::max();
    return fits ? static_cast<std::int32_t>(value) : Run::kNoMark;
}

/// Whether artifacts of this subtype are above or below the text of their pages (14.8.2.2.2).
bool isRunning(std::string_view subtype) {
    return subtype == "Header" || subtype == "Footer" || subtype == "PageNum" || subtype == "Bates";
}

} // namespace

Interpreter::Interpreter(Document& document, FontCache& fonts, const ContentLimits& limits)
    : sources_{document, fonts}
    , forms_(document)
    , optionalContent_(document)
    , operatorsOfPage_(limits.operatorsOfPage)
    , operatorsOfDocument_(limits.operatorsOfDocument)
    , documentOperatorsLeft_(limits.operatorsOfDocument) {}

void Interpreter::beginPage(Page& page, const Matrix& toPage, const Dictionary& resources) {
    page_ = &page;
    state_ = {};
    state_.toPage = toPage;
    saved_.clear();
    ignoredSaves_ = 0;
    clipsAtPaint_ = false;
    isInImage_ = false;
    depth_ = 0;
    levels_[0] = {};
    levels_[0].resources = Resources(resources, nullptr);
    writer_.beginPage(page);
    marks_.clear();
    path_.clear();
    operatorsLeft_ = std::min(operatorsOfPage_, documentOperatorsLeft_);
    documentOperatorsLeft_ -= operatorsLeft_;
    isSpent_ = false;
    skipped_ = 0;
}

void Interpreter::endPage() {
    writer_.endRun();
    documentOperatorsLeft_ += std::exchange(operatorsLeft_, 0);
    if (writer_.isFull()) ++skipped_;
}

double Interpreter::usedShare() const {
    const auto operators = static_cast<double>(operatorsOfDocument_ - documentOperatorsLeft_);
    return operators / static_cast<double>(operatorsOfDocument_) +
           static_cast<double>(forms_.reused()) / static_cast<double>(kMaximumDecodedTotal);
}

std::uint64_t Interpreter::partsSkipped() const {
    return skipped_;
}

bool Interpreter::spend(std::size_t operators) {
    if (operators <= operatorsLeft_) {
        operatorsLeft_ -= operators;
        return true;
    }
    operatorsLeft_ = 0;
    if (!std::exchange(isSpent_, true)) ++skipped_;
    return false;
}

void Interpreter::spendBytes(std::size_t count) {
    spend(count / kBytesAnOperator);
}

void Interpreter::interpret(std::string_view content) {
    level().scanner = ContentScanner(content);
    run(depth_);
    level().resources.forgetNames();
}

/// Interprets the current content, and the forms that it calls, to its end.
void Interpreter::run(std::size_t untilDepth) {
    for (;;) {
        operands_.clear();
        const Operator word = isSpent_ ? kNoOperator : level().scanner.next(operands_);
        if (word != kNoOperator && spend(1)) {
            execute(word);
            continue;
        }
        if (depth_ == untilDepth) return;
        leaveForm();
    }
}

void Interpreter::execute(Operator word) {
    if (executePath(word) || executeText(word)) return;
    switch (word) {
    case operatorOf("q"): saveState(); break;
    case operatorOf("Q"): restoreState(); break;
    case operatorOf("cm"): concatenate(); break;
    case operatorOf("gs"): applyStateParameters(); break;
    case operatorOf("BMC"): beginMarks(false); break;
    case operatorOf("BDC"): beginMarks(true); break;
    case operatorOf("EMC"): marks_.end(); break;
    case operatorOf("Do"): callXObject(); break;
    case operatorOf("BI"): isInImage_ = true; break;
    case operatorOf("ID"): skipImage(); break;
    default: break;
    }
}

// Graphics state (8.4.4)

void Interpreter::saveState() {
    if (saved_.size() < kMaximumSavedStates)
        saved_.push_back(state_);
    else
        ++ignoredSaves_;
}

void Interpreter::restoreState() {
    if (ignoredSaves_ > 0) {
        --ignoredSaves_;
    } else if (saved_.size() > level().savedStates) {
        state_ = saved_.back();
        saved_.pop_back();
        writer_.stateChanged();
    }
}

void Interpreter::restoreStatesTo(std::size_t count) {
    ignoredSaves_ = 0;
    if (saved_.size() <= count) return;
    state_ = saved_[count];
    saved_.resize(count);
    writer_.stateChanged();
}

void Interpreter::concatenate() {
    std::array<double, 6> n{};
    if (!operands_.take(n)) return;
    state_.toPage = Matrix{n[0], n[1], n[2], n[3], n[4], n[5]} * state_.toPage;
    writer_.stateChanged();
}

void Interpreter::applyStateParameters() {
    if (operands_.size() == 0 || !operands_.fromEnd(0).isName()) return;
    const StateParameters& parameters = level().resources.state(sources_, operands_.fromEnd(0).view());
    spend(level().resources.takeCost() / kEntriesAnOperator);
    if (parameters.font == nullptr) return;
    state_.text.font = parameters.font;
    state_.text.size = parameters.size;
    writer_.stateChanged();
}

// Marked content (14.6)

void Interpreter::beginMarks(bool hasProperties) {
    MarkedContent::Sequence sequence;
    const std::size_t tagAt = hasProperties ? 1 : 0;
    const std::string_view tag =
        operands_.size() > tagAt && operands_.fromEnd(tagAt).isName() ? operands_.fromEnd(tagAt).view() : "";
    if (hasProperties && operands_.size() > 0) {
        const Operand& properties = operands_.fromEnd(0);
        if (tag == "OC" && properties.isName())
            sequence.isHidden = !optionalContent_.isShown(level().resources.properties(sources_, properties.view()));
        else
            readProperties(tag, properties, sequence);
        spend(level().resources.takeCost() / kEntriesAnOperator);
    }
    // The numbers of a form are not those of its page (14.7.5.4): its text belongs to what the form belongs to.
    if (depth_ > 0) sequence.id = Run::kNoMark;
    marks_.begin(sequence);
}

void Interpreter::readProperties(std::string_view tag, const Operand& properties, MarkedContent::Sequence& sequence) {
    const bool isArtifact = tag == "Artifact";
    if (properties.kind == Operand::Kind::dictionary) {
        const InlineDictionary dictionary(properties.view());
        sequence.id = idOf(dictionary.integer("MCID").value_or(Run::kNoMark));
        sequence.isRunning = isArtifact && isRunning(dictionary.name("Subtype"));
        scratch_.clear();
        if (dictionary.string("ActualText", scratch_)) setActualText(scratch_.view(), sequence);
    } else if (properties.isName()) {
        Document& document = sources_.document;
        const Dictionary dictionary =
            document.resolve(level().resources.properties(sources_, properties.view())).dictionary();
        sequence.id = idOf(document.get(dictionary, "MCID").integerOr(Run::kNoMark));
        sequence.isRunning = isArtifact && isRunning(document.get(dictionary, "Subtype").name());
        const Object text = document.get(dictionary, "ActualText");
        if (text.type() == Object::Type::string) setActualText(text.string(), sequence);
    }
}

void Interpreter::setActualText(std::string_view bytes, MarkedContent::Sequence& sequence) {
    spend(bytes.size() / kCodesAnOperator);
    actualText_ = decodeTextString(bytes);
    sequence.actualText = &actualText_;
}

// External objects and inline images (8.8 to 8.10)

void Interpreter::callXObject() {
    if (operands_.size() == 0 || !operands_.fromEnd(0).isName()) return;
    const Object object = level().resources.xObject(sources_, operands_.fromEnd(0).view());
    spend(level().resources.takeCost() / kEntriesAnOperator);
    const StreamContent* const stream = object.stream();
    if (stream == nullptr || sources_.document.get(stream->dictionary, "Subtype").isName("Image")) return;
    static_cast<void>(enterForm(forms_.formOf(*stream)));
}

void Interpreter::showForm(Form& form, const Matrix& toPage, std::uint8_t flags, Clipping clipping) {
    restoreStatesTo(0);
    marks_.endTo(0);
    state_ = {};
    state_.toPage = toPage;
    writer_.setFlags(flags, clipping);
    writer_.beginObject();
    if (enterForm(form)) {
        run(depth_);
        leaveForm();
    }
    writer_.setFlags(0);
}

/// 8.10.1. False if the form is not interpreted.
bool Interpreter::enterForm(Form& form) {
    if (!form.canShowText || form.uses > 0 || marks_.current().isHidden) return false;
    if (!optionalContent_.isShown(form.optionalContent)) return false;
    if (depth_ == kMaximumFormDepth) {
        ++skipped_;
        return false;
    }
    if (!spend(kCostOfForm)) return false;
    forms_.load(form);
    spendBytes(forms_.takeCost());
    if (!form.isComplete) ++skipped_;

    Resources& outer = level().resources;
    Level& inner = levels_[++depth_];
    inner.scanner = ContentScanner(form.bytes);
    inner.resources = Resources(form.resources, &outer);
    inner.form = &form;
    ++form.uses;
    inner.place = writer_.place();
    inner.markDepth = marks_.depth();
    inner.markFloor = marks_.floor();
    marks_.setFloor(inner.markDepth);
    saved_.push_back(state_);
    inner.savedStates = saved_.size();
    state_.toPage = form.matrix * state_.toPage;
    if (form.box) clipTo(*form.box);
    writer_.beginObject();
    path_.clear();
    return true;
}

void Interpreter::leaveForm() {
    Level& inner = level();
    --inner.form->uses;
    restoreStatesTo(inner.savedStates - 1);
    marks_.endTo(inner.markDepth);
    marks_.setFloor(inner.markFloor);
    writer_.setPlace(inner.place);
    path_.clear();
    isInImage_ = false;
    --depth_;
}

/// The upright box around a rectangle of the current user space contains it.
void Interpreter::clipTo(const Rectangle& box) {
    const auto corner = [&](double x, double y) {
        const Vector v = state_.toPage.apply(x, y);
        return Point{static_cast<float>(v.x), static_cast<float>(v.y)};
    };
    const Point first = corner(box.left, box.bottom);
    Box around{first.x, first.y, first.x, first.y};
    around.extendTo(corner(box.right, box.bottom));
    around.extendTo(corner(box.left, box.top));
    around.extendTo(corner(box.right, box.top));
    state_.clip = intersectionOf(state_.clip, around);
}

void Interpreter::skipImage() {
    if (!std::exchange(isInImage_, false)) return;
    ContentScanner& scanner = level().scanner;
    scanner.goTo(skipInlineImage(operands_, scanner.rest()));
}

} // namespace quillow::pdf
