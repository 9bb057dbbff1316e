#include "node/console.hpp"

#include <algorithm>
#include <istream>
#include <ostream>
#include <sstream>

#include "node/crash.hpp"
#include "node/document.hpp"
#include "node/figures.hpp"
#include "node/suggestion.hpp"

namespace node {
namespace {

constexpr const char *kPrompt = "pmnode> ";
constexpr const char *kJsonFlag = "--json";

CommandError unknown_command(const std::string &name) {
  std::vector<std::string_view> names;
  for (const Command &command : commands()) {
    names.push_back(command.name);
  }
  return CommandError("there is no command '" + name + "'; expected one that 'help' lists" +
                      suggestion(name, names));
}

Answer run_help(Console &, const Arguments &arguments) {
  Answer answer;
  if (arguments.empty()) {
    Rows &rows = answer.rows("commands", {"command", "what_it_does"});
    for (const Command &command : commands()) {
      rows.add(std::string(command.name), std::string(command.help));
    }
    answer.remark("'help COMMAND' tells more; '--json' behind a command answers in JSON");
    return answer;
  }
  const Command *command = find_command(arguments[0]);
  if (command == nullptr) {
    throw unknown_command(arguments[0]);
  }
  answer.field("command", std::string(command->name))
      .field("arguments", command->arguments.empty() ? "none" : std::string(command->arguments))
      .field("what_it_does", std::string(command->help));
  if (!command->long_help.empty()) {
    answer.remark(std::string(command->long_help));
  }
  return answer;
}

Answer run_quit(Console &console, const Arguments &) {
  console.quit();
  return {};
}

constexpr Command kOwnCommands[] = {
    {"help", "[COMMAND]", "list the commands, or tell more about one", "", 0, 1, run_help},
    {"quit", "", "leave; a script ends here", "", 0, 0, run_quit}};

// What was printed on both sides since the marks, as single lines without line breaks.
struct PrintedSince {
  Node &node;
  std::vector<std::uint64_t> marks;

  explicit PrintedSince(Node &node_) : node(node_) {
    for (const auto &side : node.sides()) {
      marks.push_back(side->host.debug.total());
    }
  }

  void add_to(Answer &answer) const {
    Rows printed{"printed", {"instance", "text"}, {}};
    for (std::size_t side = 0; side < marks.size(); ++side) {
      for (const std::string &text : node.sides()[side]->host.debug.since(marks[side])) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
          line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
          if (!line.empty()) {
            printed.add(Hex{node.sides()[side]->cid}, printed_cell(line));
          }
        }
      }
    }
    if (!printed.rows.empty()) {
      answer.rows("printed", printed.columns) = std::move(printed);
    }
  }
};

}  // namespace

const std::vector<Command> &commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (const std::span<const Command> family :
         {query_commands(), ptp_commands(), find_commands(), change_commands(), owner_commands(),
          dbwin_commands(), watch_commands(), script_commands(), life_commands(),
          standby_commands(), fault_commands(), journal_commands(), panel_commands(),
          std::span<const Command>(kOwnCommands)}) {
      list.insert(list.end(), family.begin(), family.end());
    }
    return list;
  }();
  return all;
}

const Command *find_command(std::string_view name) {
  const auto found = std::find_if(commands().begin(), commands().end(),
                                  [&](const Command &command) { return command.name == name; });
  return found == commands().end() ? nullptr : &*found;
}

Console::Console(Node &node, std::ostream &out)
    : node_(node), out_(out), machine_{content_of_file, [](Answer &) {}} {}

