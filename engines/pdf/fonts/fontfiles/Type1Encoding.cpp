#include "engines/pdf/fonts/fontfiles/Type1Encoding.h"

#include "engines/pdf/fonts/fontfiles/NameIndex.h"
#include "engines/pdf/fonts/fontfiles/StandardNames.h"
#include "engines/pdf/fonts/fontfiles/Type1Scanner.h"

#include <cstddef>
#include <optional>

namespace quillow::pdf {
namespace {

/// Fonts have one, a few have two.
constexpr int kMostEncodings = 8;

/// The name of a token with a slash; empty for ".notdef" and what is no glyph's name.
std::string_view nameOf(std::string_view token) {
    return token.starts_with('/') ? soundGlyphName(token.substr(1)) : std::string_view();
}

/// Reads one entry.
class EncodingReader {
public:
    explicit EncodingReader(Type1Scanner& scanner)
        : scanner_(scanner) {
        const std::string_view first = scanner_.next();
        if (first == "StandardEncoding")
            readStandard();
        else if (first == "[")
            readArray();
        else
            readEntries();
    }

    [[nodiscard]] bool hasNames() const { return hasNames_; }
    [[nodiscard]] const Type1Encoding& encoding() const { return encoding_; }

private:
    void readStandard() {
        for (std::size_t code = 0; code < encoding_.size(); ++code)
            set(code, cffStandardString(stringIdOf(kCffStandardEncoding, code)));
    }

    void readArray() {
        std::size_t code = 0;
        for (std::string_view token = scanner_.next(); token.starts_with('/'); token = scanner_.next())
            set(code++, nameOf(token));
    }

    /// `dup 65 /A put` until "def". Anything else between, such as the loop that fills the array, is skipped.
    void readEntries() {
        for (std::string_view token = scanner_.next(); !token.empty() && token != "def"; token = scanner_.next()) {
            if (token != "dup") continue;
            const std::optional<int> code = type1Integer(scanner_.next());
            const std::string_view name = nameOf(scanner_.next());
            if (code && *code >= 0) set(static_cast<std::size_t>(*code), name);
        }
    }

    void set(std::size_t code, std::string_view name) {
        if (code >= encoding_.size() || name == ".notdef") return;
        encoding_[code] = name;
        hasNames_ = hasNames_ || !name.empty();
    }

    Type1Scanner& scanner_;
    Type1Encoding encoding_{};
    bool hasNames_ = false;
};

} // namespace

std::optional<Type1Encoding> readType1Encoding(std::string_view text) {
    std::optional<Type1Encoding> last;
    Type1Scanner scanner(text);
    for (int i = 0; i < kMostEncodings && scanner.skipBehind("/Encoding"); ++i)
        if (const EncodingReader reader(scanner); reader.hasNames()) last = reader.encoding();
    return last;
}

} // namespace quillow::pdf
