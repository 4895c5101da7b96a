// Cross-reference streams (ISO 32000-2, 7.5.8).
#include "engines/pdf/syntax/CrossReferenceReader.h"
#include "engines/pdf/syntax/StreamDecoder.h"
#include "text/Bytes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace quillow::pdf {
namespace {

using Kind = CrossReference::Kind;

constexpr std::uint64_t kMostBytes = 8; ///< of a field

/// Outside the cross-references nothing can be looked up.
class DirectLengths final : public StreamLengths {
public:
    explicit DirectLengths(const FileKeywords& keywords)
        : keywords_(&keywords) {}
    [[nodiscard]] std::int64_t lengthOf(Reference /*reference*/) override { return -1; }
    [[nodiscard]] const Keywords& keywords() override { return keywords_->get(); }

private:
    const FileKeywords* keywords_;
};

/// The widths of the three fields of an entry (7.5.8.2, /W).
struct Fields {
    std::array<std::size_t, 3> widths{};
    bool isSound = false;

    explicit Fields(std::span<const Object> w) {
        if (w.size() < widths.size()) return;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const auto width = static_cast<std::uint64_t>(w[i].integerOr(-1));
            if (width > kMostBytes) return;
            widths[i] = width;
        }
        isSound = size() > 0;
    }
    [[nodiscard]] std::size_t size() const { return widths[0] + widths[1] + widths[2]; }
};

struct Subsection {
    std::uint64_t first = 0;
    std::uint64_t count = 0;
};

std::vector<Subsection> subsectionsOf(const Dictionary& dictionary) {
    const auto valueOf = [](const Object& object) {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(0, object.integerOr(0)));
    };
    const Object index = dictionary.find("Index");
    if (index.type() != Object::Type::array) return {{0, valueOf(dictionary.find("Size"))}};
    std::vector<Subsection> subsections;
    const std::span<const Object> items = index.array();
    for (std::size_t i = 0; i + 1 < items.size(); i += 2)
        subsections.push_back({valueOf(items[i]), valueOf(items[i + 1])});
    return subsections;
}

CrossReference entryOf(std::uint64_t type, std::uint64_t second, std::uint64_t third, std::size_t base,
                       std::size_t fileSize) {
    const auto last = static_cast<std::uint16_t>(std::min<std::uint64_t>(third, 0xFFFF));
    // Without a stream of such a number; its low bits may be those of another one.
    if (type == 2 && second > std::numeric_limits<std::uint32_t>::max()) return {0, 0, Kind::free};
    if (type == 2) return {static_cast<std::uint32_t>(second), last, Kind::inObjectStream};
    if (type != 1 || second == 0 || second >= fileSize - base) return {0, 0, Kind::free};
    return {static_cast<std::uint32_t>(second + base), last, Kind::inFile};
}

} // namespace

bool CrossReferenceReader::readStream(const ObjectHeader& header, Dictionary& dictionary) {
    DirectLengths lengths(*keywords_);
    const IndirectObject object = readIndirectObject(file_, header, parser_, *arena_, lengths, nullptr);
    parsed_ += object.parsed;
    const StreamContent* const stream = object.object.stream();
    if (stream == nullptr) return false;
    dictionary = stream->dictionary;
    text::ByteBuffer buffer;
    NoReferences references;
    const StreamBytes decoded = decoder_.decode(*stream, references, nullptr, buffer);
    return decoded.complete && addStreamEntries(dictionary, decoded.bytes);
}

bool CrossReferenceReader::addStreamEntries(const Dictionary& dictionary, std::string_view bytes) {
    const Fields fields(dictionary.find("W").array());
    if (!fields.isSound) return false;
    text::ByteCursor cursor(bytes);
    for (const Subsection& subsection : subsectionsOf(dictionary)) {
        for (std::uint64_t i = 0; i < subsection.count && cursor.remaining() >= fields.size(); ++i) {
            if (entriesLeft_ == 0) return true;
            --entriesLeft_;
            const std::uint64_t type = fields.widths[0] == 0 ? 1 : cursor.number(fields.widths[0]);
            const std::uint64_t second = cursor.number(fields.widths[1]);
            const std::uint64_t third = cursor.number(fields.widths[2]);
            found_.add(subsection.first + i, entryOf(type, second, third, base_, file_.size()));
        }
    }
    return true;
}

} // namespace quillow::pdf
