#include "bench/check.hpp"

#include <algorithm>

namespace bench {

namespace {

constexpr size_t questions_journaled = 40;

struct Counts {
  std::vector<u32> calls;  // by host function
  u64 requests = 0;        // of blocks
};

Counts counts_of(const host::Node &node) {
  Counts counts;
  for (const host::FnInfo &info : host::fn_infos) {
    counts.calls.push_back(node.faults.calls(info.fn));
  }
  for (u32 partition = host::partition_static; partition <= host::partition_dynamic; ++partition) {
    counts.requests += node.memory.use(partition).requests;
  }
  return counts;
}

u64 ask(const Contender &contender, size_t count) {
  if (contender.set_up) {
    contender.set_up();
  }
  return contender.work(0, count);
}

// The host functions called, in order.
std::vector<host::Fn> journal_of(World &world, const Contender &contender, size_t count) {
  host::Journal &journal = world.node.journal;
  if (contender.set_up) {
    contender.set_up();
  }
  // Whole walks make more calls than the journal would keep.
  std::vector<host::Fn> calls;
  journal.set_capacity(0);
  journal.set_observer([&calls](const host::JournalEntry &entry) { calls.push_back(entry.fn); });
  journal.start();
  (void)contender.work(0, count);
  journal.stop();
  journal.set_observer({});
  return calls;
}

std::string names_around(const std::vector<host::Fn> &calls, std::size_t place) {
  std::string text;
  for (std::size_t i = place < 3 ? 0 : place - 3; i < std::min(place + 4, calls.size()); ++i) {
    text +=
        std::string(i == place ? " [" : " ") + host::name_of(calls[i]) + (i == place ? "]" : "");
  }
  return text;
}

[[noreturn]] void complain(const Row &row, const std::string &text) {
  throw CheckError(row.name + ": " + text);
}

void compare_journals(World &world, const Row &row) {
  const size_t count =
      row.fixed_batch ? row.questions : std::min(row.questions, questions_journaled);
  const auto library = journal_of(world, row.contenders[0], count);
  const auto hand = journal_of(world, row.contenders[1], count);
  const auto [at, other] = std::mismatch(library.begin(), library.end(), hand.begin(), hand.end());
  if (at != library.end() || other != hand.end()) {
    const auto place = static_cast<std::size_t>(at - library.begin());
    complain(row, "host call " + std::to_string(place) + " differs: the library calls" +
                      names_around(library, place) + ", the floor" + names_around(hand, place));
  }
}

}  // namespace

Checked check(World &world, const Row &row) {
  Checked checked;
  const Contender &library = row.contenders[0];
  const size_t count = row.questions;
  // Twice: the first time may fill a cache that the row is about.
  (void)ask(library, count);
  if (library.set_up) {
    library.set_up();
  }
  const Counts before = counts_of(world.node);
  const u64 answers = library.work(0, count);
  const Counts after = counts_of(world.node);
  u64 calls = 0;
  for (std::size_t i = 0; i < before.calls.size(); ++i) {
    calls += after.calls[i] - before.calls[i];
  }
  checked.host_calls = static_cast<double>(calls) / static_cast<double>(count);
  if (!row.may_allocate && before.requests != after.requests) {
    complain(row, "took " + std::to_string(after.requests - before.requests) + " blocks");
  }
  for (std::size_t i = 1; i < row.contenders.size(); ++i) {
    const u64 other = ask(row.contenders[i], count);
    if (other != answers) {
      complain(row, row.contenders[i].name + " answers " + std::to_string(other) +
                        ", the library " + std::to_string(answers));
    }
  }
  compare_journals(world, row);
  return checked;
}

}  // namespace bench
