// Builds small PDF files whose cross-references are right.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillow::pdf::test {

/// Objects are appended in the order of the calls. A table or a cross-reference stream covers the objects since the one
/// before it and refers to that with /Prev: so a second one makes an incremental update.
class PdfBuilder {
public:
    /// Begins with the header.
    explicit PdfBuilder(std::string_view header = "%PDF-1.7\n");

    /// "N 0 obj", the body, "endobj".
    PdfBuilder& object(std::uint32_t number, std::string_view body);
    /// A stream. `entries` are those of its dictionary without /Length: "/Filter/FlateDecode".
    PdfBuilder& stream(std::uint32_t number, std::string_view entries, std::string_view data);
    /// An object stream that contains objects, each with its number. Only a cross-reference stream can refer to them.
    PdfBuilder& objectStream(std::uint32_t number,
                             const std::vector<std::pair<std::uint32_t, std::string_view>>& objects);
    /// Bytes that belong to no object.
    PdfBuilder& raw(std::string_view bytes);
    /// The next section calls the number free.
    PdfBuilder& free(std::uint32_t number);

    /// A cross-reference table, the trailer and startxref. `entries` are those of the trailer: "/Root 1 0 R".
    PdfBuilder& table(std::string_view entries = "/Root 1 0 R");
    /// A cross-reference stream with that number.
    PdfBuilder& xrefStream(std::uint32_t number, std::string_view entries = "/Root 1 0 R");
    /// The same without startxref, for /XRefStm and damaged files. Returns its offset.
    std::size_t bareXrefStream(std::uint32_t number, std::string_view entries);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] std::size_t offsetOf(std::uint32_t number) const;

private:
    struct Entry {
        char type = 1; ///< 0 free, 1 at an offset, 2 in an object stream
        std::size_t place = 0;
        std::size_t index = 0;
    };

    [[nodiscard]] std::string trailerEntries(std::string_view entries) const;
    void finish(std::size_t section);

    std::string bytes_;
    std::map<std::uint32_t, Entry> entries_;       ///< since the last section
    std::map<std::uint32_t, std::size_t> offsets_; ///< of all objects
    std::uint32_t size_ = 1;                       ///< one more than the highest number
    std::size_t lastSection_ = 0;                  ///< 0: there is none yet
};

/// A document of one page. Objects 1 to 4 are the catalog, the page tree, the page and its content stream; `resources`
/// is a dictionary, and `more` are further objects, the first with the number 5.
[[nodiscard]] std::string onePagePdf(std::string_view content, std::string_view resources = "<<>>",
                                     const std::vector<std::string>& more = {});

} // namespace quillow::pdf::test
