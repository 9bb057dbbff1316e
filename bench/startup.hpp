// A process of its own from its start to the end of the batches.
#ifndef BENCH_STARTUP_HPP
#define BENCH_STARTUP_HPP

#include <string>
#include <vector>

#include "platform/base.h"

namespace bench {

// Processor time in nanoseconds, one for each repetition.
struct StartTimes {
  std::vector<double> process;  // the whole process, by the kernel's account
  std::vector<double> laid;     // of it: the owner's records put into the data distribution
  std::vector<double> up;       // from the component's registration to the end of the phases
  std::vector<double> filled;   // all batches
};

// Runs this program that many times with --start. No PTPs: the process ends as soon as it runs.
StartTimes measure_start(u32 ptps, int repetitions);

// What such a process does: comes up, writes its times to the standard output, and ends.
[[noreturn]] void start(u32 ptps);

// Bytes of the host's partitions that each PTP takes.
struct MemoryUse {
  double dynamic = 0;  // its dynamic record
  double fixed = 0;    // its static record
  double places = 0;   // its place, once asked for
};
MemoryUse memory_use(u32 ptps);

}  // namespace bench

#endif
