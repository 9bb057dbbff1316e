// Commands about the pair of an active and a standby instance.
#include <algorithm>

#include "node/console.hpp"

namespace node {
namespace {

constexpr std::size_t kDifferencesListed = 10;

host::Synchronisation &pair_of(Console &console) {
  Node &node = console.node();
  if (!node.has_standby()) {
    throw CommandError("the node has no standby; expected 'standby' in [node] of the chassis");
  }
  return node.sides().front()->host.syn;
}

Answer &add_comparison(Answer &answer, Node &node) {
  const std::vector<host::SyncDifference> differing = node.compare();
  answer.field("units_compared", PM_LibGetMaxPtpID() + 1)
      .field("bytes_each", sizeof(PmSynRecord))
      .field("differing", differing.size())
      .field("static_data", differing.empty() ? "identical" : "different");
  if (!differing.empty()) {
    Rows &rows = answer.rows("first_differences", {"module", "unit"});
    const std::size_t shown = std::min(differing.size(), kDifferencesListed);
    for (std::size_t position = 0; position < shown; ++position) {
      rows.add(differing[position].module, differing[position].unit);
    }
  }
  return answer;
}

Answer run_sync(Console &console, const Arguments &) {
  const host::Synchronisation &pair = pair_of(console);
  Answer answer;
  answer.field("units_shipped_now", console.node().synchronise())
      .field("units_shipped_ever", pair.shipped());
  return add_comparison(answer, console.node());
}

Answer run_compare(Console &console, const Arguments &) {
  pair_of(console);
  Answer answer;
  return add_comparison(answer, console.node());
}

Answer state_of(const host::Synchronisation &pair, Node &node) {
  return Answer()
      .field("active_instance", Hex{node.active().cid})
      .field("standby", pair.attached() ? "attached" : "detached")
      .field("units_waiting", pair.marked(*node.active().instance))
      .field("units_shipped_ever", pair.shipped());
}

Answer run_failover(Console &console, const Arguments &) {
  host::Synchronisation &pair = pair_of(console);
  if (!console.node().failover()) {
    throw CommandError("the sides do not change; expected a pair of instances");
  }
  return state_of(pair, console.node());
}

Answer run_detach(Console &console, const Arguments &) {
  host::Synchronisation &pair = pair_of(console);
  pair.detach();
  return state_of(pair, console.node());
}

Answer run_attach(Console &console, const Arguments &arguments) {
  host::Synchronisation &pair = pair_of(console);
  const bool full = !arguments.empty() && arguments[0] == "full";
  if (!full && !arguments.empty() && arguments[0] != "marked") {
    throw CommandError("'" + arguments[0] + "' is no way to catch up; expected full or marked");
  }
  if (pair.attached()) {
    throw CommandError("the standby is attached; expected 'detach' first");
  }
  const std::uint64_t before = pair.shipped();
  pair.attach(full ? host::CatchUp::full : host::CatchUp::marked);
  console.node().settle();
  Answer answer = state_of(pair, console.node());
  return answer.field("units_caught_up", pair.shipped() - before);
}

constexpr Command kCommands[] = {
    {"sync", "", "ship changed units to the standby and compare both sides byte for byte", "", 0, 0,
     run_sync},
    {"compare", "", "compare both sides byte for byte, as they are", "", 0, 0, run_compare},
    {"failover", "", "the standby takes over the active role",
     "  A detached one as well: what it missed waits on the other side.", 0, 0, run_failover},
    {"detach", "", "the standby misses what changes from now on",
     "  Only synchronisation stops: records of the data distribution still reach its board.", 0, 0,
     run_detach},
    {"attach", "[full|marked]", "the standby is there again and catches up",
     "  'marked' ships the units that it missed and is meant if nothing is said, 'full' all units.",
     0, 1, run_attach}};

}  // namespace

std::span<const Command> standby_commands() {
  return kCommands;
}

}  // namespace node
