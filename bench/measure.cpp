// One timed batch, and the timing by repetition: with Google Benchmark where it is there,
// otherwise, as for widths that it is not packaged for, with a plain loop.
#include "bench/measure.hpp"

#include <ctime>

#ifdef PM_BENCH_GOOGLE
#include <benchmark/benchmark.h>
#endif

namespace bench {

namespace {

size_t batch_of(const Row &row, const Contender &contender) {
  return contender.batch == 0 ? row.batch : contender.batch;
}

double now(Clock clock) {
  timespec time{};
  (void)clock_gettime(clock == Clock::thread ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

// Where answers go so that no question can be left out.
volatile u64 answers;

}  // namespace

double time_batch(const Row &row, const Contender &contender, size_t first) {
  if (contender.set_up) {
    contender.set_up();
  }
  const size_t count = batch_of(row, contender);
  const double start = now(contender.clock);
  answers = contender.work(row.fixed_batch ? 0 : first, count);
  return now(contender.clock) - start;
}

#ifdef PM_BENCH_GOOGLE

namespace {

// Keeps the time per question of every repetition, by contender.
class Collector : public benchmark::BenchmarkReporter {
 public:
  Collector(const Row &row, Times &times) : row_(row), times_(times) {}
  bool ReportContext(const Context & /*context*/) override { return true; }
  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) {
        continue;
      }
      const auto contender = static_cast<std::size_t>(run.counters.at("contender").value);
      const double questions = static_cast<double>(run.iterations) *
                               static_cast<double>(batch_of(row_, row_.contenders[contender]));
      times_[contender].push_back(run.real_accumulated_time * 1e9 / questions);
    }
  }

 private:
  const Row &row_;
  Times &times_;
};

void run_batches(benchmark::State &state, const Row &row, std::size_t contender) {
  const Contender &at = row.contenders[contender];
  size_t first = 0;
  for (auto _ : state) {
    state.SetIterationTime(time_batch(row, at, first) * 1e-9);
    first += batch_of(row, at);
  }
  state.counters["contender"] = static_cast<double>(contender);
}

}  // namespace

Times measure(const Row &row, const Effort &effort) {
  Times times(row.contenders.size());
  for (std::size_t i = 0; i < row.contenders.size(); ++i) {
    benchmark::RegisterBenchmark((row.name + "/" + row.contenders[i].name).c_str(),
                                 [&row, i](benchmark::State &state) { run_batches(state, row, i); })
        ->UseManualTime()
        ->MinTime(effort.seconds)
        ->Repetitions(effort.repetitions);
  }
  Collector collector(row, times);
  benchmark::RunSpecifiedBenchmarks(&collector, nullptr, "all");
  benchmark::ClearRegisteredBenchmarks();
  return times;
}

const char *measured_with() {
  return "Google Benchmark";
}

#else

Times measure(const Row &row, const Effort &effort) {
  Times times(row.contenders.size());
  for (int repetition = 0; repetition < effort.repetitions; ++repetition) {
    for (std::size_t i = 0; i < row.contenders.size(); ++i) {
      const Contender &at = row.contenders[i];
      double total = 0;
      size_t questions = 0;
      while (questions == 0 || total < effort.seconds * 1e9) {
        total += time_batch(row, at, questions);
        questions += batch_of(row, at);
      }
      times[i].push_back(total / static_cast<double>(questions));
    }
  }
  return times;
}

const char *measured_with() {
  return "a plain loop";
}

#endif

}  // namespace bench
