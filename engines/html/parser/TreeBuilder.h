// Tree construction of the HTML Standard, section 13.2.6, scripting off. Modes and algorithms have the standard's
// names. Comments make no nodes; parse errors are not counted.
#pragma once

#include "engines/html/parser/ActiveFormattingElements.h"
#include "engines/html/parser/NodeInserter.h"
#include "engines/html/parser/OpenElements.h"
#include "engines/html/parser/SelectedContent.h"
#include "engines/html/parser/Tokenizer.h"
#include "engines/html/tree/TagSet.h"

namespace quillow::html {

/// Limit for formatting elements that are opened again without a tag: the allowance plus a number for each start
/// tag. Beyond it they are forgotten.
inline constexpr std::size_t kReconstructionAllowance = 100'000;
inline constexpr std::size_t kReconstructionsPerTag = 4;
/// The attributes of at most this many further html and body tags are merged.
inline constexpr int kMaxAttributeMerges = 64;

class TreeBuilder {
public:
    explicit TreeBuilder(Tree& tree)
        : tree_(tree)
        , tokenizer_(tree)
        , inserter_(tree, open_)
        , formatting_(tree)
        , selectedContent_(tree, open_) {}

    /// Parses a document.
    void run() { readTokens(); }
    /// 13.4 "The HTML fragment parsing algorithm": parses what a script sets as the content of a context element.
    /// The context element is not in the tree and has no parent. The nodes become children of an html element.
    void runFragment(NodeId context);

    /// The number of elements and attributes examined so far in the stack of open elements, in the list of active
    /// formatting elements and in tags. It must stay in proportion to the document's size.
    [[nodiscard]] std::uint64_t steps() const {
        return steps_ + open_.steps() + inserter_.steps() + formatting_.steps() + selectedContent_.steps();
    }

private:
    enum class Mode : std::uint8_t {
        initial,
        beforeHtml,
        beforeHead,
        inHead,
        inHeadNoscript,
        afterHead,
        inBody,
        text,
        inTable,
        inTableText,
        inCaption,
        inColumnGroup,
        inTableBody,
        inRow,
        inCell,
        inTemplate,
        afterBody,
        inFrameset,
        afterFrameset,
        afterAfterBody,
        afterAfterFrameset,
    };
    /// What to process after a mode's rules: the next token, or the same token by the rules of the mode
    /// that is now current.
    enum class Next : std::uint8_t { token, reprocess };

    // TreeBuilder.cpp: dispatch and insertion.
    void readTokens();
    void beforeUncommonToken() {
        const bool isForeign = !open_.empty() && adjustedCurrent().space != Namespace::html;
        tokenizer_.allowCdata(isForeign);
        selectedContent_.noteClosedElements();
    }
    [[nodiscard]] bool usesForeignRules(const Token& token) const;
    Next dispatch(Token& token) {
        const bool isHtml =
            !sawUncommon_ || (!isFragment() && !open_.empty() && open_.current().space == Namespace::html);
        if (isHtml && mode_ == Mode::inBody) return inBody(token); // the most frequent case
        return usesForeignRules(token) ? inForeignContent(token) : dispatchByMode(token);
    }
    Next dispatchByMode(Token& token);
    void boundDepth();
    [[nodiscard]] bool isFragment() const { return context_.id != kNoNode; }
    [[nodiscard]] bool isSelectFragment() const {
        return isFragment() && context_.space == Namespace::html && context_.tag == Tag::select;
    }
    /// "The adjusted current node": the context element instead of a fragment's root.
    [[nodiscard]] const OpenElement& adjustedCurrent() const {
        return isFragment() && open_.size() == 1 ? context_ : open_.current();
    }
    void resetInsertionMode();
    OpenElement addElement(const Token& token, Namespace space);
    NodeId insertElement(const Token& token, Namespace space = Namespace::html);
    NodeId insertImplied(Tag tag);
    void insertVoid(const Token& token);
    void removeHead(std::size_t place);
    void openHtml(NodeId html);
    void insertCharacters(std::string_view text);
    void insertFosteredText(std::string_view text);
    void insertWithoutNul(std::string_view text);
    void parseRawText(const Token& token, Tokenizer::State state);
    void mergeAttributes(NodeId element, const Token& token);

