// The tokenizer of the HTML Standard, section 13.2.5. Names, texts and values are slices of the tree's source
// unless they must differ from it.
#pragma once

#include "engines/html/tree/Tree.h"

namespace quillow::html {

enum class TokenType : std::uint8_t { doctype, startTag, endTag, comment, characters, endOfFile };

struct Token {
    TokenType type = TokenType::endOfFile;
    Tag tag = Tag::unknown;
    bool selfClosing = false;
    bool forceQuirks = false;  ///< doctypes only
    bool hasPublicId = false;  ///< doctypes only
    bool hasSystemId = false;  ///< doctypes only
    std::string_view name;     ///< name of a tag or doctype, in lower case
    bool holdsNul = true;      ///< characters only: false if `text` contains no U+0000
    std::string_view text;     ///< characters, never empty, or a comment (may contain U+0000)
    std::string_view publicId; ///< doctypes only, may contain U+0000
    std::string_view systemId; ///< doctypes only, may contain U+0000
    std::vector<Attribute> attributes;
};

class Tokenizer {
public:
    /// The states that tree construction switches to.
    enum class State { data, rcdata, rawtext, scriptData, plaintext };

    explicit Tokenizer(Tree& tree);

    /// Reads the next token into `token`.
    void next(Token& token);

    /// Switches the state for the content of the start tag that was read last.
    void switchTo(State state) { state_ = state; }
    /// Sets whether "<![CDATA[" opens a CDATA section: it does so only in foreign content.
    void allowCdata(bool allowed) { cdataAllowed_ = allowed; }

private:
    [[nodiscard]] char at(std::size_t position) const { return position < size_ ? data_[position] : '\0'; }
    [[nodiscard]] bool startsWith(std::size_t position, std::string_view lowerCase) const;
    [[nodiscard]] std::size_t find(char character, std::size_t from) const;
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from) const;

    /// What a run of characters contains that must be replaced.
    struct Found {
        bool reference = false;
        bool nul = false;
        void add(char c) {
            reference = reference || c == '&';
            nul = nul || c == '\0';
        }
    };

    bool data(Token& token);
    void characters(Token& token);
    [[nodiscard]] bool opensMarkup(std::size_t position) const;
    bool rawText(Token& token);
    bool markup(Token& token);
    bool tag(Token& token, TokenType type, std::size_t start);
    void attribute(Token& token);
    [[nodiscard]] ScannedName attributeNameFromEqualsSign() const;
    std::string_view attributeValue();
    template <char quote>
    std::string_view quotedValue();
    template <char quote>
    std::string_view quotedValue(std::size_t start, std::size_t end);
    std::string_view unquotedValue();
    std::string_view finishedValue(std::size_t start, std::size_t end, Found found) {
        const std::string_view value(data_ + start, end - start);
        return found.nul || found.reference ? replacedValue(value, found) : value;
    }
    std::string_view replacedValue(std::string_view value, Found found);
    void comment(Token& token);
    void bogusComment(Token& token);
    void emitComment(Token& token, std::size_t start, std::size_t end, std::size_t next);
    void doctype(Token& token);
    void skipWhiteSpace();
    bool doctypeIds(Token& token);
    bool quotedId(bool& has, std::string_view& id);
    bool cdataSection(Token& token);
    [[nodiscard]] std::size_t endTagPosition(std::size_t from) const;
    [[nodiscard]] std::size_t scriptEndPosition(std::size_t from) const;
    [[nodiscard]] bool isTagAt(std::size_t position, std::string_view name) const;
    void emitText(Token& token, std::size_t start, std::size_t end, Found found);
    std::string_view takeName(ScannedName& name);
    std::string_view rewrittenName(ScannedName& name, std::string_view written);

    Tree& tree_;
    std::string_view source_;
    const char* data_;
    std::size_t size_;
    std::size_t position_ = 0;
    State state_ = State::data;
    bool cdataAllowed_ = false;
    std::string_view lastStartTag_;
    std::string scratch_;
};

} // namespace quillow::html
