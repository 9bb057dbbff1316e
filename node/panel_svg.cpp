// The picture of a front panel: shelves of boards, the ports in columns on their boards, a legend.
#include <algorithm>
#include <sstream>

#include "node/panel_pieces.hpp"

namespace node {
namespace {

constexpr int kMargin = 48;
constexpr int kTitleHeight = 112;
constexpr int kSlotsPerShelf = 17;
constexpr int kLeastWidth = 2'000;
constexpr int kRowsPerColumn = 24;
constexpr int kInnerRowsPerColumn = 8;
constexpr int kCellWidth = 72;       // room for the port's number and the mark of its state
constexpr int kWideCellWidth = 116;  // and for the count of what is behind the port
constexpr int kSlotGap = 10;
constexpr int kShelfHead = 96;
constexpr int kShelfFoot = 24;
constexpr int kBoardHead = 44;
constexpr int kBoardFoot = 70;
constexpr int kSeparator = 14;
constexpr int kChipPitch = 30;
constexpr int kLegendLine = 60;

int divided_up(int value, int by) {
  return (value + by - 1) / by;
}

// A port that is in virtual system 0 alone has no outline: that is where most are.
bool outlined(const PanelPort &port, unsigned id) {
  return port.vs_mask != 1 && (port.vs_mask >> id & 1) != 0;
}

std::vector<unsigned> systems_on(const PanelBoard &board) {
  std::vector<unsigned> systems;
  for (unsigned id = 0; id < PM_VS_NUM; ++id) {
    if (std::any_of(board.ports.begin(), board.ports.end(),
                    [&](const PanelPort &port) { return outlined(port, id); })) {
      systems.push_back(id);
    }
  }
  return systems;
}

struct Cell {
  int column = 0;
  int row = 0;  // inner ports count anew
  bool inner = false;
};

// How a board's ports stand: in columns from top to bottom, the inner ones below the others.
struct Columns {
  int outer = 0;
  int inner = 0;
  int count = 1;
  int outer_rows = 0;
  int inner_rows = 0;

  explicit Columns(const PanelBoard &board)
      : outer(board.outer_ports), inner(static_cast<int>(board.ports.size()) - outer) {
    count =
        std::max({1, divided_up(outer, kRowsPerColumn), divided_up(inner, kInnerRowsPerColumn)});
    outer_rows = divided_up(outer, count);
    inner_rows = divided_up(inner, count);
  }
  Cell cell(int port) const {
    return port < outer ? Cell{port / outer_rows, port % outer_rows, false}
                        : Cell{(port - outer) / inner_rows, (port - outer) % inner_rows, true};
  }
};

// The measures that all boards of a panel share. A board is as wide as its columns need; one slot
// of a shelf is never narrower than two columns.
struct Measures {
  int lane = 3;  // distance between the outlines of two virtual systems
  int lanes = 1;
  int outer_rows = 4;
  int inner_rows = 0;
  int cell = kCellWidth;
  int shelf_width = 0;  // of the widest shelf

  explicit Measures(const Panel &panel) {
    for (const PanelFrame &frame : panel.frames) {
      for (const auto &board : frame.slots) {
        if (board) {
          take(*board);
        }
      }
    }
    lane = lanes > 3 ? 2 : 3;
    for (const PanelFrame &frame : panel.frames) {
      int width = 0;
      for (std::size_t slot = 0; slot < frame.slots.size(); ++slot) {
        width = slot % kSlotsPerShelf == 0 ? kSlotGap + kMargin : width;
        width += board_width(frame.slots[slot]) + kSlotGap;
        shelf_width = std::max(shelf_width, width);
      }
    }
  }
  void take(const PanelBoard &board) {
    const Columns own(board);
    lanes = std::max(lanes, static_cast<int>(systems_on(board).size()));
    outer_rows = std::max(outer_rows, own.outer_rows);
    inner_rows = std::max(inner_rows, own.inner_rows);
    if (own.count > 1 && std::any_of(board.ports.begin(), board.ports.end(),
                                     [](const PanelPort &port) { return port.behind != 0; })) {
      cell = kWideCellWidth;
    }
  }
  int row_pitch() const { return kPortHeight + 2 * lanes * lane; }
  int column_gap() const { return 2 * lanes * lane + lane + 2; }
  int padding() const { return lanes * lane + 8; }
  int inside(const std::optional<PanelBoard> &board) const {
    const int columns = std::max(2, board ? Columns(*board).count : 0);
    return columns * cell + (columns - 1) * column_gap();
  }
  int board_width(const std::optional<PanelBoard> &board) const {
    return inside(board) + 2 * padding();
  }
  int inner_top() const { return kBoardHead + padding() + outer_rows * row_pitch() + kSeparator; }
  int board_height() const { return inner_top() + inner_rows * row_pitch() + kBoardFoot; }
  int shelf_height() const { return kShelfHead + board_height() + kShelfFoot; }
  int width() const { return std::max(kLeastWidth, shelf_width + 2 * kMargin); }
};

class BoardPicture {
 public:
  BoardPicture(const std::optional<PanelBoard> &board, const Measures &measures, int x, int y)
      : board_(board), measures_(measures), columns_(*board), x_(x), y_(y) {
    cell_width_ =
        (measures.inside(board) - (columns_.count - 1) * measures.column_gap()) / columns_.count;
  }

