// Commands that look behind the library: what it recorded, took and printed.
#include <algorithm>
#include <numeric>

#include "node/console.hpp"
#include "node/figures.hpp"

namespace node {
namespace {

u32 count_argument(const Arguments &arguments, u32 otherwise) {
  return arguments.empty() ? otherwise
                           : number_argument(arguments[0], 0, 0xFFFF, "number of lines");
}

Answer run_events(Console &console, const Arguments &arguments) {
  const auto &events = console.node().events();
  Answer answer;
  answer.field("events_ever", console.node().events_total());
  Rows &rows = answer.rows("last_events", {"instance", "tick", "text"});
  const std::size_t shown = std::min<std::size_t>(events.size(), count_argument(arguments, 20));
  for (std::size_t position = events.size() - shown; position < events.size(); ++position) {
    const Event &event = events[position];
    rows.add(Hex{event.cid}, event.tick, printed_cell(event.text));
  }
  return answer;
}

std::string without_folders(std::string_view file) {
  return std::string(file.substr(file.rfind('/') + 1));
}

Answer run_errors(Console &console, const Arguments &arguments) {
  const auto &sides = console.node().sides();
  const std::uint64_t total = std::accumulate(
      sides.begin(), sides.end(), std::uint64_t{0},
      [](std::uint64_t sum, const auto &side) { return sum + side->host.errors.total(); });
  Answer answer;
  answer.field("errors_ever", total);
  Rows &places =
      answer.rows("by_place", {"instance", "count", "file", "line", "first_value", "last_value"});
  for (const auto &side : sides) {
    for (const auto &[where, place] : side->error_places) {
      places.add(Hex{side->cid}, place.count, without_folders(where.first), where.second,
                 value_cell(place.first_value), value_cell(place.last_value));
    }
  }
  Rows &last =
      answer.rows("last_errors", {"instance", "number", "tick", "file", "line", "value", "result"});
  for (const auto &side : sides) {
    const std::vector<host::ErrorRecord> records = side->host.errors.since();
    const std::size_t shown = std::min<std::size_t>(records.size(), count_argument(arguments, 3));
    for (std::size_t position = records.size() - shown; position < records.size(); ++position) {
      const host::ErrorRecord &record = records[position];
      last.add(Hex{side->cid}, record.number, record.tick, without_folders(record.file),
               record.line, value_cell(record.value), result_name(record.value));
    }
  }
  return answer;
}

Answer run_memory(Console &console, const Arguments &) {
  Answer answer;
  Rows &rows = answer.rows("partitions", {"board", "partition", "blocks", "bytes", "peak_bytes",
                                          "allocations", "refused"});
  std::size_t damaged = 0;
  std::size_t misused = 0;
  for (const auto &side : console.node().sides()) {
    damaged += side->host.memory.check();
    misused += side->host.misuses.size();
    for (const u32 partition :
         {host::partition_static, host::partition_block, host::partition_dynamic}) {
      const host::PartitionUse &use = side->host.memory.use(partition);
      rows.add(Hex{side->cid}, host::Memory::partition_name(partition), use.blocks,
               size_of(use.bytes), size_of(use.peak_bytes), use.allocations, use.failures);
    }
  }
  answer.field("damaged_blocks", damaged).field("misuses", misused);
  return answer;
}

Answer run_watchdog(Console &console, const Arguments &) {
  Answer answer;
  Rows &rows = answer.rows("watchdogs", {"board", "feeds", "barks", "first_bark_in"});
  for (const auto &side : console.node().sides()) {
    const host::Watchdog &dog = side->host.watchdog;
    rows.add(Hex{side->cid}, dog.feeds(), dog.barks(),
             dog.list().empty() ? "-" : host::name_of(dog.list().front().fn));
  }
  return answer;
}

Answer run_trace(Console &console, const Arguments &arguments) {
  constexpr u32 kSwitchCommand = 1;
  constexpr u32 kSetOne = 1;
  const u32 number = number_argument(arguments[0], 0, PM_SWITCH_NUM - 1, "trace switch");
  if (arguments[1] != "on" && arguments[1] != "off") {
    throw CommandError("'" + arguments[1] + "' is no switch position; expected on or off");
  }
  Side &side = console.node().active();
  const u32 code = side.host.root.debug_command(*side.instance, kSwitchCommand, kSetOne, number,
                                                arguments[1] == "on" ? 1 : 0);
  return Answer()
      .field("switch", number)
      .field("position", arguments[1])
      .field("result", result_text(code));
}

constexpr Command kCommands[] = {
    {"events", "[COUNT]", "what the products' booked functions reported",
     "  The last COUNT events, 20 if it is left out: lines that products print under a component\n"
     "  type of their own.",
     0, 1, run_events},
    {"errors", "[COUNT]", "the error records of every instance",
     "  Counted by the place that recorded them, then the last COUNT of each instance, 3 if it is\n"
     "  left out. 'line' is the number of the source file times 1000 plus the line in it. When a\n"
     "  PTP is restored into a virtual system for the first time, its old virtual systems cannot "
     "be\n  read: that is recorded, too.",
     0, 1, run_errors},
    {"memory", "", "blocks and bytes per memory partition", "", 0, 0, run_memory},
    {"watchdog", "", "how often the watchdog was fed and barked", "", 0, 0, run_watchdog},
    {"trace", "0-3 on|off", "set a trace switch of the active instance",
     "  0 function trace, 1 general errors, 2 data modification, 3 synchronisation. Sent as a\n"
     "  message of the debug window; traces are shown behind the command that caused them.",
     2, 2, run_trace}};

}  // namespace

std::span<const Command> watch_commands() {
  return kCommands;
}

}  // namespace node
