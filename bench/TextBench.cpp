// The throughput of the decoders, the UTF-8 check, the byte scans, the text sink and the encoding detector.
#include "text/ByteScan.h"
#include "text/Encoding.h"
#include "text/EncodingDetector.h"
#include "text/TextSink.h"
#include "text/Utf8.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace quillow::text;

constexpr std::size_t kLength = 1 << 20;

std::string repeated(std::string_view piece) {
    std::string bytes;
    while (bytes.size() < kLength)
        bytes += piece;
    return bytes;
}

// A few words in each encoding.
constexpr std::string_view kAscii = "The library in the village opens every morning at nine o'clock.\n";
constexpr std::string_view kMarkup = "<p>The library in the village opens every morning at nine.<br>\n";
constexpr std::string_view kRussianUtf8 = "Библиотека в деревне открывается каждое утро в девять часов.\n";
constexpr std::string_view kJapaneseUtf8 = "村の図書館は毎朝九時に開きます。\n";
constexpr std::string_view kRussian1251 =
    "\xC1\xE8\xE1\xEB\xE8\xEE\xF2\xE5\xEA\xE0 \xE2 \xE4\xE5\xF0\xE5\xE2\xED\xE5 \xEA\xE0\xE6\xE4\xEE\xE5.\n";
constexpr std::string_view kFrench1252 = "La biblioth\xE8que du village ouvre chaque matin \xE0 neuf heures.\n";
constexpr std::string_view kJapaneseShiftJis = "\x91\xBA\x82\xCC\x90\x7D\x8F\x91\x8A\xD9\x82\xCD\x96\x88\x92\xA9.\n";
constexpr std::string_view kChineseGbk = "\xB4\xE5\xC0\xEF\xB5\xC4\xCD\xBC\xCA\xE9\xB9\xDD\xC3\xBF\xCC\xEC.\n";

void count(benchmark::State& state, const std::string& bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes.size()));
}

void decodes(benchmark::State& state, std::string_view piece, Encoding encoding) {
    const std::string bytes = repeated(piece);
    for (auto _ : state)
        benchmark::DoNotOptimize(decode(bytes, encoding));
    count(state, bytes);
}

void validates(benchmark::State& state, std::string_view piece) {
    const std::string bytes = repeated(piece);
    for (auto _ : state)
        benchmark::DoNotOptimize(isValidUtf8(bytes));
    count(state, bytes);
}

/// Scans a whole text in pieces, as the HTML tokenizer and white-space processing do.
template <typename Scan>
void scans(benchmark::State& state, std::string_view piece, Scan scan) {
    const std::string bytes = repeated(piece);
    for (auto _ : state)
        for (std::size_t at = 0; at < bytes.size(); ++at)
            benchmark::DoNotOptimize(at = scan(bytes, at));
    count(state, bytes);
}

void appends(benchmark::State& state, std::string_view piece) {
    const std::string bytes = repeated(piece);
    for (auto _ : state) {
        TextSink sink;
        sink.reserve(bytes.size());
        sink.appendUtf8(bytes);
        benchmark::DoNotOptimize(sink.size());
    }
    count(state, bytes);
}

void appendsCodePoints(benchmark::State& state, char32_t codePoint) {
    const std::string bytes = repeated("x");
    for (auto _ : state) {
        TextSink sink;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            sink.append(codePoint);
        benchmark::DoNotOptimize(sink.size());
    }
    count(state, bytes);
}

void detects(benchmark::State& state, std::string_view piece) {
    const std::string bytes = repeated(piece);
    for (auto _ : state)
        benchmark::DoNotOptimize(detectEncoding(bytes));
    count(state, bytes);
}

void detectsShort(benchmark::State& state, std::string_view bytes) {
    for (auto _ : state)
        benchmark::DoNotOptimize(detectEncoding(bytes));
}

BENCHMARK_CAPTURE(validates, ascii, kAscii);
BENCHMARK_CAPTURE(validates, russian, kRussianUtf8);
BENCHMARK_CAPTURE(validates, japanese, kJapaneseUtf8);
BENCHMARK_CAPTURE(scans, upToMarkup, kMarkup, findFirstOf<'<', '&', '\0'>);
BENCHMARK_CAPTURE(scans, upToMarkupPortable, kMarkup, findFirstOfPortable<'<', '&', '\0'>);
BENCHMARK_CAPTURE(scans, upToBlanks, kAscii, findBlankRun);
BENCHMARK_CAPTURE(scans, upToBlanksPortable, kAscii, findBlankRunPortable);
BENCHMARK_CAPTURE(appends, ascii, kAscii);
BENCHMARK_CAPTURE(appends, russian, kRussianUtf8);
BENCHMARK_CAPTURE(appendsCodePoints, ascii, U'a');
BENCHMARK_CAPTURE(appendsCodePoints, russian, U'ж');
BENCHMARK_CAPTURE(decodes, utf8Ascii, kAscii, Encoding::utf8);
BENCHMARK_CAPTURE(decodes, utf8Russian, kRussianUtf8, Encoding::utf8);
BENCHMARK_CAPTURE(decodes, windows1252, kFrench1252, Encoding::windows1252);
BENCHMARK_CAPTURE(decodes, windows1251, kRussian1251, Encoding::windows1251);
BENCHMARK_CAPTURE(decodes, shiftJis, kJapaneseShiftJis, Encoding::shiftJis);
BENCHMARK_CAPTURE(decodes, gbk, kChineseGbk, Encoding::gbk);
BENCHMARK_CAPTURE(detects, utf8, kRussianUtf8);
BENCHMARK_CAPTURE(detects, windows1251, kRussian1251);
BENCHMARK_CAPTURE(detects, windows1252, kFrench1252);
BENCHMARK_CAPTURE(detects, shiftJis, kJapaneseShiftJis);
BENCHMARK_CAPTURE(detectsShort, windows1252, kFrench1252);
BENCHMARK_CAPTURE(detectsShort, windows1251, kRussian1251);

} // namespace

BENCHMARK_MAIN();
