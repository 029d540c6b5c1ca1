#include "bench/timings.h"

#include <vector>

namespace hushpane::bench {

namespace {

class Collector : public benchmark::BenchmarkReporter {
 public:
  explicit Collector(TimeOf time) : time_(time) {}
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs)
      if (run.aggregate_name == "median")
        medians[run.run_name.function_name] =
            (time_ == TimeOf::clock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime()) /
            benchmark::GetTimeUnitMultiplier(run.time_unit);
  }

  std::map<std::string, double> medians;

 private:
  const TimeOf time_;
};

}  // namespace

std::map<std::string, double> runBenchmarks(TimeOf time) {
  char program[] = "bench", interleave[] = "--benchmark_enable_random_interleaving=true";
  char repeat[] = "--benchmark_repetitions=7", aggregate[] = "--benchmark_report_aggregates_only=true";
  char* words[] = {program, interleave, repeat, aggregate, nullptr};
  int count = 4;
  benchmark::Initialize(&count, words);
  Collector collector(time);
  benchmark::RunSpecifiedBenchmarks(&collector);
  benchmark::ClearRegisteredBenchmarks();
  return collector.medians;
}

}  // namespace hushpane::bench
