// Commands that change the chassis while the node runs.
#include <algorithm>

#include "node/console.hpp"
#include "node/life.hpp"

namespace node {
namespace {

// Takes the word for the way of delivery from the end of the arguments; live unless told otherwise.
Delivery delivery_of(Arguments &arguments) {
  const bool batch = arguments.back() == "batch";
  if (batch || arguments.back() == "live") {
    arguments.pop_back();
  }
  return batch ? Delivery::batch : Delivery::live;
}

Answer &add(Answer &answer, const Told &told) {
  return answer.field("records", told.records)
      .field("refused", told.refused)
      .field("result", result_text(told.code));
}

// A change that the chassis does not allow is a fault of the command.
template <class Change>
Told change(Change make) {
  try {
    return make();
  } catch (const LifeError &error) {
    throw CommandError(error.what());
  }
}

struct Slot {
  u16 frame = 0;
  u8 slot = 0;
};

Slot slot_argument(Console &console, const std::string &text) {
  const u16 bindex = board_argument(console, text);
  const u16 per_frame = console.node().chassis().slots_per_frame();
  return {static_cast<u16>(bindex / per_frame), static_cast<u8>(bindex % per_frame)};
}

std::size_t kind_argument(Console &console, const std::string &name) {
  const auto &kinds = console.node().chassis().kinds;
  std::string names;
  for (std::size_t position = 0; position < kinds.size(); ++position) {
    if (kinds[position].name == name) {
      return position;
    }
    names += (position == 0 ? "" : ", ") + kinds[position].name;
  }
  throw CommandError("'" + name + "' is no kind of board; expected one of " + names);
}

Answer run_board(Console &console, const Arguments &given) {
  Arguments arguments = given;
  const Delivery delivery = delivery_of(arguments);
  const bool in = arguments[0] == "in";
  if ((!in && arguments[0] != "out") || arguments.size() < (in ? 3U : 2U) ||
      arguments.size() > (in ? 4U : 2U)) {
    throw CommandError("'" + arguments[0] +
                       "' with these arguments is nothing that a board does; see 'help board'");
  }
  const Slot at = slot_argument(console, arguments[1]);
  Answer answer;
  answer.field("frame", at.frame).field("slot", at.slot);
  if (!in) {
    return add(answer,
               change([&] { return remove_board(console.node(), at.frame, at.slot, delivery); }));
  }
  const std::size_t kind = kind_argument(console, arguments[2]);
  std::optional<u16> first;
  if (arguments.size() > 3) {
    first = static_cast<u16>(number_argument(arguments[3], 0, 0xFFFE, "PTP ID"));
  }
  return add(answer, change([&] {
               return insert_board(console.node(), at.frame, at.slot, kind, first, delivery);
             }));
}

std::size_t known_type_argument(Console &console, const std::string &text) {
  const u16 value = type_argument(console, text);
  const auto &types = console.node().chassis().port_types;
  const auto type = std::find_if(types.begin(), types.end(),
                                 [&](const PortType &entry) { return entry.value == value; });
  if (type == types.end()) {
    throw CommandError("'" + text + "' is no port type of the chassis; see 'spec'");
  }
  return static_cast<std::size_t>(type - types.begin());
}

Answer run_ptp_add(Console &console, const Arguments &given) {
  Arguments arguments = given;
  const Delivery delivery = delivery_of(arguments);
  const std::size_t slash = given[1].rfind('/');
  if (arguments.size() != 3 || slash == std::string::npos) {
    throw CommandError("a place or a type is missing; expected ptp-add ID FRAME/SLOT/PORT TYPE");
  }
  Ptp ptp;
  ptp.id = static_cast<u16>(number_argument(arguments[0], 0, 0xFFFE, "PTP ID"));
  const Slot at = slot_argument(console, arguments[1].substr(0, slash));
  ptp.frame = at.frame;
  ptp.slot = at.slot;
  ptp.port = static_cast<u8>(number_argument(arguments[1].substr(slash + 1), 0, 0xFF, "port"));
  ptp.type = known_type_argument(console, arguments[2]);
  Answer answer;
  answer.field("ptp", ptp.id);
  return add(answer, change([&] { return add_ptp(console.node(), ptp, delivery); }));
}

Answer run_ptp_remove(Console &console, const Arguments &given) {
  Arguments arguments = given;
  const Delivery delivery = delivery_of(arguments);
  const u16 ptp = ptp_argument(console, given[0]);
  Answer answer;
  answer.field("ptp", ptp);
  return add(answer, change([&] { return remove_ptp(console.node(), ptp, delivery); }));
}

Answer run_vs_mask(Console &console, const Arguments &given) {
  Arguments arguments = given;
  const Delivery delivery = delivery_of(arguments);
  const u16 ptp = ptp_argument(console, given[0]);
  const u32 mask = number_argument(given[1], 0, 0xFFFFFFFF, "mask");
  Answer answer;
  answer.field("ptp", ptp).field("mask", Hex{mask});
  return add(answer, change([&] { return change_vs_mask(console.node(), ptp, mask, delivery); }));
}

Answer run_type_add(Console &console, const Arguments &given) {
  Arguments arguments = given;
  const Delivery delivery = delivery_of(arguments);
  PortType type;
  type.name = given[0];
  type.value = static_cast<u16>(number_argument(given[1], 1, 0xFFFE, "port type"));
  type.sub_line = type.name;
  Answer answer;
  answer.field("type", type.value).field("suffix", console.node().chassis().port_types.size());
  return add(answer, change([&] { return add_port_type(console.node(), type, delivery); }));
}

constexpr Command kCommands[] = {
    {"board", "in FRAME/SLOT KIND [FIRST] | out FRAME/SLOT [live|batch]",
     "a board comes into a slot or leaves it",
     "  The PTPs of a board that comes back exist again; those of a new one are numbered from\n"
     "  FIRST, or behind the last PTP. This and the commands below send both boards the records\n"
     "  that the owner of the data sends: 'live', one after the other, or in a 'batch' that every\n"
     "  instance takes anew with all other records. 'link' makes a port come up or go down.",
     2, 5, run_board},
    {"ptp-add", "ID FRAME/SLOT/PORT TYPE [live|batch]", "a PTP comes on a port that has none", "",
     3, 4, run_ptp_add},
    {"ptp-remove", "ID|FRAME/SLOT/PORT [live|batch]", "a PTP goes for good",
     "  Its static record stays in the instances: no record can make them forget a single one.", 1,
     2, run_ptp_remove},
    {"vs-mask", "ID|FRAME/SLOT/PORT MASK [live|batch]", "a PTP changes its virtual systems",
     "  Bit n of MASK is virtual system n.", 2, 3, run_vs_mask},
    {"type-add", "NAME VALUE [live|batch]", "a port type is added behind all others",
     "  An instance takes the number of port types when it starts, so running ones refuse it.", 2,
     3, run_type_add}};

}  // namespace

std::span<const Command> life_commands() {
  return kCommands;
}

}  // namespace node
