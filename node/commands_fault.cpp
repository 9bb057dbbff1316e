// Faults of the host: calls that fail or take time, memory that runs out, a stricter watchdog.
#include <algorithm>

#include "node/console.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

constexpr u32 kUnbounded = 0xFFFFFFFF;

struct Partition {
  std::string_view name;
  u32 number;
};
constexpr Partition kPartitions[] = {{"static", host::partition_static},
                                     {"block", host::partition_block},
                                     {"dynamic", host::partition_dynamic}};

// A fault command without its first word and without the boards it is meant for.
struct Request {
  std::vector<host::Node *> boards;
  Arguments arguments;

  bool has(std::size_t position) const { return position < arguments.size(); }
  const std::string &word(std::size_t position) const {
    static const std::string none;
    return has(position) ? arguments[position] : none;
  }
  host::Fn function() const { return function_argument(word(0)); }
  u32 number(std::size_t position, u32 lowest, u32 otherwise, std::string_view what) const {
    return has(position) ? number_argument(arguments[position], lowest, kUnbounded, what)
                         : otherwise;
  }
  std::optional<u32> code(std::size_t position) const {
    if (!has(position)) {
      return std::nullopt;
    }
    return number(position, 0, 0, "answer");
  }
};

void fail_nth(const Request &request) {
  for (host::Node *board : request.boards) {
    board->faults.fail_nth(request.function(), request.number(1, 1, 1, "number of a call"),
                           request.code(2));
  }
}

void fail_always(const Request &request) {
  for (host::Node *board : request.boards) {
    board->faults.fail_always(request.function(), request.code(1));
  }
}

void delay(const Request &request) {
  if (!request.has(1)) {
    throw CommandError("the delay is missing; expected fault delay FUNCTION TICKS [NTH]");
  }
  for (host::Node *board : request.boards) {
    board->faults.delay(request.function(), request.number(1, 0, 0, "number of ticks"),
                        request.number(2, 1, host::Faults::all, "number of a call"));
  }
}

void exhaust(const Request &request) {
  const std::string &name = request.word(0);
  const auto *partition = std::find_if(std::begin(kPartitions), std::end(kPartitions),
                                       [&](const Partition &entry) { return entry.name == name; });
  if (partition == std::end(kPartitions)) {
    throw CommandError("'" + name + "' is no partition; expected static, block or dynamic");
  }
  for (host::Node *board : request.boards) {
    const std::size_t used = board->memory.use(partition->number).bytes;
    board->memory.limit_bytes(partition->number, used + request.number(1, 0, 0, "number of bytes"));
  }
}

void limit_watchdog(const Request &request) {
  const std::string &budget = request.word(0);
  if ((budget != "calls" && budget != "ticks") || !request.has(1)) {
    throw CommandError("'" + budget + "' is no limit; expected calls LIMIT or ticks LIMIT");
  }
  for (host::Node *board : request.boards) {
    host::Watchdog &dog = board->watchdog;
    (budget == "calls" ? dog.limit_calls : dog.limit_ticks) = request.number(1, 1, 1, "limit");
  }
}

void clear(const Request &request) {
  for (host::Node *board : request.boards) {
    if (request.has(0)) {
      board->faults.clear(request.function());
      continue;
    }
    board->faults.clear();
    for (const Partition &partition : kPartitions) {
      board->memory.limit_bytes(partition.number, host::PartitionUse::unlimited);
    }
    board->watchdog.limit_calls = host::Watchdog().limit_calls;
    board->watchdog.limit_ticks = host::Watchdog().limit_ticks;
  }
}

struct Action {
  std::string_view name;
  std::size_t most_arguments;
  void (*apply)(const Request &request);
};
constexpr Action kActions[] = {{"fail", 3, fail_nth}, {"always", 2, fail_always},
                               {"delay", 3, delay},   {"memory", 2, exhaust},
                               {"clear", 1, clear},   {"watchdog", 2, limit_watchdog}};

// "12", "12 to 14", "from 12 on", or "-".
std::string calls_text(u32 first, u32 last) {
  if (first == 0) {
    return "-";
  }
  const std::string text = std::to_string(first);
  if (last == kUnbounded) {
    return "from " + text + " on";
  }
  return first == last ? text : text + " to " + std::to_string(last);
}

