// The times of a row's contenders.
#ifndef BENCH_MEASURE_HPP
#define BENCH_MEASURE_HPP

#include <vector>

#include "bench/row.hpp"

namespace bench {

struct Effort {
  int repetitions = 9;
  double seconds = 0.05;  // of each repetition of each contender
};

// Nanoseconds per question, one for each repetition: outer index as in row.contenders. The
// repetitions of the contenders are interleaved, so what disturbs the machine disturbs them alike.
using Times = std::vector<std::vector<double>>;
Times measure(const Row &row, const Effort &effort);

// What reads the clock: its name, for the report.
const char *measured_with();

// Runs one batch and tells how long it took, in nanoseconds.
double time_batch(const Row &row, const Contender &contender, size_t first);

}  // namespace bench

#endif
