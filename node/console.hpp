// The console: commands by name, from a prompt, a script or a test.
#ifndef NODE_CONSOLE_HPP
#define NODE_CONSOLE_HPP

#include <iosfwd>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "node/answer.hpp"
#include "node/node.hpp"

namespace node {

// A command that cannot be carried out as it was given.
struct CommandError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Console;
using Arguments = std::vector<std::string>;

struct Command {
  std::string_view name;
  std::string_view arguments;  // "ID | FRAME/SLOT/PORT"; empty when it takes none
  std::string_view help;       // one line
  std::string_view long_help;  // what one line cannot say; may be empty
  std::size_t least_arguments;
  std::size_t most_arguments;
  Answer (*run)(Console &console, const Arguments &arguments);
};

class Console {
 public:
  Console(Node &node, std::ostream &out) : node_(node), out_(out) {}

  Node &node() { return node_; }
  bool quitting() const { return quitting_; }
  void quit() { quitting_ = true; }

  // Carries out one line and prints its answer and what the library and the products printed
  // meanwhile. A trailing --json renders all of it as one line of JSON. An empty line or a comment
  // does nothing.
  void run_line(const std::string &line);
  // Every line of a script until its end or `quit`. The first error is an InputError that names
  // `file` and the line.
  void run_script(std::istream &script, const std::string &file, bool echo);
  // Reads and carries out lines until the end of the input or `quit`; errors are printed.
  void run_prompt(std::istream &in);

 private:
  Node &node_;
  std::ostream &out_;
  bool quitting_ = false;
};

// Every command, in the order of `help`.
const std::vector<Command> &commands();
const Command *find_command(std::string_view name);

// The families, each in its own file.
std::span<const Command> query_commands();
std::span<const Command> change_commands();
std::span<const Command> watch_commands();

// Readers of arguments; anything else than what is asked for is a CommandError.
u32 number_argument(const std::string &text, u32 lowest, u32 highest, std::string_view what);
host::Bytes bytes_argument(const std::string &text, std::string_view what);
// A PTP by its ID or by FRAME/SLOT/PORT, which is looked up on the active side.
u16 ptp_argument(Console &console, const std::string &text);

// "PM_ERR_PTP_NOT_EXIST (0x6908ad)", "ok", or the number alone.
std::string result_text(u32 code);

}  // namespace node

#endif
