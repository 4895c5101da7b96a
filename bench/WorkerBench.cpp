// What isolation costs: a small document read in a worker against the same document read in this process, and the start
// of a worker. Both are measured in turns within one run, so the load of the machine hits both alike.
#include "engines/Extract.h"
#include "worker/Pool.h"
#include "worker/Program.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace quillow;

constexpr int kRounds = 2000;
constexpr int kStarts = 200;

double microseconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

void require(const Extraction& extraction) {
    if (extraction.reason == Reason::ok) return;
    std::fprintf(stderr, "worker_bench: %s\n", extraction.detail.c_str());
    std::exit(1);
}

} // namespace

int main() {
    const auto program = worker::findWorkerProgram();
    if (!program) {
        std::fputs("worker_bench: quillow-worker is not beside this program\n", stderr);
        return 1;
    }
    const std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252 A short letter, as most documents are.\\par\n" + std::string(2000, 'x') + "\\par}";
    const auto bytes = std::as_bytes(std::span(rtf));

    worker::Pool pool({*program});
    std::vector<double> isolated;
    std::vector<double> here;
    for (int i = 0; i < kRounds; ++i) {
        isolated.push_back(microseconds([&] { require(pool.read({bytes}, DocumentKind::rtf)); }));
        here.push_back(microseconds([&] { require(extract(bytes, DocumentKind::rtf)); }));
    }
    std::vector<double> first;
    for (int i = 0; i < kStarts; ++i)
        first.push_back(microseconds([&] {
            worker::Pool fresh({*program});
            require(fresh.read({bytes}, DocumentKind::rtf));
        }));
    std::vector<double> prepared;
    for (int i = 0; i < kStarts; ++i) {
        worker::Pool fresh({*program});
        fresh.prepare();
        microseconds([] {
            const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(1500);
            while (std::chrono::steady_clock::now() < end) {
            }
        });
        prepared.push_back(microseconds([&] { require(fresh.read({bytes}, DocumentKind::rtf)); }));
    }

    const double added = median(isolated) - median(here);
    std::printf("a small RTF document, median\n");
    std::printf("  in this process                         %7.1f us\n", median(here));
    std::printf("  in a worker, second and later documents %7.1f us  (%.1f x; %.1f us more)\n", median(isolated),
                median(isolated) / median(here), added);
    std::printf("  pool made, first document, pool ended   %7.1f us\n", median(first));
    std::printf("  first document, worker started before   %7.1f us\n", median(prepared));
}