  void draw(const std::string &place, std::ostream &out) const {
    const int width = measures_.board_width(board_);
    const int middle = x_ + width / 2;
    constexpr int kLetterWidth = 13;
    out << "<g class=\"board\">" << titled(place + " " + board_->kind + ": " + sum()) << "\n"
        << rect(x_, y_, width, measures_.board_height(), " class=\"face\" rx=\"6\"")
        << rect(x_, y_, width, kBoardHead - 8, " class=\"kind-band\" rx=\"6\"")
        << text("kind", middle, y_ + 25, shortened(board_->kind, width / kLetterWidth)) << "\n";
    if (columns_.inner != 0) {
      const int line = y_ + measures_.inner_top() - kSeparator / 2 - 3;
      out << "<path class=\"line\" d=\"M" << x_ + 8 << "," << line << "h" << width - 16 << "\"/>\n";
    }
    for (int port = 0; port < columns_.outer + columns_.inner; ++port) {
      draw_port(place, port, out);
    }
    const std::vector<unsigned> systems = systems_on(*board_);
    for (std::size_t lane = 0; lane < systems.size(); ++lane) {
      draw_outlines(systems[lane], measures_.lane * static_cast<int>(systems.size() - lane), out);
    }
    const int foot = y_ + measures_.board_height() - kBoardFoot;
    out << text("sum", middle, foot + 26, sum());
    const int systems_here = std::max(1, static_cast<int>(systems.size()));
    const int pitch = std::min(kChipPitch, width / systems_here);
    int chip_x = middle - pitch * systems_here / 2 + 2;
    for (const unsigned id : systems) {
      out << chip(id, chip_x, foot + 38, pitch - 4);
      chip_x += pitch;
    }
    out << "</g>\n";
  }

 private:
  const std::optional<PanelBoard> &board_;
  const Measures &measures_;
  Columns columns_;
  int x_;
  int y_;
  int cell_width_ = 0;

  int cell_x(const Cell &cell) const {
    return x_ + measures_.padding() + cell.column * (cell_width_ + measures_.column_gap());
  }
  int cell_y(const Cell &cell) const {
    const int top = cell.inner ? measures_.inner_top() : kBoardHead + measures_.padding();
    return y_ + top + cell.row * measures_.row_pitch();
  }
  const PanelPort &port(int number) const {
    return board_->ports[static_cast<std::size_t>(number)];
  }

  std::string sum() const {
    const auto in = [&](PortState state) {
      return std::count_if(board_->ports.begin(), board_->ports.end(),
                           [&](const PanelPort &port) { return port.state == state; });
    };
    const auto up = in(PortState::up);
    if (up + in(PortState::down) == 0) {
      return "no link to show";
    }
    return std::to_string(up) + " of " + std::to_string(up + in(PortState::down)) + " up";
  }

