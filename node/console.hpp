// The console: commands by name, from a prompt, a script or a test.
#ifndef NODE_CONSOLE_HPP
#define NODE_CONSOLE_HPP

#include <functional>
#include <iosfwd>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "node/answer.hpp"
#include "node/node.hpp"
#include "node/script_state.hpp"
#include "node/source.hpp"
#include "node/words.hpp"

namespace node {

// A command that cannot be carried out as it was given.
struct CommandError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Console;

// Where a console meets the machine it runs on: what a file holds, and figures of the machine in an
// answer. A recording keeps them, a replay puts in what was recorded.
struct Machine {
  std::function<std::optional<std::string>(const std::string &file)> content_of;
  std::function<void(Answer &answer)> settle_figures;
};

constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

struct Command {
  std::string_view name;
  std::string_view arguments;  // "ID | FRAME/SLOT/PORT"; empty when it takes none
  std::string_view help;       // one line
  std::string_view long_help;  // what one line cannot say; may be empty
  std::size_t least_arguments;
  std::size_t most_arguments;
  Answer (*run)(Console &console, const Arguments &arguments);
  // Speaks about the last answer, so it does not become the last one itself.
  bool keeps_last = false;
};

class Console {
 public:
  Console(Node &node, std::ostream &out);

  Node &node() { return node_; }
  bool quitting() const { return quitting_; }
  void quit() { quitting_ = true; }

  // Carries out one line and prints its answer and what the library and the products printed
  // meanwhile. A trailing --json renders all of it as one line of JSON. An empty line or a comment
  // does nothing. The lines between `repeat` and `end` are carried out at the latter.
  void run_line(const std::string &line) { take({0, line}, false); }
  // The same for a line that comes from there, which is shown and complained about accordingly.
  void run_line(const std::string &line, Source source);
  // The observer is told every line that says something before it is carried out.
  using LineObserver = std::function<void(const std::string &line, Source source)>;
  void observe_lines(LineObserver observer) { observer_ = std::move(observer); }
  // Every line of a script until its end or `quit`. The first error is an InputError that names
  // `file` and the line.
  void run_script(std::istream &script, const std::string &file, bool echo);
  // Carries out the lines that `read` answers to a prompt, until it answers none or `quit`; errors
  // are printed.
  using LineReader = std::function<std::optional<std::string>(const std::string &prompt)>;
  void run_prompt(const LineReader &read);
  // The output goes to a terminal: bytes of the debug window are shown as UTF-8.
  void show_on_terminal() { on_terminal_ = true; }
  // Every answer is a line of JSON that begins with the line it answers; no line is shown.
  void answer_in_json() { in_json_ = true; }

  // Carries out a command without printing its answer.
  Answer perform(const Arguments &words);
  ScriptState &script() { return script_; }
  Machine &machine() { return machine_; }
  unsigned line_number() const { return line_number_; }

 private:
  Node &node_;
  std::ostream &out_;
  bool quitting_ = false;
  bool on_terminal_ = false;
  bool in_json_ = false;
  Machine machine_;
  ScriptState script_;
  unsigned line_number_ = 0;  // of the line being carried out; 0 at a prompt

  LineObserver observer_;

  void tell(const std::string &line, Source source) const;
  void take(const NumberedLine &line, bool echo);
  void collect(const NumberedLine &line, bool echo);
  void take_in_round(const NumberedLine &line, bool echo, u32 round, u32 rounds);
};

// Every command, in the order of `help`.
const std::vector<Command> &commands();
const Command *find_command(std::string_view name);

// The families, each in its own file.
std::span<const Command> query_commands();
std::span<const Command> ptp_commands();
std::span<const Command> find_commands();
std::span<const Command> change_commands();
std::span<const Command> owner_commands();
std::span<const Command> dbwin_commands();
std::span<const Command> watch_commands();
std::span<const Command> script_commands();
std::span<const Command> life_commands();
std::span<const Command> standby_commands();
std::span<const Command> fault_commands();
std::span<const Command> journal_commands();
std::span<const Command> panel_commands();

// Readers of arguments; anything else than what is asked for is a CommandError.
u32 number_argument(const std::string &text, u32 lowest, u32 highest, std::string_view what);
host::Bytes bytes_argument(const std::string &text, std::string_view what);
// A PTP by its ID or by FRAME/SLOT/PORT, which is looked up on the active side.
u16 ptp_argument(Console &console, const std::string &text);
// FRAME/SLOT/PORT.
struct Place {
  u16 frame = 0;
  u8 slot = 0;
  u8 port = 0;
};
Place place_argument(const std::string &text);
// A port type by its value or by the name that the chassis gives it.
u16 type_argument(Console &console, const std::string &text);
// A board by its index or by FRAME/SLOT; it need not be there.
u16 board_argument(Console &console, const std::string &text);
// FRAME/SLOT/PORT/ONT.
PmFspOntid object_argument(const std::string &text);
// A host function by its name.
host::Fn function_argument(const std::string &text);
std::vector<std::string_view> function_names();
// The arguments from `first` on as one text, as they were written but for the number of blanks.
std::string text_argument(const Arguments &arguments, std::size_t first);

// "PM_ERR_PTP_NOT_EXIST (0x6908ad)", "ok", or the number alone.
std::string result_text(u32 code);
// "PM_ERR_PTP_NOT_EXIST", or "-" for a number that is no result of a failure.
std::string result_name(u32 code);

}  // namespace node

#endif
