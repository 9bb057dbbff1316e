#include "node/commands_page.hpp"

#include <sstream>

#include "node/console.hpp"

namespace node {
namespace {

constexpr const char *kHead = R"(# Commands

Printed by `pmnode --help-commands`; `pmnode --man` prints the same as a manual page.

)";

constexpr const char *kTail = R"(
What the fields of an answer mean stands in [json.md](json.md).

At a terminal the tab key completes commands, their fixed words and the names of host functions, and
lines are kept in the file that `PMNODE_HISTORY` names, `~/.pmnode_history` if it is not set.
)";

}  // namespace

const char *const commands_in_short =
    R"(Commands are read from a script, from a pipe or at the prompt, one a line; `#` begins a comment.
Every command takes a trailing `--json`: its answer is then one line of JSON with the same names,
blanks in names written as `_`, and what was printed meanwhile is under `printed`. With the option
`--json` every answer is. Numbers are decimal or `0x..`. A word that stands for itself is written in
small letters, what is to be put in its place in capitals; `[ ]` may be left out, `|` separates
choices.
)";

std::string commands_page() {
  std::ostringstream page;
  page << kHead << commands_in_short << kTail;
  for (const Command &command : commands()) {
    page << "\n## `" << command.name << (command.arguments.empty() ? "" : " ") << command.arguments
         << "`\n\n"
         << command.help << "\n";
    if (!command.long_help.empty()) {
      page << "\n```text\n" << command.long_help << "\n```\n";
    }
  }
  return page.str();
}

}  // namespace node
