// What is measured: a row of the table is one question, answered by several contenders.
//
// The first contender is the library, the second the floor: the same work done by hand in the
// fewest lines, with the same host calls in the same order, on the same data. Behind them come
// rivals: what a programmer might use instead. Before anything is timed, every contender answers
// the same questions and the answers are compared; see check.hpp.
#ifndef BENCH_ROW_HPP
#define BENCH_ROW_HPP

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/base.h"

namespace bench {

using u64 = std::uint64_t;

// Answers `count` questions, number `first` and those behind it, and yields the sum of what was
// answered, codes included, so that equal sums mean equal answers.
using Work = std::function<u64(size_t first, size_t count)>;

enum class Clock {
  thread,  // processor time of the thread: what else runs on the machine is not counted
  wall     // for contenders that wait for another process
};

struct Contender {
  std::string name;
  Work work;
  Clock clock = Clock::thread;
  size_t batch = 0;  // questions between two looks at the clock; 0 = the row's batch
  std::function<void()> set_up = {};  // before every batch, not timed
};

struct Row {
  std::string name;
  double target = 0;  // ratio to the floor to reach; 0 = none
  std::vector<Contender> contenders;
  size_t questions = 0;  // that are asked before the timing, of every contender
  size_t batch = 1024;   // questions between two looks at the clock
  size_t parts = 1;      // a question's time is divided by this: records scanned, functions called
  bool may_allocate = false;  // blocks of the host's partitions
  bool fixed_batch = false;   // exactly one batch per set_up: first is always 0
  std::string part = "";      // what the parts are, when not the question itself
  std::function<void()> tear_down = {};
};

}  // namespace bench

#endif
