#include "engines/pdf/syntax/FileScan.h"

#include "engines/pdf/syntax/IndirectObject.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

using Kind = CrossReference::Kind;

ScannedKind kindOf(const Dictionary& dictionary) {
    const std::string_view type = dictionary.find("Type").name();
    if (type == "Catalog") return ScannedKind::catalog;
    if (type == "Pages") return ScannedKind::pageTree;
    if (type == "Page") return ScannedKind::page;
    if (type == "ObjStm") return ScannedKind::objectStream;
    if (type == "XRef") return ScannedKind::crossReferenceStream;
    const bool hasKeys =
        !dictionary.find("O").isNull() && !dictionary.find("U").isNull() && !dictionary.find("V").isNull();
    return hasKeys && dictionary.find("Filter").type() == Object::Type::name ? ScannedKind::encryption
                                                                             : ScannedKind::other;
}

/// The objects are read one after another, each up to the header of the next, so that no byte is read twice.
class Scanner {
public:
    Scanner(std::string_view file, const Keywords& keywords, FileScan& scan)
        : file_(file)
        , keywords_(keywords)
        , scan_(scan)
        , parser_(scratch_)
        , trailerParser_(scan.arena) {}

    void run() {
        scan_.objects.reserve(keywords_.headers.size());
        for (std::size_t i = 0; i < keywords_.headers.size(); ++i) {
            if (keywords_.headers[i].begin < dataEnd_) continue; // it is in the data of a stream
            const std::size_t next = i + 1 < keywords_.headers.size() ? keywords_.headers[i + 1].begin : file_.size();
            readObject(keywords_.headers[i], next);
        }
        readTrailers();
        for (const ScannedObject& object : scan_.objects)
            setLatest(object);
    }

private:
    struct Trailer {
        std::uint32_t begin;
        Dictionary dictionary;
    };

    void readObject(const ObjectHeader& header, std::size_t next) {
        scratch_.clear();
        const ParsedObject parsed = parser_.parse(file_.data() + header.body, file_.data() + next);
        const Dictionary dictionary = parsed.object.dictionary();
        ScannedObject object{header, kindOf(dictionary), parsed.isWhole};
        const auto end = static_cast<std::size_t>(parsed.end - file_.data());
        if (const auto data = streamDataAt(file_.substr(0, next), end))
            object.isWhole = readStream(dictionary, *data, next);
        if (object.kind == ScannedKind::crossReferenceStream) keepTrailer(header.begin, header.body, next);
        scan_.objects.push_back(object);
    }

    /// Whether the stream is whole. If its length is right, what looks like an object in its data is passed over.
    bool readStream(const Dictionary& dictionary, std::size_t data, std::size_t next) {
        const std::int64_t length = dictionary.find("Length").integerOr(-1);
        const bool isRight = endsStream(file_, data, length);
        if (isRight) dataEnd_ = data + static_cast<std::size_t>(length);
        const auto end = std::lower_bound(keywords_.ends.begin(), keywords_.ends.end(), data);
        return isRight || (end != keywords_.ends.end() && *end < next);
    }

    void keepTrailer(std::size_t begin, std::size_t body, std::size_t end) {
        const ParsedObject parsed = trailerParser_.parse(file_.data() + body, file_.data() + end);
        if (parsed.object.type() == Object::Type::dictionary) {
            trailers_.push_back({static_cast<std::uint32_t>(begin), parsed.object.dictionary()});
        }
    }

    void readTrailers() {
        constexpr std::string_view kTrailer = "trailer";
        const std::vector<std::uint32_t> places = findAll(file_, kTrailer);
        for (std::size_t i = 0; i < places.size(); ++i)
            keepTrailer(places[i], places[i] + kTrailer.size(), i + 1 < places.size() ? places[i + 1] : file_.size());
        std::stable_sort(trailers_.begin(), trailers_.end(), [](auto& a, auto& b) { return a.begin > b.begin; });
        for (const Trailer& trailer : trailers_)
            scan_.trailers.push_back(trailer.dictionary);
    }

    void setLatest(const ScannedObject& object) {
        const std::uint32_t number = object.header.id.number;
        if (number == 0 || (!object.isWhole && scan_.latest.find(number).kind == Kind::inFile)) return;
        scan_.latest.set(number, {object.header.begin, object.header.id.generation, Kind::inFile});
    }

    std::string_view file_;
    const Keywords& keywords_;
    FileScan& scan_;
    Arena scratch_;
    ObjectParser parser_;
    ObjectParser trailerParser_;
    std::vector<Trailer> trailers_;
    std::size_t dataEnd_ = 0; ///< of the stream that was read last, if its length is right
};

} // namespace

std::unique_ptr<FileScan> scanFile(std::string_view file, const FileKeywords& keywords) {
    auto scan = std::make_unique<FileScan>();
    Scanner(file, keywords.get(), *scan).run();
    return scan;
}

} // namespace quillow::pdf