void add_functions(Answer &answer, const Node &node) {
  Rows &rows = answer.rows("functions", {"board", "function", "calls", "failing", "answer",
                                         "failed", "delayed", "ticks"});
  for (const auto &side : node.sides()) {
    for (const host::FnInfo &info : host::fn_infos) {
      const host::Faults &faults = side->host.faults;
      const host::FaultRule &rule = faults.rule(info.fn);
      if (rule.fail_first == 0 && rule.delay_first == 0) {
        continue;
      }
      const u32 answer_of_fault = rule.answer.value_or(info.fault);
      rows.add(Hex{side->cid}, info.name, faults.calls(info.fn),
               calls_text(rule.fail_first, rule.fail_last),
               rule.fail_first == 0 ? std::string("-") : hex(answer_of_fault), rule.hits,
               calls_text(rule.delay_first, rule.delay_last), rule.delay_ticks);
    }
  }
}

Answer list(const Node &node) {
  Answer answer;
  add_functions(answer, node);
  Rows &memory = answer.rows("memory", {"board", "partition", "bytes", "limit_bytes", "refused"});
  for (const auto &side : node.sides()) {
    for (const Partition &partition : kPartitions) {
      const host::PartitionUse &use = side->host.memory.use(partition.number);
      if (use.limit_bytes != host::PartitionUse::unlimited) {
        memory.add(Hex{side->cid}, std::string(partition.name), size_of(use.bytes),
                   size_of(use.limit_bytes), use.failures);
      }
    }
  }
  Rows &dogs = answer.rows("watchdogs", {"board", "limit_calls", "limit_ticks", "barks"});
  for (const auto &side : node.sides()) {
    const host::Watchdog &dog = side->host.watchdog;
    dogs.add(Hex{side->cid}, dog.limit_calls, dog.limit_ticks, dog.barks());
  }
  return answer;
}

// Takes the word for the boards from the end of the arguments.
std::vector<host::Node *> boards_of(Node &node, Arguments &arguments) {
  const auto ends_with = [&](std::string_view word) {
    return !arguments.empty() && arguments.back() == word;
  };
  const bool both = ends_with("both");
  const bool standby = ends_with("standby");
  if (both || standby || ends_with("active")) {
    arguments.pop_back();
  }
  std::vector<host::Node *> boards;
  for (const auto &side : node.sides()) {
    if (both || (side.get() == &node.active()) != standby) {
      boards.push_back(&side->host);
    }
  }
  return boards;
}

Answer run_fault(Console &console, const Arguments &arguments) {
  Node &node = console.node();
  if (arguments.empty()) {
    return list(node);
  }
  const auto *action =
      std::find_if(std::begin(kActions), std::end(kActions),
                   [&](const Action &entry) { return entry.name == arguments[0]; });
  Request request;
  request.arguments = Arguments(arguments.begin() + 1, arguments.end());
  request.boards = boards_of(node, request.arguments);
  if (action == std::end(kActions) || request.arguments.size() > action->most_arguments) {
    throw CommandError("'" + arguments[0] + "' is no fault with these arguments; see 'help fault'");
  }
  action->apply(request);
  return list(node);
}

constexpr Command kCommands[] = {
    {"fault", "[WHAT ARGUMENTS [active|standby|both]]", "make the host fail, or list its faults",
     "  fail FUNCTION [NTH [ANSWER]]   the NTH call from now fails, 1 if it is left out\n"
     "  always FUNCTION [ANSWER]       every call from now fails\n"
     "  delay FUNCTION TICKS [NTH]     the NTH call from now takes that long; left out: every one\n"
     "  memory PARTITION [BYTES]       static, block or dynamic has only BYTES left, 0 if left "
     "out\n"
     "  watchdog calls|ticks LIMIT     it barks after so many calls or ticks without being fed\n"
     "  clear [FUNCTION]               no more faults of FUNCTION; left out: none at all\n"
     "  A call that fails does nothing else. Where a pointer or a handle is answered, ANSWER does\n"
     "  not count: it is null. The faults are those of the active board unless told otherwise.",
     0, 5, run_fault}};

}  // namespace

std::span<const Command> fault_commands() {
  return kCommands;
}

}  // namespace node