  void draw_port(const std::string &place, int number, std::ostream &out) const {
    const PanelPort &here = port(number);
    const Cell cell = columns_.cell(number);
    std::string title = place + "/" + std::to_string(number) + ": " + name_of(here.state);
    if (here.state != PortState::absent) {
      title += ", PTP " + std::to_string(here.ptp) + ", " + here.type;
    }
    std::string count;
    if (here.behind != 0) {
      count = std::to_string(here.behind_up) + "/" + std::to_string(here.behind);
      title += ", " + count + " up behind it";
    }
    out << box(here.state, cell_x(cell), cell_y(cell), cell_width_, std::to_string(number), count,
               title);
  }

  // One outline around each run of members in a column.
  void draw_outlines(unsigned id, int distance, std::ostream &out) const {
    const int ports = columns_.outer + columns_.inner;
    for (int first = 0; first < ports; ++first) {
      if (!outlined(port(first), id)) {
        continue;
      }
      const Cell start = columns_.cell(first);
      int last = first;
      while (last + 1 < ports && outlined(port(last + 1), id) &&
             columns_.cell(last + 1).column == start.column &&
             columns_.cell(last + 1).inner == start.inner) {
        ++last;
      }
      const int bottom = cell_y(columns_.cell(last)) + kPortHeight;
      out << outline(id, cell_x(start) - distance, cell_y(start) - distance,
                     cell_width_ + 2 * distance, bottom - cell_y(start) + 2 * distance);
      first = last;
    }
  }
};

void draw_slot(const std::optional<PanelBoard> &board, const std::string &place,
               const Measures &measures, int x, int y, std::ostream &out) {
  const int width = measures.board_width(board);
  out << text("slot-name", x + width / 2, y - 10, place);
  if (board) {
    BoardPicture(board, measures, x, y).draw(place, out);
    return;
  }
  out << "<g class=\"empty\">" << rect(x, y, width, measures.board_height(), " rx=\"6\"")
      << text("", x + width / 2, y + measures.board_height() / 2, "empty") << "</g>\n";
}

// Slots `first` and on of a frame, as many as a shelf has.
void draw_shelf(const PanelFrame &frame, int first, const Measures &measures, int y,
                std::ostream &out) {
  constexpr int kScrew = 7;
  const int slots = static_cast<int>(frame.slots.size());
  const int last = std::min(slots, first + kSlotsPerShelf);
  const int width = measures.shelf_width;
  const auto boards = std::count_if(frame.slots.begin(), frame.slots.end(),
                                    [](const auto &board) { return board.has_value(); });
  out << "<g class=\"frame\">"
      << rect(kMargin, y, width, measures.shelf_height(), " class=\"shelf\" rx=\"12\"") << "\n"
      << text("shelf-name", kMargin + kMargin / 2, y + 42, "Frame " + std::to_string(frame.id))
      << text("shelf-note", kMargin + kMargin / 2 + 150, y + 42,
              std::to_string(slots) + " slots, " + std::to_string(boards) + " boards");
  for (const int screw_y : {y + 16, y + measures.shelf_height() - 16}) {
    for (const int screw_x : {kMargin + 14, kMargin + width - 14}) {
      out << "<circle class=\"screw\" cx=\"" << screw_x << "\" cy=\"" << screw_y << "\" r=\""
          << kScrew << "\"/>";
    }
  }
  out << "\n";
  int x = kMargin + kMargin / 2 + kSlotGap;
  for (int slot = first; slot < last; ++slot) {
    const auto &board = frame.slots[static_cast<std::size_t>(slot)];
    draw_slot(board, std::to_string(frame.id) + "/" + std::to_string(slot), measures, x,
              y + kShelfHead, out);
    x += measures.board_width(board) + kSlotGap;
  }
  out << "</g>\n";
}

// What the marks and outlines mean, with how many ports have them.
class Legend {
 public:
  Legend(int width, int y, std::ostream &out) : width_(width), y_(y), out_(out) {}

