// Commands that make a script a test: variables, repetition, time and expectations about the last
// command.
#include <algorithm>

#include "node/console.hpp"
#include "node/expectation.hpp"

namespace node {
namespace {

constexpr u32 kMostRepeats = 1'000'000;

Answer run_set(Console &console, const Arguments &arguments) {
  Variables &variables = console.script().variables;
  Answer answer;
  if (arguments.empty()) {
    Rows &rows = answer.rows("variables", {"name", "value"});
    for (const auto &[name, value] : variables) {
      rows.add(name, value);
    }
    return answer;
  }
  const std::string &name = arguments[0];
  if (!is_variable_name(name)) {
    throw CommandError("'" + name + "' is no name of a variable; expected letters, digits and '_'");
  }
  if (arguments.size() == 1) {
    throw CommandError("'" + name + "' gets no value; expected set NAME VALUE or set NAME = FIELD");
  }
  if (arguments.size() == 2) {
    variables[name] = arguments[1];
  } else if (arguments[1] != "=") {
    throw CommandError("'" + arguments[1] + "' follows the name; expected '=' and a field");
  } else {
    const auto value = field_of(console.script().last, arguments[2]);
    if (!value) {
      throw CommandError("the last answer has no field '" + arguments[2] +
                         "'; expected one of its own: " + fields_of(console.script().last));
    }
    variables[name] = *value;
  }
  return answer.field("variable", name).field("value", variables[name]);
}

Answer run_expect(Console &console, const Arguments &arguments) {
  check_expectation(console, arguments);
  return Answer().field("met", true);
}

Answer run_repeat(Console &console, const Arguments &arguments) {
  Block block;
  block.times = number_argument(arguments[0], 0, kMostRepeats, "number of times");
  block.begun_at = console.line_number();
  if (arguments.size() > 1) {
    block.counter = arguments[1];
    if (!is_variable_name(block.counter)) {
      throw CommandError("'" + block.counter +
                         "' is no name of a variable; expected letters, digits and '_'");
    }
  }
  console.script().block = std::move(block);
  return {};
}

Answer run_end(Console &, const Arguments &) {
  throw CommandError("'end' closes nothing; expected 'repeat' before it");
}

Answer run_advance(Console &console, const Arguments &arguments) {
  const u32 ticks = number_argument(arguments[0], 0, 0xFFFFFFFF, "number of ticks");
  for (const auto &side : console.node().sides()) {
    side->host.clock.advance(ticks);
  }
  console.node().settle();
  return Answer().field("tick", console.node().active().host.clock.now());
}

constexpr Command kCommands[] = {
    {"advance", "TICKS", "let time pass, then do what is due", "", 1, 1, run_advance},
    {"set", "[NAME VALUE | NAME = FIELD]", "set a variable, or list all",
     "  FIELD is a field of the last answer by its name in JSON, or TABLE.ROW.COLUMN with rows\n"
     "  from 0, or TABLE.count. $NAME stands for the value in any later line, $$ for a dollar.",
     0, 3, run_set, true},
    {"expect", "[not] WHAT ARGUMENTS | fail COMMAND", "fail unless the last command did this",
     "  text TEXT            its answer contains TEXT\n"
     "  line TEXT            a line of its answer is TEXT, blanks around it aside\n"
     "  field NAME [OP] VAL  that field (see 'set') is VAL, or compares by = != < > <= >=\n"
     "  event TEXT           a product's event that contains TEXT has been delivered\n"
     "  error VALUE          an error record has the value, a number or a result's name\n"
     "  call NAME [TEXT]     that host call is in the journal, with TEXT in its line\n"
     "  fail COMMAND         the command that follows fails: it is not carried out, or its field\n"
     "                       'result' is not ok\n"
     "  The last command is the last one other than set, expect, repeat and end. An expectation\n"
     "  that is not met ends the script with exit code 1. See docs/scripts.md.",
     2, kAnyNumber, run_expect, true},
    {"repeat", "TIMES [NAME]", "carry out the lines until 'end' several times",
     "  The variable NAME counts from 0. Blocks may stand in blocks.", 1, 2, run_repeat, true},
    {"end", "", "close the lines that 'repeat' opened", "", 0, 0, run_end, true}};

}  // namespace

std::span<const Command> script_commands() {
  return kCommands;
}

}  // namespace node
