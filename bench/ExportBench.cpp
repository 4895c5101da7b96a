// Time and memory of an export of ten thousand to a million records with ten fields each. The memory is the peak of the
// process, records included. To get the peak of one size, run only that size: --benchmark_filter='exports/1000000/'.
#include "util/exporter/ExportText.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdint>

namespace {

using namespace quillow;

constexpr int kFields = 10;

QString keyOf(int field) {
    return QStringLiteral("field") + QString::number(field);
}

Boxed::Array fields() {
    Boxed::Array descriptions;
    for (int i = 0; i < kFields; ++i)
        descriptions.append(
            Boxed::Dictionary{{QString::fromUtf16(kPublicKey), QStringLiteral("Field ") + QString::number(i)},
                              {QString::fromUtf16(kInnerKey), keyOf(i)}});
    return descriptions;
}

/// Numbers, names with an accent, plain values, and sometimes a line feed for the exporter to clean.
Boxed valueOf(qsizetype record, int field) {
    const QString number = QString::number(record);
    switch (field) {
    case 0: return static_cast<std::int64_t>(record);
    case 1: return QStringLiteral("Zo\u00eb ") + number;
    case 2: return record % 50 == 0 ? QStringLiteral("first line \n second ") + number : number;
    case 3: return static_cast<double>(record) / 4;
    default: return QStringLiteral("value of field ") + number;
    }
}

Boxed::Array records(qsizetype count) {
    Boxed::Array result;
    result.reserve(count);
    for (qsizetype record = 0; record < count; ++record) {
        Boxed::Dictionary entries;
        for (int field = 0; field < kFields; ++field)
            entries.insert(keyOf(field), valueOf(record, field));
        result.append(entries);
    }
    return result;
}

double peakMegabytes() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void exports(benchmark::State& state) {
    const Boxed::Array table = records(state.range(0));
    const Boxed::Array described = fields();
    const ExportLayout layout = layoutOfFormat(static_cast<int>(state.range(1)));
    const double before = peakMegabytes();
    qsizetype size = 0;
    for (auto _ : state) {
        const QByteArray file = exportText(table, described, layout, HeaderRow::yes);
        size = file.size();
        benchmark::DoNotOptimize(file.constData());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * size);
    state.counters["file_MB"] = static_cast<double>(size) / (1024 * 1024);
    state.counters["records_peak_MB"] = before;
    state.counters["peak_MB"] = peakMegabytes();
    state.SetComplexityN(state.range(0));
}

BENCHMARK(exports)
    ->ArgNames({"records", "format"})
    ->ArgsProduct({{10'000, 100'000, 1'000'000}, {1}})
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(exports)->ArgNames({"records", "format"})->ArgsProduct({{100'000}, {2, 4}})->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
