// The families of rows. Each keeps a reference to the world.
#ifndef BENCH_ROWS_HPP
#define BENCH_ROWS_HPP

#include <vector>

#include "bench/rivals.hpp"
#include "bench/row.hpp"
#include "bench/world.hpp"

namespace bench {

// The rows that the start of a process is compared with.
constexpr const char *dynamic_batch_row = "dynamic records, batch";
constexpr const char *static_batch_row = "static records, batch";

void add_identity_rows(World &world, Rivals &rivals, std::vector<Row> &rows);
void add_attribute_rows(World &world, Rivals &rivals, std::vector<Row> &rows);
void add_delivery_rows(World &world, Rivals &rivals, std::vector<Row> &rows);
void add_reverse_rows(World &world, Rivals &rivals, std::vector<Row> &rows);
void add_walk_rows(World &world, Rivals &rivals, std::vector<Row> &rows);
void add_restore_rows(World &world, Rivals &rivals, std::vector<Row> &rows);

// Asks `count` questions and sums what each is answered.
template <typename Ask>
Work asking(Ask ask) {
  return [ask](size_t first, size_t count) {
    u64 sum = 0;
    for (size_t question = first; question < first + count; ++question) {
      sum += ask(question);
    }
    return sum;
  };
}

// The same with a PTP ID, every PTP in its turn.
template <typename Ask>
Work asking_ptps(const World &world, Ask ask) {
  return [&world, ask](size_t first, size_t count) {
    const u16 *ids = world.ids().data();
    const size_t ptps = world.ptps();
    size_t at = first % ptps;
    u64 sum = 0;
    for (size_t i = 0; i < count; ++i) {
      sum += ask(ids[at]);
      at = at + 1 == ptps ? 0 : at + 1;
    }
    return sum;
  };
}

}  // namespace bench

#endif
