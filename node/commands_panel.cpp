// The front panel as a picture.
#include <fstream>

#include "node/console.hpp"
#include "node/panel.hpp"

namespace node {
namespace {

Answer run_panel(Console &console, const Arguments &arguments) {
  const std::string &file = arguments[0];
  std::ofstream out(file, std::ios::binary);
  if (!out) {
    throw CommandError(file + ": cannot be opened; expected a file to write the picture to");
  }
  const Panel panel = panel_of(console.node());
  draw(panel, out);
  out.close();
  if (!out) {
    throw CommandError(file + ": cannot be written to its end; expected room for the picture");
  }
  Answer answer;
  answer.field("file", file).field("boards", panel.boards);
  for (std::size_t state = 0; state < kPortStates; ++state) {
    answer.field(name_of(static_cast<PortState>(state)), panel.ports[state]);
  }
  return answer.field("behind_ports", panel.behind).field("behind_ports_up", panel.behind_up);
}

constexpr Command kCommands[] = {
    {"panel", "FILE", "draw the front panel as an SVG picture",
     "  Frames, slots, boards, and each port with its state as the active instance tells it: up,\n"
     "  down, invisible, absent (it carries no PTP), or unknown (no product answers for its "
     "link).\n"
     "  An outline shows the virtual systems; the legend says the rest. The answer counts ports.",
     1, 1, run_panel}};

}  // namespace

std::span<const Command> panel_commands() {
  return kCommands;
}

}  // namespace node