    // TreeBuilderFormatting.cpp: reconstruction, 13.2.4.3, and the adoption agency, 13.2.6.4.7.
    /// "Reconstruct the active formatting elements". Usually there are none, or the last one is the current node.
    void reconstructFormatting() {
        if (!formatting_.empty() && formatting_.last().id != open_.current().id) openFormattingAgain();
    }
    void openFormattingAgain();
    void adoptionAgency(const Token& token);
    bool adoptOnce(Tag tag);
    void adopt(std::size_t formattingAt, std::size_t stackAt, std::size_t furthestAt);
    void takeOut(OpenElement& element);
    void anyOtherEndTag(const Token& token);

    // TreeBuilderModes.cpp: the modes before and after the body, and framesets.
    Next initial(Token& token);
    Next beforeHtml(Token& token);
    Next beforeHead(Token& token);
    Next inHead(Token& token);
    Next inHeadNoscript(Token& token);
    Next afterHead(Token& token);
    Next text(Token& token);
    Next inTemplate(Token& token);
    Next afterBody(Token& token);
    Next inFrameset(Token& token);
    Next afterFrameset(Token& token);
    Next afterAfterBody(Token& token);
    Next afterAfterFrameset(Token& token);
    void endTemplate();
    void insertWhiteSpaceOf(const Token& token);

    // TreeBuilderInTable.cpp: the modes in tables.
    Next inTable(Token& token);
    Next inTableAnythingElse(Token& token);
    Next inTableText(Token& token);
    Next inCaption(Token& token);
    Next inColumnGroup(Token& token);
    Next inTableBody(Token& token);
    Next inRow(Token& token);
    Next inCell(Token& token);
    void closeCell();
    bool closeTable();

    // TreeBuilderInBody.cpp: the mode "in body", 13.2.6.4.7.
    Next inBody(Token& token);
    Next inBodyStartTag(Token& token);
    Next inBodyOtherStartTag(Token& token);
    Next inBodyEndTag(Token& token);
    void inBodyCharacters(const Token& token);
    void startFrameset(const Token& token);
    void startListItem(const Token& token, const TagSet& closes);
    void startInput(const Token& token);
    void startSelectPart(const Token& token);
    void startSelectedContent(const Token& token);
    void startForm(const Token& token);
    void endForm();
    void endBlock(const TagSet& tags, Tag except, Scope scope);

    // TreeBuilderForeign.cpp: foreign content, 13.2.6.5.
    Next inForeignContent(Token& token);
    Next foreignStartTag(Token& token);
    Next foreignEndTag(Token& token);
    [[nodiscard]] static bool isMathTextIntegrationPoint(const OpenElement& element);
    [[nodiscard]] bool isHtmlIntegrationPoint(const OpenElement& element) const;

    Tree& tree_;
    Tokenizer tokenizer_;
    Mode mode_ = Mode::initial;
    Mode originalMode_ = Mode::initial;
    std::vector<Mode> templateModes_;
    OpenElements open_;
    NodeInserter inserter_;
    OpenElement context_; ///< the context element of a fragment
    ActiveFormattingElements formatting_;
    std::vector<std::string_view> tableText_;
    SelectedContent selectedContent_;
    NodeId html_ = kNoNode;
    OpenElement head_; ///< the entry of the head element when it was closed
    NodeId form_ = kNoNode;
    bool framesetOk_ = true;
    bool skipLineFeed_ = false;
    /// Whether there was an SVG or MathML element, such a context element, or a selectedcontent element. Each token
    /// needs more checks from then on.
    bool sawUncommon_ = false;
    bool finished_ = false;
    std::size_t startTags_ = 0;
    std::size_t reconstructions_ = 0;
    std::uint64_t steps_ = 0;
    int attributeMerges_ = 0;
};

/// The leading white space of `text`.
[[nodiscard]] std::string_view leadingWhiteSpace(std::string_view text);

} // namespace quillow::html
