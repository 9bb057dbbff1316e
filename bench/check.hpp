// The proof that library and floor do the same, made before anything is timed.
#ifndef BENCH_CHECK_HPP
#define BENCH_CHECK_HPP

#include <optional>
#include <string>

#include "bench/row.hpp"
#include "bench/world.hpp"

namespace bench {

struct Checked {
  double host_calls = 0;  // of the library, per question
};

// Asks every contender the row's questions: the answers must be equal. Library and floor must also
// make the same host calls in the same order, and unless the row allocates by its nature neither
// may take a block from a partition. Throws a CheckError that says what differs.
struct CheckError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
Checked check(World &world, const Row &row);

}  // namespace bench

#endif
