// Parses style sheets into rules: CSS Syntax Level 3, section 5; CSS Nesting; conditional at-rules.
#include "engines/html/css/CssStyleSheets.h"

#include "engines/html/css/CssStructure.h"
#include "text/Ascii.h"

namespace quillow::html {

namespace {

/// CSS Syntax, 5.5.9 "Consume a simple block": only its own closing character ends a block. `closers` has the
/// closing characters of the open blocks.
void followNesting(char c, std::string& closers) {
    if (c == '(') {
        closers.push_back(')');
    } else if (c == '[') {
        closers.push_back(']');
    } else if (c == '{') {
        closers.push_back('}');
    } else if (!closers.empty() && c == closers.back()) {
        closers.pop_back();
    }
}

} // namespace

/// Parses one sheet. Open blocks are kept on a stack of our own, so that hostile nesting uses no call stack.
class CssParser {
public:
    CssParser(CssStyleSheets& sheets, std::string_view css)
        : sheets_(sheets)
        , css_(css)
        , structure_(css, sheets.pool_.strings) {}

    void parse();

private:
    /// An open block. It contains rules and, inside a style rule, declarations too. Selectors are parsed only when
    /// a declaration of interest or a nested rule needs them.
    struct Block {
        bool insideStyleRule = false;
        bool layered = false;
        bool invalid = false;
        std::string_view prelude;               ///< the selectors of a style rule, unparsed
        std::optional<std::uint32_t> outer;     ///< index of the selectors that "&" refers to
        std::optional<std::uint32_t> selectors; ///< index of the selectors of the innermost style rule
        std::vector<CssDeclaration> declarations;
    };

    bool resolveSelectors(Block& block);

    void openBlock(std::string_view prelude);
    void openAtRule(std::string_view prelude);
    void openStyleRule(std::string_view prelude);
    void closeBlock();
    void addRule(Block& block);
    void takeDeclaration(std::string_view text);
    void skipBlock();
    [[nodiscard]] bool isAtRule(std::size_t start) const;

    CssStyleSheets& sheets_;
    std::string_view css_;
    CssStructure structure_;
    std::vector<Block> open_;
};

void CssParser::parse() {
    open_.emplace_back();
    std::size_t first = structure_.skipBlank(); // the start of the current rule or declaration
    std::string closers;                        // the closing characters of the brackets that are open in it
    for (;;) {
        const char c = structure_.next();
        const auto pending = [&] { return text::trimBlanks(css_.substr(first, structure_.position() - first)); };
        if (c == '\0') {
            takeDeclaration(pending());
            while (!open_.empty())
                closeBlock();
            return;
        }
        if (!closers.empty() || c == '(' || c == '[') {
            followNesting(c, closers);
            continue;
        }
        switch (c) {
        case '{':
            openBlock(pending());
            first = structure_.skipBlank();
            break;
        case '}':
            if (open_.size() == 1) break; // a stray brace belongs to the selector after it and makes that invalid
            takeDeclaration(pending());
            closeBlock();
            first = structure_.skipBlank();
            break;
        case ';':
            // Outside of a style rule only an at-rule ends here. A selector that contains a semicolon is broken.
            if (!open_.back().insideStyleRule && first != structure_.position() && !isAtRule(first)) break;
            takeDeclaration(pending());
            first = structure_.skipBlank();
            break;
        default: break;
        }
    }
}

bool CssParser::isAtRule(std::size_t start) const {
    return css_[start] == '@' &&
           CssTokenizer(css_, sheets_.pool_.strings, start).next().type == CssTokenType::atKeyword;
}

void CssParser::takeDeclaration(std::string_view text) {
    if (!open_.back().insideStyleRule || !mayBeRelevant(text)) return;
    if (const auto declaration = parseDeclaration(text, sheets_.pool_.strings))
        open_.back().declarations.push_back(*declaration);
}

void CssParser::skipBlock() {
    std::string closers = "}";
    while (!closers.empty()) {
        const char c = structure_.next();
        if (c == '\0') return;
        followNesting(c, closers);
    }
}

void CssParser::openBlock(std::string_view prelude) {
    addRule(open_.back());
    if (open_.size() > static_cast<std::size_t>(kMaxRuleNesting)) {
        skipBlock();
    } else if (prelude.starts_with("@")) {
        openAtRule(prelude.substr(1));
    } else {
        openStyleRule(prelude);
    }
}

void CssParser::openAtRule(std::string_view prelude) {
    std::size_t end = 0;
    while (end < prelude.size() && (text::isLetter(prelude[end]) || prelude[end] == '-'))
        ++end;
    const std::string_view name = prelude.substr(0, end);
    const std::string_view condition = text::trimBlanks(prelude.substr(end));
    bool applies = false;
    if (text::equalsIgnoringCase(name, "media")) {
        applies = mediaMatches(condition);
    } else if (text::equalsIgnoringCase(name, "supports")) {
        applies = supportsHolds(condition);
    } else if (text::equalsIgnoringCase(name, "layer")) {
        applies = true;
    }
    if (!applies || (open_.back().insideStyleRule && !resolveSelectors(open_.back()))) {
        skipBlock();
        return;
    }
    Block block;
    block.insideStyleRule = open_.back().insideStyleRule;
    block.selectors = open_.back().selectors;
    block.layered = open_.back().layered || text::equalsIgnoringCase(name, "layer");
    open_.push_back(std::move(block));
}

void CssParser::openStyleRule(std::string_view prelude) {
    if (open_.back().insideStyleRule && !resolveSelectors(open_.back())) {
        skipBlock();
        return;
    }
    Block block;
    block.insideStyleRule = true;
    block.layered = open_.back().layered;
    block.prelude = prelude;
    block.outer = open_.back().selectors;
    open_.push_back(std::move(block));
}

bool CssParser::resolveSelectors(Block& block) {
    if (block.selectors) return true;
    if (block.invalid) return false;
    const auto list = parseSelectors(block.prelude, sheets_.pool_, block.outer);
    block.invalid = !list;
    if (!list) return false;
    block.selectors = static_cast<std::uint32_t>(sheets_.pool_.lists.size());
    sheets_.pool_.lists.push_back(*list);
    return true;
}

void CssParser::closeBlock() {
    addRule(open_.back());
    open_.pop_back();
}

/// Makes a rule from the declarations so far. Declarations after a nested rule also come after it in the cascade
/// (CSS Nesting, section 4).
void CssParser::addRule(Block& block) {
    if (!block.declarations.empty() && sheets_.rules_.size() < kMaxRules && resolveSelectors(block))
        sheets_.rules_.push_back({*block.selectors, block.layered, std::move(block.declarations)});
    block.declarations.clear();
}

void CssStyleSheets::add(std::string_view css, std::string_view media) {
    if (!mediaMatches(media)) return;
    CssParser(*this, css).parse();
}

} // namespace quillow::html
