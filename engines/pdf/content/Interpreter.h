// Executes the operators of content streams that text depends on (ISO 32000-2, annex A).
#pragma once

#include "engines/pdf/content/ContentLimits.h"
#include "engines/pdf/content/ContentScanner.h"
#include "engines/pdf/content/FormCache.h"
#include "engines/pdf/content/GraphicsState.h"
#include "engines/pdf/content/MarkedContent.h"
#include "engines/pdf/content/OptionalContent.h"
#include "engines/pdf/content/PathCollector.h"
#include "engines/pdf/content/Resources.h"
#include "engines/pdf/content/TextWriter.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Graphics states that q saves. Unbalanced files save thousands.
inline constexpr std::size_t kMaximumSavedStates = 1'000;
/// Forms inside one another. Real files have some five.
inline constexpr std::size_t kMaximumFormDepth = 24;

class Interpreter {
public:
    /// The document and the fonts must outlive the interpreter.
    Interpreter(Document& document, FontCache& fonts, const ContentLimits& limits);

    /// `page` is empty but for its crop box.
    void beginPage(Page& page, const Matrix& toPage, const Dictionary& resources);
    /// Interprets a part of the page's content, which a guard follows in memory (ContentBuffer). The state goes on from
    /// one part to the next.
    void interpret(std::string_view content);
    /// Interprets a form as if the page's content called it with this transformation from its /Matrix on. Flags and
    /// clipping are for its runs.
    void showForm(Form& form, const Matrix& toPage, std::uint8_t flags, Clipping clipping);
    /// Ends the run that is being written, so that others can add runs to the page.
    void endRun() { writer_.endRun(); }
    /// Ends the page. Nothing may be interpreted before the next one begins.
    void endPage();

    /// Streams that were damaged or left out since `beginPage`, and limits that were reached.
    [[nodiscard]] std::uint64_t partsSkipped() const;
    /// Charges the budget. False if it is spent: nothing more is read of the page.
    bool spend(std::size_t operators);
    /// The same for decoded bytes.
    void spendBytes(std::size_t count);

    /// See PageReader. Not while a page is being interpreted.
    [[nodiscard]] double usedShare() const;

    [[nodiscard]] FormCache& forms() { return forms_; }
    [[nodiscard]] OptionalContent& optionalContent() { return optionalContent_; }

private:
    /// A content stream that is being interpreted: the page's own, or a form's inside another one's.
    struct Level {
        ContentScanner scanner;
        Resources resources;
        Form* form = nullptr;
        std::size_t savedStates = 0; ///< when it began: the outer ones' states are not its own
        std::size_t markDepth = 0;
        std::size_t markFloor = 0;
        TextWriter::Place place;
    };

    [[nodiscard]] Level& level() { return levels_[depth_]; }
    void run(std::size_t untilDepth);
    void execute(Operator word);
    [[nodiscard]] bool executeText(Operator word);
    [[nodiscard]] bool executePath(Operator word);

    void saveState();
    void restoreState();
    void restoreStatesTo(std::size_t count);
    void concatenate();
    void applyStateParameters();

    void chooseFont();
    void setNumber(double TextState::*parameter, double factor, bool movesGlyphs);
    void moveLine(bool setsLeading);
    void nextLine();
    void setTextMatrix();
    void showString();
    void showStrings(std::span<const Operand> items);
    void showWithSpacing();

    void paint(PathCollector::Painting painting);
    void endPath();
    [[nodiscard]] std::optional<Box> takeClip();

    void beginMarks(bool hasProperties);
    void readProperties(std::string_view tag, const Operand& properties, MarkedContent::Sequence& sequence);
    void setActualText(std::string_view bytes, MarkedContent::Sequence& sequence);

    void callXObject();
    [[nodiscard]] bool enterForm(Form& form);
    void leaveForm();
    void clipTo(const Rectangle& box);
    void skipImage();

    ResourceSources sources_;
    FormCache forms_;
    OptionalContent optionalContent_;
    TextWriter writer_;
    MarkedContent marks_;
    PathCollector path_;
    Operands operands_;
    Page* page_ = nullptr;

    GraphicsState state_;
    std::vector<GraphicsState> saved_;
    std::size_t ignoredSaves_ = 0; ///< past kMaximumSavedStates
    bool clipsAtPaint_ = false;    ///< W or W* came
    bool isInImage_ = false;       ///< BI came

    std::array<Level, 1 + kMaximumFormDepth> levels_;
    std::size_t depth_ = 0;

    text::ByteBuffer scratch_;
    std::u32string actualText_;
    std::size_t operatorsOfPage_;
    std::size_t operatorsLeft_ = 0;
    std::size_t operatorsOfDocument_;
    std::size_t documentOperatorsLeft_;
    bool isSpent_ = false;
    std::uint64_t skipped_ = 0;
};

} // namespace quillow::pdf
