// The table, and the same as JSON.
#ifndef BENCH_REPORT_HPP
#define BENCH_REPORT_HPP

#include <string>
#include <vector>

#include "bench/measure.hpp"
#include "bench/startup.hpp"

namespace bench {

struct Summary {
  double median = 0;  // nanoseconds per part of a question
  double spread = 0;  // between the quartiles, as a share of the median
};
Summary summary_of(std::vector<double> times);

struct Result {
  std::string row;
  std::string part;
  u32 ptps = 0;
  double target = 0;
  double host_calls = 0;
  size_t parts = 1;
  std::vector<std::string> contenders;
  std::vector<std::vector<double>> times;  // nanoseconds per part
  // Library to floor, repetition by repetition; the median and the spread.
  Summary ratio() const;
};

void print_heading();
void print_result(const Result &result);
// How each row grows with the number of PTPs, and which targets are missed.
void print_growth(const std::vector<Result> &results);
void print_targets(const std::vector<Result> &results);
// `restore`: what restoring all records takes by the rows of the table, in nanoseconds.
void print_start(u32 ptps, double restore, const StartTimes &empty, const StartTimes &times);
void print_memory(u32 ptps, const MemoryUse &use);
void write_json(const std::string &file, const std::vector<Result> &results);

}  // namespace bench

#endif