  void state(PortState state, unsigned ports) {
    const int x = room(name_of(state), ports);
    out_ << box(state, x, y_, kCellWidth, "0") << label(x, name_of(state), ports);
  }
  // Virtual system 0 has its number only: its ports have no outline unless another one shares them.
  void system(unsigned id, unsigned ports) {
    const std::string name = "virtual system " + std::to_string(id);
    const int x = room(name, ports);
    if (id != 0) {
      out_ << outline(id, x + 3, y_ - 3, kCellWidth - 6, kPortHeight + 6);
    }
    out_ << chip(id, x + kCellWidth / 2 - 13, y_, kChipPitch - 4) << label(x, name, ports);
  }
  void note(const std::string &words) {
    constexpr int kNoteLine = 36;
    y_ += y_ == noted_ ? kNoteLine : kLegendLine;
    noted_ = y_;
    out_ << text("note", kMargin, y_ + 18, words) << "\n";
  }
  void next_line() {
    x_ = kMargin;
    y_ += kLegendLine;
  }
  int end() const { return y_; }

 private:
  int width_;
  int y_;
  int x_ = kMargin;
  int noted_ = -1;  // where the last note stands
  std::ostream &out_;

  static std::string words(const std::string &name, unsigned ports) {
    return name + ": " + std::to_string(ports) + (ports == 1 ? " port" : " ports");
  }
  int room(const std::string &name, unsigned ports) {
    constexpr int kLetterWidth = 13;
    const int needed = kCellWidth + static_cast<int>(words(name, ports).size()) * kLetterWidth + 48;
    if (x_ + needed > width_ - kMargin) {
      next_line();
    }
    const int x = x_;
    x_ += needed;
    return x;
  }
  std::string label(int x, const std::string &name, unsigned ports) const {
    return text("", x + kCellWidth + 12, y_ + 19, words(name, ports)) + "\n";
  }
};

int draw_legend(const Panel &panel, int width, int y, std::ostream &out) {
  Legend legend(width, y, out);
  out << "<g class=\"legend\">\n";
  for (std::size_t state = 0; state < kPortStates; ++state) {
    if (panel.ports[state] != 0 || static_cast<PortState>(state) != PortState::unknown) {
      legend.state(static_cast<PortState>(state), panel.ports[state]);
    }
  }
  legend.next_line();
  for (unsigned id = 0; id < PM_VS_NUM; ++id) {
    if (panel.vs_ports[id] != 0) {
      legend.system(id, panel.vs_ports[id]);
    }
  }
  legend.note(
      "Ports in virtual system 0 alone have no outline; numbers at a board's foot name the "
      "others.");
  legend.note(
      "Ports below a board's line are inner ports. 3/32 on a port: 3 of 32 PTPs behind it are up.");
  out << "</g>\n";
  return legend.end() + kLegendLine;
}

std::string summary(const Panel &panel) {
  unsigned ports = 0;
  for (const unsigned number : panel.ports) {
    ports += number;
  }
  std::string words = std::to_string(panel.boards) + " boards, " + std::to_string(ports) +
                      " ports, " + std::to_string(panel.ports[0]) + " up";
  if (panel.behind != 0) {
    words += "; " + std::to_string(panel.behind) + " PTPs behind ports, " +
             std::to_string(panel.behind_up) + " up";
  }
  return words + "; control boards " + panel.roles;
}

}  // namespace

void draw(const Panel &panel, std::ostream &out) {
  const Measures measures(panel);
  int shelves = 0;
  for (const PanelFrame &frame : panel.frames) {
    shelves += divided_up(static_cast<int>(frame.slots.size()), kSlotsPerShelf);
  }
  const int width = measures.width();
  const int legend_y = kTitleHeight + shelves * (measures.shelf_height() + kShelfFoot) + kShelfFoot;
  std::ostringstream legend;
  const int height = draw_legend(panel, width, legend_y, legend);
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" width=\"" << width / 2
      << "\" height=\"" << height / 2 << "\" viewBox=\"0 0 " << width << " " << height << "\">\n"
      << titled("Front panel of " + panel.name) << "\n"
      << panel_style() << rect(0, 0, width, height, " class=\"page\"") << "\n"
      << text("name", kMargin, 62, panel.name) << text("note", kMargin, 96, summary(panel)) << "\n";
  int y = kTitleHeight + kShelfFoot / 2;
  for (const PanelFrame &frame : panel.frames) {
    for (int first = 0; first < static_cast<int>(frame.slots.size()); first += kSlotsPerShelf) {
      draw_shelf(frame, first, measures, y, out);
      y += measures.shelf_height() + kShelfFoot;
    }
  }
  out << legend.str() << "</svg>\n";
}

}  // namespace node
