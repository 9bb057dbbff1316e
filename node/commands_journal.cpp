// The journal of host calls: switched, filtered and shown.
#include <algorithm>

#include "node/console.hpp"
#include "node/figures.hpp"
#include "node/journal_file.hpp"

namespace node {
namespace {

constexpr u32 kShownByDefault = 20;

void filter(Node &node, const Arguments &names, bool named_are_kept) {
  std::vector<host::Fn> named;
  std::transform(names.begin(), names.end(), std::back_inserter(named), function_argument);
  const bool others_are_kept = !named_are_kept || named.empty();
  for (const auto &side : node.sides()) {
    for (const host::FnInfo &info : host::fn_infos) {
      side->host.journal.set_kept(info.fn, others_are_kept);
    }
    for (const host::Fn fn : named) {
      side->host.journal.set_kept(fn, named_are_kept);
    }
  }
}

Answer state_of(const Node &node) {
  Answer answer;
  Rows &rows = answer.rows("journals", {"board", "journal", "calls_ever", "calls_held"});
  for (const auto &side : node.sides()) {
    const host::Journal &journal = side->host.journal;
    rows.add(Hex{side->cid}, journal.on() ? "on" : "off", journal.total(),
             journal.entries().size());
  }
  return answer;
}

Answer shown(const Node &node, u32 count) {
  Answer answer;
  Rows &rows = answer.rows("calls", {"board", "number", "tick", "instance", "call"});
  for (const auto &side : node.sides()) {
    const auto &entries = side->host.journal.entries();
    for (std::size_t position = entries.size() - std::min<std::size_t>(entries.size(), count);
         position < entries.size(); ++position) {
      const host::JournalEntry &entry = entries[position];
      rows.add(Hex{side->cid}, entry.number, entry.tick, Hex{entry.cid},
               printed_cell(indented_text(entry)));
    }
  }
  return answer;
}

Answer run_journal(Console &console, const Arguments &arguments) {
  Node &node = console.node();
  const std::string what = arguments.empty() ? "" : arguments[0];
  const Arguments rest(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
  if (what == "show" && rest.size() <= 1) {
    return shown(node, rest.empty() ? kShownByDefault
                                    : number_argument(rest[0], 0, 0xFFFFFFFF, "number of calls"));
  }
  if (what == "filter" || what == "except") {
    filter(node, rest, what == "filter");
  } else if ((what == "on" || what == "off") && rest.empty()) {
    for (const auto &side : node.sides()) {
      side->host.journal.set_capacity(kJournalEntriesKept);
      what == "on" ? side->host.journal.start() : side->host.journal.stop();
    }
  } else if (what == "clear" && rest.empty()) {
    for (const auto &side : node.sides()) {
      side->host.journal.clear();
    }
  } else if (!what.empty()) {
    throw CommandError("'" + what + "' is nothing that the journal does; see 'help journal'");
  }
  return state_of(node);
}

constexpr Command kCommands[] = {
    {"journal", "[on | off | show [COUNT] | filter|except [FUNCTION..] | clear]",
     "every host call, in order, on every board",
     "  on, off              keep calls from now on, or no longer\n"
     "  show [COUNT]         the last COUNT calls of each board, 20 if it is left out; a call "
     "made\n"
     "                       inside another one, from a callback, is indented\n"
     "  filter [FUNCTION..]  keep only these from now on; without a name all\n"
     "  except FUNCTION..    keep all but these from now on\n"
     "  clear                forget what has been kept\n"
     "  Numbers count each board's kept calls. '--journal FILE' writes them to a file as well.",
     0, kAnyNumber, run_journal}};

}  // namespace

std::span<const Command> journal_commands() {
  return kCommands;
}

}  // namespace node
