// The operator's debug window.
#include <sstream>

#include "node/console.hpp"

namespace node {
namespace {

constexpr std::size_t kParameters = 4;

// The numbers in front of a help text as its printer shows them: the command and, in a detail line,
// the sub-command.
std::string help_head(const host::Line &line) {
  constexpr std::size_t kSubCommand = 2;
  if (line.printer == host::Fn::DBG_PrintHelpInfoLevel0) {
    return "  " + std::to_string(line.numbers[0]) + "  ";
  }
  if (line.printer == host::Fn::DBG_PrintHelpInfo) {
    return "      " + std::to_string(line.numbers[0]) + " " +
           std::to_string(line.numbers[kSubCommand]) + "  ";
  }
  return "";
}

// What a side has printed since the mark, without line breaks and empty lines.
std::vector<std::string> printed_since(const host::Debug &debug, std::uint64_t mark) {
  std::vector<std::string> lines;
  const std::uint64_t first_held = debug.total() - debug.lines().size();
  for (std::uint64_t number = std::max(mark, first_held); number < debug.total(); ++number) {
    const host::Line &printed = debug.lines()[static_cast<std::size_t>(number - first_held)];
    std::istringstream text(help_head(printed) + printed.text);
    for (std::string line; std::getline(text, line);) {
      line.erase(line.find_last_not_of('\r') + 1);
      if (!line.empty()) {
        lines.push_back(line);
      }
    }
  }
  return lines;
}

Answer run_dbwin(Console &console, const Arguments &arguments) {
  u32 parameters[kParameters] = {};
  for (std::size_t position = 0; position < arguments.size(); ++position) {
    parameters[position] = number_argument(arguments[position], 0, 0xFFFFFFFF, "number");
  }
  Side &side = console.node().active();
  const std::uint64_t mark = side.host.debug.total();
  const u32 code = side.host.root.debug_command(*side.instance, parameters[0], parameters[1],
                                                parameters[2], parameters[3]);
  Answer answer;
  answer.window(printed_since(side.host.debug, mark));
  if (code != PM_OK) {
    answer.field("result", result_text(code));
  }
  return answer;
}

constexpr Command kCommands[] = {
    {"dbwin", "[COMMAND [SUB [PARA1 [PARA2]]]]", "a command of the debug window",
     "  Sent to the active instance as a message of 36 bytes; numbers are decimal or 0x.., and "
     "what\n  is left out is 0. Command 0 lists the commands. At a terminal the window's GBK signs "
     "are\n  shown as UTF-8; otherwise its bytes stay as they are. 'result' stands there only when "
     "the\n  message is refused.",
     0, kParameters, run_dbwin}};

}  // namespace

std::span<const Command> dbwin_commands() {
  return kCommands;
}

}  // namespace node
