#include "node/manual.hpp"

#include <sstream>

#include "node/commands_page.hpp"
#include "node/console.hpp"

namespace node {
namespace {

constexpr const char *kHead = R"(.\" Printed by pmnode --man.
.Dd November 23, 2026
.Dt PMNODE 1
.Os
.Sh NAME
.Nm pmnode
.Nd a port-management node of a chassis file on a workstation
)";

constexpr const char *kDescription = R"(.Sh DESCRIPTION
.Nm
brings up the instances of a node as its chassis file describes them, loads the products that are
to run on it, and carries out commands.
They come from a script, from the standard input or, at a terminal, from a prompt with completion
and history.
Time is virtual: it passes by the command
.Ic advance
and by whatever a fault lets take time.
.Pp
A script is a test: at the first command that cannot be carried out, and at the first expectation
that is not met, the run ends with exit code 1 and one line on the standard error output that names
file, line, what was wanted and what was got.
.Pp
.Nm
.Cm soak
lives a random life of a node that a seed determines, and compares every answer of the library with a
model of it;
.Nm
.Cm soak Fl -help
tells its options.
)";

constexpr const char *kTail = R"(.Sh ENVIRONMENT
.Bl -tag -width Ds
.It Ev PMNODE_HISTORY
The file that keeps the lines of the prompt,
.Pa ~/.pmnode_history
if it is not set.
.El
.Sh EXIT STATUS
.Bl -tag -width Ds
.It 0
Everything has been carried out.
.It 1
The start-up, a command, an expectation or the comparison of a replay with its recording failed.
.It 2
The command line or a file that it names is at fault; nothing was started.
.El
.Sh EXAMPLES
A node at its prompt:
.Dl $ pmnode --chassis desk.toml --product ./libmine.so
.Pp
A script as a test, and what happened in it:
.Dl $ pmnode --chassis desk.toml --script mine.pmn --record mine.jsonl --journal calls.txt
.Pp
The same life again, compared with what was recorded:
.Dl $ pmnode --chassis desk.toml --feed mine.jsonl
.Pp
One question, answered to a program:
.Dl $ echo 'ptp 17' | pmnode --chassis desk.toml --json
)";

// Text between macro lines: a backslash, and a control character at the beginning of a line, stand
// for themselves.
std::string plain(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    const bool begins_line = escaped.empty() || escaped.back() == '\n';
    if (begins_line && (c == '.' || c == '\'')) {
      escaped += "\\&";
    }
    escaped += c == '\\' ? "\\e" : std::string(1, c);
  }
  return escaped;
}

// Prose of Markdown: every sentence on a line of its own, what stands in backticks in bold.
std::string prose(std::string_view text) {
  std::string lines;
  bool bold = false;
  for (const char c : plain(text)) {
    const bool ends_sentence = lines.ends_with(". ") && c >= 'A' && c <= 'Z';
    if (ends_sentence) {
      lines.back() = '\n';
    }
    if (c == '`') {
      bold = !bold;
    }
    lines += c == '`' ? (bold ? "\\fB" : "\\fP") : std::string(1, c);
  }
  return lines;
}

// One argument of a macro.
std::string argument(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : plain(text)) {
    quoted += c == '"' ? "\"\"" : std::string(1, c);
  }
  return quoted + "\"";
}

// "Fl -chassis Ar FILE", for macros in front of it.
std::string macros_of(const OptionText &option) {
  const std::string flag = option.name.empty() ? "" : "Fl -" + option.name.substr(2);
  return flag + (flag.empty() || option.value.empty() ? "" : " ") +
         (option.value.empty() ? "" : "Ar " + option.value);
}

void add_synopsis(std::ostream &page, const OptionGroup &group) {
  page << ".Nm" << (group.subcommand.empty() ? "" : " " + group.subcommand) << "\n";
  for (const OptionText &option : group.options) {
    if (!option.value.empty()) {
      page << (option.required ? "." : ".Op ") << macros_of(option)
           << (option.repeated ? " ..." : "") << "\n";
    }
  }
}

void add_options(std::ostream &page, const OptionGroup &group) {
  page << (group.subcommand.empty() ? "" : ".Ss pmnode " + group.subcommand + "\n")
       << (group.what.empty() ? "" : prose(group.what) + ".\n") << ".Bl -tag -width Ds\n";
  for (const OptionText &option : group.options) {
    page << ".It " << macros_of(option) << "\n" << prose(option.what) << ".\n";
  }
  page << ".El\n";
}

// The paragraphs of a long help are set as they stand: they have columns of their own.
void add_command(std::ostream &page, const Command &command) {
  page << ".It Ic " << command.name
       << (command.arguments.empty() ? "" : " No " + argument(command.arguments)) << "\n"
       << plain(command.help) << "\n";
  if (command.long_help.empty()) {
    return;
  }
  page << ".Bd -literal\n";
  std::istringstream lines{std::string(command.long_help)};
  for (std::string line; std::getline(lines, line);) {
    page << plain(line.starts_with("  ") ? line.substr(2) : line) << "\n";
  }
  page << ".Ed\n";
}

}  // namespace

std::string manual_page(const std::vector<OptionGroup> &groups) {
  std::ostringstream page;
  page << kHead << ".Sh SYNOPSIS\n";
  for (const OptionGroup &group : groups) {
    add_synopsis(page, group);
  }
  page << ".Nm soak\n.Op Ar options\n" << kDescription << ".Sh OPTIONS\n";
  for (const OptionGroup &group : groups) {
    add_options(page, group);
  }
  page << ".Sh COMMANDS\n" << prose(commands_in_short) << ".Bl -tag -width Ds\n";
  for (const Command &command : commands()) {
    add_command(page, command);
  }
  page << ".El\n" << kTail;
  return page.str();
}

}  // namespace node
