// The throughput of every engine: on each document of samples/, and on generated documents that repeat one
// construct until fixed costs no longer matter.
#include "engines/Extract.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using quillow::DocumentKind;

std::string repeated(std::string_view unit, std::size_t bytes) {
    std::string out;
    out.reserve(bytes + unit.size());
    while (out.size() < bytes)
        out += unit;
    return out;
}

void readDocument(benchmark::State& state, DocumentKind kind, const std::string& bytes) {
    std::size_t written = 0;
    for (auto _ : state) {
        const quillow::Extraction done = quillow::extract(std::as_bytes(std::span(bytes)), kind);
        written = done.text ? done.text->size() : 0;
        benchmark::DoNotOptimize(written);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes.size()));
    state.counters["textBytes"] = static_cast<double>(written);
}

void add(const std::string& name, DocumentKind kind, std::string bytes) {
    benchmark::RegisterBenchmark(
        name.c_str(), [kind, bytes = std::move(bytes)](benchmark::State& state) { readDocument(state, kind, bytes); });
}

void addMadeDocuments() {
    constexpr std::size_t kSize = 8 << 20;
    const auto rtf = [](std::string_view unit) { return "{\\rtf1\\ansi\\ansicpg1252 " + repeated(unit, kSize) + "}"; };
    add("rtf/text", DocumentKind::rtf,
        rtf("The quick brown fox jumps over the lazy dog, again and again and again.\\par\r\n"));
    add("rtf/runs", DocumentKind::rtf,
        rtf("{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\insrsid1234567 Some words }{\\b\\i more \\b0 words}\\par\r\n"));
    add("rtf/cells", DocumentKind::rtf, rtf("\\trowd\\cellx100\\cellx200\\pard\\intbl one\\cell two\\cell\\row\r\n"));
    add("rtf/hexBytes", DocumentKind::rtf, rtf("\\'e9\\'e8\\'e0\\'fc\\'f6\\'e4"));
    add("rtf/unicode", DocumentKind::rtf, rtf("\\u1055?\\u1088?\\u1080?\\u1074?"));
    add("html/paragraphs", DocumentKind::html,
        repeated("<p class=\"a\">Some <b>bold</b> words &amp; more of them.</p>\n", kSize));
    add("html/tables", DocumentKind::html,
        "<table>" + repeated("<tr><td>one</td><td>two</td></tr>\n", kSize) + "</table>");
}

void addSamples() {
    for (const auto& entry : std::filesystem::directory_iterator(QUILLOW_SOURCE_DIR "/samples")) {
        const std::string extension = entry.path().extension().string();
        if (!entry.is_regular_file() || extension.empty()) continue;
        const auto kind = quillow::documentKindForExtension(std::string_view(extension).substr(1));
        if (!kind) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        add("samples/" + entry.path().filename().string(), *kind,
            std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()));
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    addMadeDocuments();
    addSamples();
    benchmark::RunSpecifiedBenchmarks();
}
