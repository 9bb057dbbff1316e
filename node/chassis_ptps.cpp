// The chassis file: boards in slots, the PTPs they carry, what stands behind their ports, and which
// PTPs are invisible, in which virtual systems they are and how they are described.
#include <algorithm>

#include "node/chassis_file.hpp"

namespace node {
namespace {

std::string place_text(const Ptp &ptp) {
  std::string text =
      std::to_string(ptp.frame) + "/" + std::to_string(ptp.slot) + "/" + std::to_string(ptp.port);
  if (ptp.ont) {
    text += " ONT " + std::to_string(*ptp.ont);
  }
  return text;
}

// The next PTP ID, counted on from the last one or from a table's `ptp`.
struct Numbering {
  unsigned next = 0;
};

void add_ptp(Loader &loader, Position at, unsigned id, Ptp ptp) {
  Chassis &chassis = loader.chassis;
  const unsigned highest = chassis.specification.max_ptp;
  if (id > highest) {
    loader.document.fail(
        at,
        "PTP " + std::to_string(id) + " at " + place_text(ptp) + " is beyond the maximum PTP ID",
        "0 to " + std::to_string(highest));
  }
  if (id >= chassis.virtual_first && id < chassis.virtual_first + unsigned{chassis.virtual_count}) {
    loader.document.fail(
        at, "PTP " + std::to_string(id) + " at " + place_text(ptp) + " lies among the virtual PTPs",
        "an ID outside [virtual_ptps]");
  }
  ptp.id = static_cast<u16>(id);
  const auto [same_id, new_id] = loader.by_id.emplace(id, chassis.ptps.size());
  if (!new_id) {
    loader.document.fail(at,
                         "PTP " + std::to_string(id) + " is at " +
                             place_text(chassis.ptps[same_id->second]) + " and at " +
                             place_text(ptp),
                         "each ID once");
  }
  const auto [same_place, new_place] = loader.by_place.emplace(
      std::tuple(ptp.frame, ptp.slot, ptp.port, ptp.ont ? int{*ptp.ont} : -1), chassis.ptps.size());
  if (!new_place) {
    loader.document.fail(at,
                         "two PTPs on port " + place_text(ptp) + ", " +
                             std::to_string(chassis.ptps[same_place->second].id) + " and " +
                             std::to_string(id),
                         "one");
  }
  chassis.ptps.push_back(std::move(ptp));
}

std::size_t kind_of(const Loader &loader, const Table &table) {
  const std::string name = table.text("kind");
  std::string expected;
  const std::vector<BoardKind> &kinds = loader.chassis.kinds;
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    if (kinds[kind].name == name) {
      return kind;
    }
    expected += (expected.empty() ? "" : ", ") + kinds[kind].name;
  }
  table.fail(table.at("kind"), "board kind '" + name + "' is not defined",
             expected.empty() ? "a [[board_kind]]" : expected);
}

void place_board(Loader &loader, const Table &table, const Board &board, Position at) {
  if (const Board *there = loader.chassis.board(board.frame, board.slot)) {
    table.fail(at,
               "slot " + std::to_string(board.slot) + " of frame " + std::to_string(board.frame) +
                   " holds a board already (" + loader.chassis.kinds[there->kind].name + ")",
               "each slot once");
  }
  loader.chassis.boards.push_back(board);
}

void read_boards(Loader &loader, const Table &root, Numbering &numbering) {
  for (const Value *value : root.tables("board")) {
    const Table table(loader.document, *value, "[[board]]",
                      {"kind", "frame", "slots", "ptp", "ptp_step"});
    Board board;
    board.kind = kind_of(loader, table);
    const Frame &frame = loader.known_frame(table);
    board.frame = frame.id;
    const BoardKind &kind = loader.chassis.kinds[board.kind];
    const unsigned step =
        table.number_or("ptp_step", static_cast<unsigned>(kind.ports.size()), 0xFFFF, 0);
    unsigned first = table.number_or("ptp", 0, 0xFFFE, numbering.next);
    const NumberList slots = table.list("slots", 0, frame.slots - 1u);
    for (const unsigned slot : slots.numbers) {
      board.slot = static_cast<u8>(slot);
      place_board(loader, table, board, slots.at);
      numbering.next = first;
      for (std::size_t number = 0; number < kind.ports.size(); ++number) {
        const KindPort &port = kind.ports[number];
        if (!port.type) {
          continue;
        }
        Ptp ptp;
        ptp.frame = board.frame;
        ptp.slot = board.slot;
        ptp.port = static_cast<u8>(number);
        ptp.type = *port.type;
        ptp.invisible = port.invisible;
        ptp.link_trap = port.link_trap;
        add_ptp(loader, table.at("ptp"), numbering.next++, std::move(ptp));
      }
      first = step == 0 ? numbering.next : first + step;
    }
  }
}

// The board in a slot that a table names; `at` is where it does.
const BoardKind &kind_in(const Loader &loader, Position at, unsigned frame, unsigned slot) {
  const Board *board = loader.chassis.board(static_cast<u16>(frame), static_cast<u8>(slot));
  if (board == nullptr) {
    loader.document.fail(
        at, "slot " + std::to_string(slot) + " of frame " + std::to_string(frame) + " is empty",
        "a slot with a board");
  }
  return loader.chassis.kinds[board->kind];
}

void refuse_absent_port(const Loader &loader, Position at, const BoardKind &kind, unsigned port) {
  if (port >= kind.ports.size()) {
    loader.document.fail(at, "board kind '" + kind.name + "' has no port " + std::to_string(port),
                         "0 to " + std::to_string(kind.ports.size() - 1));
  }
}

// Replaces {kind}, {type}, {frame}, {slot}, {port} and {ont}.
std::string described(const Loader &loader, const std::string &pattern, Position at,
                      const Ptp &ptp) {
  const Board *board = loader.chassis.board(ptp.frame, ptp.slot);
  const std::pair<std::string_view, std::string> names[] = {
      {"kind", board == nullptr ? "" : loader.chassis.kinds[board->kind].name},
      {"type", loader.chassis.port_types[ptp.type].name},
      {"frame", std::to_string(ptp.frame)},
      {"slot", std::to_string(ptp.slot)},
      {"port", std::to_string(ptp.port)},
      {"ont", ptp.ont ? std::to_string(*ptp.ont) : ""}};
  std::string text;
  for (std::size_t position = 0; position < pattern.size();) {
    const std::size_t open = std::min(pattern.find('{', position), pattern.size());
    text.append(pattern, position, open - position);
    if (open == pattern.size()) {
      break;
    }
    const std::size_t close = std::min(pattern.find('}', open), pattern.size());
    const std::string name = pattern.substr(open + 1, close - open - 1);
    const auto *found = std::find_if(std::begin(names), std::end(names),
                                     [&](const auto &entry) { return entry.first == name; });
    if (close == pattern.size() || found == std::end(names)) {
      loader.document.fail(at, "'{" + name + "' in a description names nothing",
                           "{kind}, {type}, {frame}, {slot}, {port} or {ont}");
    }
    text += found->second;
    position = close + 1;
  }
  const unsigned longest = loader.chassis.specification.description_length;
  if (text.empty() || text.size() > longest) {
    loader.document.fail(
        at, "the description \"" + text + "\" has " + std::to_string(text.size()) + " characters",
        "1 to " + std::to_string(longest));
  }
  return text;
}

void read_single_ptps(Loader &loader, const Table &root) {
  for (const Value *value : root.tables("ptp")) {
    const Table table(
        loader.document, *value, "[[ptp]]",
        {"id", "frame", "slot", "port", "type", "invisible", "link_trap", "description"});
    const Frame &frame = loader.known_frame(table);
    Ptp ptp;
    ptp.frame = frame.id;
    ptp.slot = static_cast<u8>(table.number("slot", 0, frame.slots - 1u));
    ptp.port = static_cast<u8>(table.number("port", 0, 254));
    ptp.type = loader.port_type(table);
    ptp.invisible = table.flag_or("invisible", false);
    ptp.link_trap = table.flag_or("link_trap", true);
    refuse_absent_port(loader, table.at("port"),
                       kind_in(loader, table.at("slot"), ptp.frame, ptp.slot), ptp.port);
    if (table.has("description")) {
      ptp.description = described(loader, table.text("description"), table.at("description"), ptp);
    }
    add_ptp(loader, table.at("id"), table.number("id", 0, 0xFFFE), std::move(ptp));
  }
}

void read_onts(Loader &loader, const Table &root, Numbering &numbering) {
  for (const Value *value : root.tables("ont")) {
    const Table table(loader.document, *value, "[[ont]]",
                      {"frame", "slots", "ports", "count", "type", "ptp", "invisible"});
    const Frame &frame = loader.known_frame(table);
    Ptp ptp;
    ptp.frame = frame.id;
    ptp.type = loader.port_type(table);
    ptp.invisible = table.flag_or("invisible", false);
    const unsigned count = table.number("count", 1, 255);
    numbering.next = table.number_or("ptp", 0, 0xFFFE, numbering.next);
    const NumberList slots = table.list("slots", 0, frame.slots - 1u);
    const NumberList ports = table.list("ports", 0, 254);
    for (const unsigned slot : slots.numbers) {
      const BoardKind &kind = kind_in(loader, slots.at, frame.id, slot);
      for (const unsigned port : ports.numbers) {
        refuse_absent_port(loader, ports.at, kind, port);
        for (unsigned ont = 0; ont < count; ++ont) {
          ptp.slot = static_cast<u8>(slot);
          ptp.port = static_cast<u8>(port);
          ptp.ont = static_cast<u8>(ont);
          add_ptp(loader, table.at("ptp"), numbering.next++, ptp);
        }
      }
    }
  }
}

// Calls `apply` for every PTP that a table picks with frame, slots and ports; slots and ports that
// are left out mean all.
template <class Apply>
void for_picked(Loader &loader, const Table &table, Apply apply) {
  const Frame &frame = loader.known_frame(table);
  const auto picked = [&](std::string_view key, unsigned last) {
    std::vector<bool> flags(256, !table.has(key));
    if (table.has(key)) {
      for (const unsigned number : table.list(key, 0, last).numbers) {
        flags[number] = true;
      }
    }
    return flags;
  };
  const std::vector<bool> slots = picked("slots", frame.slots - 1u);
  const std::vector<bool> ports = picked("ports", 254);
  for (Ptp &ptp : loader.chassis.ptps) {
    if (ptp.frame == frame.id && slots[ptp.slot] && ports[ptp.port]) {
      apply(ptp);
    }
  }
}

// A PTP that no virtual system names belongs to virtual system 0.
void read_virtual_systems(Loader &loader, const Table &root) {
  std::vector<u32> masks(loader.chassis.ptps.size(), 0);
  for (const Value *value : root.tables("virtual_system")) {
    const Table table(loader.document, *value, "[[virtual_system]]", {"id", "members"});
    const u32 bit = u32{1} << table.number("id", 0, PM_VS_NUM - 1);
    for (const Value *member : table.tables("members")) {
      const Table picks(loader.document, *member, "an entry of 'members'",
                        {"frame", "slots", "ports"});
      for_picked(loader, picks, [&](Ptp &ptp) { masks[loader.by_id.at(ptp.id)] |= bit; });
    }
  }
  for (std::size_t position = 0; position < masks.size(); ++position) {
    if (masks[position] != 0) {
      loader.chassis.ptps[position].vs_mask = masks[position];
    }
  }
}

void read_invisible(Loader &loader, const Table &root) {
  for (const Value *value : root.tables("invisible")) {
    const Table table(loader.document, *value, "[[invisible]]", {"frame", "slots", "ports"});
    for_picked(loader, table, [](Ptp &ptp) { ptp.invisible = true; });
  }
}

void describe(Loader &loader, const Table &root) {
  std::string port = "{kind} {frame}/{slot}/{port}";
  std::string ont = "{type} {frame}/{slot}/{port}/{ont}";
  Position port_at{1, 1};
  Position ont_at{1, 1};
  if (root.has("description")) {
    const Table table(loader.document, root.value("description"), "[description]", {"port", "ont"});
    port = table.text_or("port", port);
    ont = table.text_or("ont", ont);
    port_at = table.at("port");
    ont_at = table.at("ont");
  }
  for (Ptp &ptp : loader.chassis.ptps) {
    if (!ptp.description.empty()) {
      continue;
    }
    ptp.description =
        ptp.ont ? described(loader, ont, ont_at, ptp) : described(loader, port, port_at, ptp);
  }
}

void read_virtual_range(Loader &loader, const Table &root) {
  if (!root.has("virtual_ptps")) {
    return;
  }
  const Table table(loader.document, root.value("virtual_ptps"), "[virtual_ptps]",
                    {"first", "count"});
  const unsigned highest = loader.chassis.specification.max_ptp;
  const unsigned first = table.number("first", 0, highest);
  loader.chassis.virtual_first = static_cast<u16>(first);
  loader.chassis.virtual_count = static_cast<u16>(table.number("count", 1, highest - first + 1));
}

}  // namespace

void read_ptps(Loader &loader, const Table &root) {
  read_virtual_range(loader, root);
  Numbering numbering;
  read_boards(loader, root, numbering);
  read_single_ptps(loader, root);
  read_onts(loader, root, numbering);
  read_virtual_systems(loader, root);
  read_invisible(loader, root);
  describe(loader, root);
  std::vector<Ptp> &ptps = loader.chassis.ptps;
  std::sort(ptps.begin(), ptps.end(), [](const Ptp &a, const Ptp &b) { return a.id < b.id; });
}

}  // namespace node
