// How much Inkwarden's strict decoding of the statistics reply costs next to a plain JSON parse of
// the same bytes, for 10, 1 000 and 100 000 rows. Three cases per size:
//   plain_parse   QJsonDocument::fromJson alone
//   decode_fold   BookStatsResponse::decode + RoyaltySummary::folding, what a refresh does
//   fold_only     RoyaltySummary::folding of rows decoded beforehand
// After the usual table, a summary gives the ratio decode_fold / plain_parse per size and the peak
// RSS growth of each path.

#include "StatisticsBody.h"
#include "model/RoyaltySummary.h"
#include "service/BookStatsFold.h"
#include "service/BookStatsResponse.h"

#include <QJsonDocument>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define INKWARDEN_BENCH_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define INKWARDEN_BENCH_SANITIZED 1
#endif
#endif

#if !defined(INKWARDEN_BENCH_SANITIZED)
#include <malloc.h>
#endif

namespace {

constexpr int rowCounts[] = {10, 1000, 100000};

const QByteArray &bodyFor(int rows)
{
    static std::map<int, QByteArray> bodies;
    auto it = bodies.find(rows);
    if (it == bodies.end()) {
        it = bodies.emplace(rows, statisticsBody(rows)).first;
    }
    return it->second;
}

// Body bytes and rows per second; the fold never sees the bytes, so it counts rows only.
void countThroughput(benchmark::State &state, const QByteArray &body, bool readsBytes = true)
{
    if (readsBytes) {
        state.SetBytesProcessed(state.iterations() * body.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["body_KiB"] = static_cast<double>(body.size()) / 1024.0;
}

void plainParse(benchmark::State &state)
{
    const QByteArray &body = bodyFor(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QJsonDocument document = QJsonDocument::fromJson(body);
        benchmark::DoNotOptimize(document);
    }
    countThroughput(state, body);
}

void decodeFold(benchmark::State &state)
{
    const QByteArray &body = bodyFor(static_cast<int>(state.range(0)));
    if (!BookStatsResponse::decode(body)) {
        state.SkipWithError("the generated body does not decode");
        return;
    }
    for (auto _ : state) {
        const std::optional<BookStatsResponse> response = BookStatsResponse::decode(body);
        std::optional<RoyaltySummary> summary = BookStatsFold::folding(response->tableData);
        benchmark::DoNotOptimize(summary);
    }
    countThroughput(state, body);
}

void foldOnly(benchmark::State &state)
{
    const QByteArray &body = bodyFor(static_cast<int>(state.range(0)));
    const std::optional<BookStatsResponse> response = BookStatsResponse::decode(body);
    if (!response) {
        state.SkipWithError("the generated body does not decode");
        return;
    }
    for (auto _ : state) {
        std::optional<RoyaltySummary> summary = BookStatsFold::folding(response->tableData);
        benchmark::DoNotOptimize(summary);
    }
    countThroughput(state, body, false);
}

// Peak RSS growth of one call, in KiB: free heap is handed back first and the kernel's high-water
// mark reset, so the figure is what the call itself touched. Nothing when the kernel or a
// sanitizer's allocator makes that meaningless.
std::optional<long> peakRssGrowthKiB(const std::function<void()> &work)
{
#if defined(INKWARDEN_BENCH_SANITIZED)
    Q_UNUSED(work);
    return std::nullopt;
#else
    const auto statusKiB = [](const std::string &field) -> long {
        std::ifstream status("/proc/self/status");
        std::string line;
        while (std::getline(status, line)) {
            if (line.rfind(field + ':', 0) == 0) {
                return std::stol(line.substr(field.size() + 1));
            }
        }
        return -1;
    };
    malloc_trim(0);
    std::ofstream clearRefs("/proc/self/clear_refs");
    clearRefs << "5" << std::flush;
    if (!clearRefs) {
        return std::nullopt;
    }
    const long before = statusKiB("VmHWM");
    if (before < 0) {
        return std::nullopt;
    }
    work();
    return statusKiB("VmHWM") - before;
#endif
}

// The console table as usual, plus per-size timings kept for the summary.
class SummaryReporter : public benchmark::ConsoleReporter
{
public:
    SummaryReporter()
        : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_ColorTabular : OO_Tabular)
    {}

    void ReportRuns(const std::vector<Run> &reports) override
    {
        ConsoleReporter::ReportRuns(reports);
        for (const Run &run : reports) {
            if (run.error_occurred || run.iterations == 0) {
                continue;
            }
            Timing &timing = m_timings[std::stoi(run.run_name.args)][run.run_name.function_name];
            const double seconds = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            if (run.run_type == Run::RT_Iteration) {
                timing.repetitions.push_back(seconds);
            } else if (run.aggregate_name == "median") {
                timing.median = seconds;
            }
        }
    }

    void printSummary() const
    {
        if (m_timings.empty()) {
            return;
        }
        std::printf("\nCost of strict decoding: decode_fold against plain_parse of the same bytes (median CPU time per"
                    " call; RSS: peak growth during one call)\n");
        std::printf("%7s %9s %11s %10s %15s %16s %9s %7s %13s %18s\n", "rows", "body KiB", "parse us", "parse MB/s",
                    "decode+fold us", "decode+fold MB/s", "fold us", "ratio", "parse RSS KiB", "decode+fold RSS KiB");
        for (const auto &[rows, byCase] : m_timings) {
            const QByteArray &body = bodyFor(rows);
            const double megabytes = static_cast<double>(body.size()) / 1e6;
            const double parse = microseconds(byCase, "plain_parse");
            const double decode = microseconds(byCase, "decode_fold");
            const double fold = microseconds(byCase, "fold_only");
            const std::optional<long> parseRss = peakRssGrowthKiB([&body] {
                QJsonDocument document = QJsonDocument::fromJson(body);
                benchmark::DoNotOptimize(document);
            });
            const std::optional<long> decodeRss = peakRssGrowthKiB([&body] {
                const std::optional<BookStatsResponse> response = BookStatsResponse::decode(body);
                std::optional<RoyaltySummary> summary = BookStatsFold::folding(response->tableData);
                benchmark::DoNotOptimize(summary);
            });
            std::printf(
                "%7d %9.1f %11s %10s %15s %16s %9s %7s %13s %18s\n", rows, static_cast<double>(body.size()) / 1024.0,
                figure(parse, "%.1f").c_str(), figure(parse > 0 ? megabytes / (parse / 1e6) : 0, "%.1f").c_str(),
                figure(decode, "%.1f").c_str(), figure(decode > 0 ? megabytes / (decode / 1e6) : 0, "%.1f").c_str(),
                figure(fold, "%.2f").c_str(), figure(parse > 0 ? decode / parse : 0, "%.2fx").c_str(),
                parseRss ? std::to_string(*parseRss).c_str() : "n/a",
                decodeRss ? std::to_string(*decodeRss).c_str() : "n/a");
        }
        std::fflush(stdout);
    }

private:
    // CPU seconds per call: of each repetition, and their median when the library computed one.
    struct Timing {
        std::vector<double> repetitions;
        std::optional<double> median;
    };

    // The median of the repetitions, so one disturbed repetition on a shared machine does not skew
    // the ratio.
    static double microseconds(const std::map<std::string, Timing> &byCase, const std::string &name)
    {
        const auto it = byCase.find(name);
        if (it == byCase.end()) {
            return 0;
        }
        const Timing &timing = it->second;
        if (timing.median) {
            return 1e6 * *timing.median;
        }
        if (timing.repetitions.empty()) {
            return 0;
        }
        std::vector<double> sorted = timing.repetitions;
        std::sort(sorted.begin(), sorted.end());
        const std::size_t middle = sorted.size() / 2;
        const double median = sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
        return 1e6 * median;
    }

    static std::string figure(double value, const char *format)
    {
        if (value <= 0) {
            return "-";
        }
        char text[32];
        std::snprintf(text, sizeof text, format, value);
        return text;
    }

    std::map<int, std::map<std::string, Timing>> m_timings;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    for (const int rows : rowCounts) {
        benchmark::RegisterBenchmark("plain_parse", plainParse)->Arg(rows)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark("decode_fold", decodeFold)->Arg(rows)->Unit(benchmark::kMicrosecond);
    }
    // Last, as their table has no bytes column.
    for (const int rows : rowCounts) {
        benchmark::RegisterBenchmark("fold_only", foldOnly)->Arg(rows)->Unit(benchmark::kMicrosecond);
    }
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printSummary();
    benchmark::Shutdown();
    return 0;
}
