#include "tests/engines/pdf/PdfBuilder.h"

#include <algorithm>
#include <cstdio>

namespace quillow::pdf::test {
namespace {

std::string padded(std::size_t value, int digits) {
    std::string text(24, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%0*zu", digits, value)));
    return text;
}

void appendNumber(std::string& out, std::size_t value, std::size_t bytes) {
    while (bytes-- > 0)
        out.push_back(static_cast<char>(value >> (8 * bytes)));
}

} // namespace

PdfBuilder::PdfBuilder(std::string_view header)
    : bytes_(header) {}

PdfBuilder& PdfBuilder::object(std::uint32_t number, std::string_view body) {
    entries_[number] = {1, bytes_.size(), 0};
    offsets_[number] = bytes_.size();
    size_ = std::max(size_, number + 1);
    return raw(std::to_string(number) + " 0 obj\n").raw(body).raw("\nendobj\n");
}

PdfBuilder& PdfBuilder::stream(std::uint32_t number, std::string_view entries, std::string_view data) {
    return object(number, "<<" + std::string(entries) + "/Length " + std::to_string(data.size()) + ">>\nstream\n" +
                              std::string(data) + "\nendstream");
}

PdfBuilder& PdfBuilder::objectStream(std::uint32_t number,
                                     const std::vector<std::pair<std::uint32_t, std::string_view>>& objects) {
    std::string index;
    std::string bodies;
    std::size_t place = 0;
    for (const auto& [contained, body] : objects) {
        index += std::to_string(contained) + " " + std::to_string(bodies.size()) + " ";
        bodies.append(body).append(" ");
        entries_[contained] = {2, number, place++};
        size_ = std::max(size_, contained + 1);
    }
    return stream(number, "/Type/ObjStm/N " + std::to_string(objects.size()) + "/First " + std::to_string(index.size()),
                  index + bodies);
}

PdfBuilder& PdfBuilder::raw(std::string_view bytes) {
    bytes_.append(bytes);
    return *this;
}

PdfBuilder& PdfBuilder::free(std::uint32_t number) {
    entries_[number] = {0, 0, 0};
    return *this;
}

PdfBuilder& PdfBuilder::table(std::string_view entries) {
    const std::size_t section = bytes_.size();
    raw("xref\n");
    if (lastSection_ == 0) raw("0 1\n0000000000 65535 f \n");
    for (const auto& [number, entry] : entries_)
        raw(std::to_string(number) + " 1\n" + padded(entry.place, 10) +
            (entry.type == 1 ? " 00000 n \n" : " 00001 f \n"));
    raw("trailer\n<<" + trailerEntries(entries) + ">>\n");
    finish(section);
    return *this;
}

PdfBuilder& PdfBuilder::xrefStream(std::uint32_t number, std::string_view entries) {
    finish(bareXrefStream(number, entries));
    return *this;
}

std::size_t PdfBuilder::bareXrefStream(std::uint32_t number, std::string_view entries) {
    const std::size_t section = bytes_.size();
    entries_[number] = {1, section, 0};
    size_ = std::max(size_, number + 1);
    std::string index;
    std::string data;
    for (const auto& [contained, entry] : entries_) {
        index += std::to_string(contained) + " 1 ";
        appendNumber(data, static_cast<std::size_t>(entry.type), 1);
        appendNumber(data, entry.place, 4);
        appendNumber(data, entry.index, 2);
    }
    stream(number, "/Type/XRef/W[1 4 2]/Index[" + index + "]" + trailerEntries(entries), data);
    return section;
}

std::size_t PdfBuilder::offsetOf(std::uint32_t number) const {
    return offsets_.at(number);
}

std::string PdfBuilder::trailerEntries(std::string_view entries) const {
    std::string all(entries);
    all += "/Size " + std::to_string(size_);
    if (lastSection_ != 0) all += "/Prev " + std::to_string(lastSection_);
    return all;
}

void PdfBuilder::finish(std::size_t section) {
    raw("startxref\n" + std::to_string(section) + "\n%%EOF\n");
    lastSection_ = section;
    entries_.clear();
}

std::string onePagePdf(std::string_view content, std::string_view resources, const std::vector<std::string>& more) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources " +
                       std::string(resources) + ">>")
        .stream(4, "", content);
    std::uint32_t number = 5;
    for (const std::string& body : more)
        pdf.object(number++, body);
    return pdf.table().bytes();
}

} // namespace quillow::pdf::test
