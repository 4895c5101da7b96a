// CSS Syntax Level 3, section 5: rules and declarations; CSS Nesting; conditional at-rules.
#include "engines/html/CssStyleSheets.h"

#include "engines/html/Ascii.h"

namespace quillow::html {

/// Walks one sheet. Blocks nest by a stack of our own, so that hostile nesting costs no call depth.
class CssParser {
public:
    CssParser(CssStyleSheets& sheets, std::string_view css)
        : sheets_(sheets)
        , css_(css)
        , tokens_(css, sheets.pool_.strings) {}

    void parse();

private:
    /// An open block: its contents are rules, and inside a style rule declarations too. Selectors are parsed only when a
    /// declaration of interest or a nested rule asks for them.
    struct Block {
        bool insideStyleRule = false;
        bool layered = false;
        bool invalid = false;
        std::string_view prelude;               ///< of a style rule
        std::optional<std::uint32_t> outer;     ///< the selectors that "&" stands for
        std::optional<std::uint32_t> selectors; ///< of the innermost style rule around
        std::vector<CssDeclaration> declarations;
    };

    bool resolveSelectors(Block& block);

    void openBlock(std::string_view prelude);
    void openAtRule(std::string_view prelude);
    void openStyleRule(std::string_view prelude);
    void closeBlock();
    void takeDeclaration(std::string_view text);
    void skipBlock();

    CssStyleSheets& sheets_;
    std::string_view css_;
    CssTokenizer tokens_;
    std::vector<Block> open_;
};

void CssParser::parse() {
    open_.emplace_back();
    std::size_t start = tokens_.position();
    std::size_t depth = 0; // of parentheses and brackets
    for (;;) {
        const CssToken token = tokens_.next();
        const auto pending = [&] { return trimWhiteSpace(css_.substr(start, token.start - start)); };
        switch (token.type) {
        case CssTokenType::end:
            takeDeclaration(pending());
            while (!open_.empty())
                closeBlock();
            return;
        case CssTokenType::openCurly:
            openBlock(pending());
            start = tokens_.position();
            depth = 0;
            break;
        case CssTokenType::closeCurly:
            takeDeclaration(pending());
            if (open_.size() > 1) closeBlock();
            start = tokens_.position();
            depth = 0;
            break;
        case CssTokenType::semicolon:
            if (depth > 0) break;
            takeDeclaration(pending());
            start = tokens_.position();
            break;
        case CssTokenType::function:
        case CssTokenType::openParenthesis:
        case CssTokenType::openSquare: ++depth; break;
        case CssTokenType::closeParenthesis:
        case CssTokenType::closeSquare: depth -= depth > 0 ? 1 : 0; break;
        default: break;
        }
    }
}

void CssParser::takeDeclaration(std::string_view text) {
    if (!open_.back().insideStyleRule || text.empty() || text.front() == '@') return;
    if (const auto declaration = parseDeclaration(text, sheets_.pool_.strings))
        open_.back().declarations.push_back(*declaration);
}

void CssParser::skipBlock() {
    std::size_t depth = 1;
    while (depth > 0) {
        const CssToken token = tokens_.next();
        if (token.type == CssTokenType::end) return;
        if (token.type == CssTokenType::openCurly) ++depth;
        if (token.type == CssTokenType::closeCurly) --depth;
    }
}

void CssParser::openBlock(std::string_view prelude) {
    // Comments and the marks of old HTML comments may stand before a rule.
    for (bool again = true; again;) {
        again = false;
        prelude = trimWhiteSpace(prelude);
        if (prelude.starts_with("/*")) {
            const std::size_t end = prelude.find("*/", 2);
            prelude.remove_prefix(end == std::string_view::npos ? prelude.size() : end + 2);
            again = true;
        } else if (prelude.starts_with("<!--") || prelude.starts_with("-->")) {
            prelude.remove_prefix(prelude.front() == '<' ? 4 : 3);
            again = true;
        }
    }
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
    while (end < prelude.size() && (isAlpha(prelude[end]) || prelude[end] == '-'))
        ++end;
    const std::string_view name = prelude.substr(0, end);
    const std::string_view condition = trimWhiteSpace(prelude.substr(end));
    bool applies = false;
    if (equalsIgnoringCase(name, "media")) {
        applies = mediaMatches(condition);
    } else if (equalsIgnoringCase(name, "supports")) {
        // Every modern feature is supported; what asks for its absence is not.
        applies = !(condition.size() >= 3 && equalsIgnoringCase(condition.substr(0, 3), "not"));
    } else if (equalsIgnoringCase(name, "layer")) {
        applies = true;
    }
    if (!applies || (open_.back().insideStyleRule && !resolveSelectors(open_.back()))) {
        skipBlock();
        return;
    }
    Block block;
    block.insideStyleRule = open_.back().insideStyleRule;
    block.selectors = open_.back().selectors;
    block.layered = open_.back().layered || equalsIgnoringCase(name, "layer");
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
    auto list = parseSelectors(block.prelude, sheets_.pool_, block.outer);
    block.invalid = !list;
    if (!list) return false;
    block.selectors = static_cast<std::uint32_t>(sheets_.pool_.lists.size());
    sheets_.pool_.lists.push_back(std::move(*list));
    return true;
}

void CssParser::closeBlock() {
    Block& block = open_.back();
    if (!block.declarations.empty() && sheets_.rules_.size() < kMaxRules && resolveSelectors(block))
        sheets_.rules_.push_back({*block.selectors, block.layered, std::move(block.declarations)});
    open_.pop_back();
}

void CssStyleSheets::add(std::string_view css, std::string_view media) {
    if (!mentionsRelevantProperty(css) || !mediaMatches(media)) return;
    CssParser(*this, css).parse();
}

} // namespace quillow::html