Answer Console::perform(const Arguments &words) {
  const std::string name = words.empty() ? "" : words.front();
  const Command *command = find_command(name);
  if (command == nullptr) {
    throw unknown_command(name);
  }
  const Arguments arguments(words.begin() + 1, words.end());
  if (arguments.size() < command->least_arguments || arguments.size() > command->most_arguments) {
    const std::size_t count = arguments.size();
    throw CommandError("'" + name + "' has " + std::to_string(count) +
                       (count == 1 ? " argument" : " arguments") + "; expected " + name +
                       (command->most_arguments == 0 ? " alone" : " ") +
                       std::string(command->arguments));
  }
  if (!command->keeps_last) {
    script_.before_last = marks_of(node_);
    script_.last = {};
  }
  const PrintedSince printed(node_);
  Answer answer = command->run(*this, arguments);
  if (!answer.has_window()) {
    printed.add_to(answer);
  }
  machine_.settle_figures(answer);
  if (!command->keeps_last) {
    script_.last = answer;
  }
  return answer;
}

void Console::take(const NumberedLine &line, bool echo) {
  if (script_.block) {
    collect(line, echo);
    return;
  }
  line_number_ = line.number;
  ScriptInProgress::at_line(line.number);
  if (echo && !in_json_ && !words_of(line.text).empty()) {
    out_ << "\n" << kPrompt << line.text << "\n" << std::flush;
  }
  Arguments words = words_of(line.text, script_.variables);
  if (words.empty()) {
    return;
  }
  const bool json = words.back() == kJsonFlag;
  if (json) {
    words.pop_back();
  }
  const Answer answer = perform(words);
  if (in_json_) {
    out_ << as_json(answer, line.text) << std::endl;
  } else {
    out_ << (json ? as_json(answer) + "\n" : as_text(answer, on_terminal_)) << std::flush;
  }
}

// Keeps a line of the block that is open, and carries the block out when it closes.
void Console::collect(const NumberedLine &line, bool echo) {
  const Arguments words = words_of(line.text);
  const std::string first = words.empty() ? "" : words.front();
  if (first == "repeat") {
    ++script_.block->depth;
  } else if (first == "end") {
    --script_.block->depth;
  }
  if (script_.block->depth != 0) {
    script_.block->lines.push_back(line);
    return;
  }
  const Block block = std::move(*script_.block);
  script_.block.reset();
  for (u32 time = 0; time < block.times; ++time) {
    if (!block.counter.empty()) {
      script_.variables[block.counter] = std::to_string(time);
    }
    for (const NumberedLine &inner : block.lines) {
      if (quitting_) {
        return;
      }
      take_in_round(inner, echo, time + 1, block.times);
    }
  }
}

// A complaint about a line that is carried out several times says which time it was.
void Console::take_in_round(const NumberedLine &line, bool echo, u32 round, u32 rounds) {
  try {
    take(line, echo);
  } catch (const CommandError &error) {
    if (rounds == 1) {
      throw;
    }
    throw CommandError(std::string(error.what()) + " (round " + std::to_string(round) + " of " +
                       std::to_string(rounds) + ")");
  }
}

void Console::run_script(std::istream &script, const std::string &file, bool echo) {
  const auto fail = [&](unsigned number, const std::string &what) {
    out_ << std::flush;
    throw InputError(file + ":" + std::to_string(number) + ": " + what);
  };
  const ScriptInProgress in_progress(file.c_str());
  std::string line;
  for (unsigned number = 1; !quitting_ && std::getline(script, line); ++number) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    tell(line, echo ? Source::script : Source::pipe);
    try {
      take({number, line}, echo);
    } catch (const CommandError &error) {
      fail(line_number_, error.what());
    }
  }
  if (script_.block) {
    fail(script_.block->begun_at, "'repeat' is not closed; expected a line 'end'");
  }
}

void Console::run_prompt(const LineReader &read) {
  while (!quitting_) {
    const std::optional<std::string> line = read(kPrompt);
    if (!line) {
      return;
    }
    run_line(*line, Source::prompt);
  }
}

void Console::tell(const std::string &line, Source source) const {
  if (observer_ && !words_of(line).empty()) {
    observer_(line, source);
  }
}

void Console::run_line(const std::string &line, Source source) {
  tell(line, source);
  try {
    take({0, line}, source == Source::script);
  } catch (const CommandError &error) {
    if (source != Source::prompt) {
      throw;
    }
    out_ << "error: " << error.what() << std::endl;
  }
}

}  // namespace node
