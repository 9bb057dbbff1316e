// Commands that look for PTPs, boards, port types and the product's names of ONTs. The active
// instance is asked: nothing changes by them.
#include <optional>

#include "node/console.hpp"
#include "node/ptp_text.hpp"

namespace node {
namespace {

struct Walk {
  u16 from = PM_PTP_ID_NONE;
  u32 count = 20;
  u16 bindex = PM_BINDEX_ALL;
  u16 type = PM_PTP_TYPE_ALL;
  std::optional<u32> vs;
  bool visible = false;

  // The library walks visible ports of the node or all ports of a virtual system; for both at once
  // the invisible ones are passed over here.
  u32 step(u16 before, u16 &next) const {
    if (!vs) {
      return visible ? PM_LibGetNextVisiblePtpFromPTP(bindex, before, type, &next)
                     : PM_LibGetNextPtpFromPTP(bindex, before, type, &next);
    }
    u32 code = PM_LibGetNextPtpFromVS(*vs, bindex, before, type, &next);
    while (code == PM_OK && visible && PM_LibIsPtpVisible(next) != PM_OK) {
      ZEL_ClearWatchDog();
      code = PM_LibGetNextPtpFromVS(*vs, bindex, next, type, &next);
    }
    return code;
  }
};

Walk walk_of(Console &console, const Arguments &arguments) {
  Walk walk;
  for (std::size_t position = 0; position < arguments.size(); ++position) {
    const std::string &filter = arguments[position];
    if (filter == "visible") {
      walk.visible = true;
      continue;
    }
    if (position + 1 == arguments.size()) {
      throw CommandError("'" + filter + "' is no filter with a value; expected what 'help walk'" +
                         " tells");
    }
    const std::string &value = arguments[++position];
    if (filter == "from") {
      walk.from = ptp_argument(console, value);
    } else if (filter == "count") {
      walk.count = number_argument(value, 1, 0xFFFF, "number of PTPs");
    } else if (filter == "board") {
      walk.bindex = board_argument(console, value);
    } else if (filter == "type") {
      walk.type = type_argument(console, value);
    } else if (filter == "vs") {
      walk.vs = number_argument(value, 0, PM_VS_NUM - 1, "virtual system");
    } else {
      throw CommandError("'" + filter + "' is no filter; expected what 'help walk' tells");
    }
  }
  return walk;
}

Answer run_walk(Console &console, const Arguments &arguments) {
  const Walk walk = walk_of(console, arguments);
  const Chassis &chassis = console.node().chassis();
  const host::Scope scope(*console.node().active().instance);
  Rows rows{"ptps", {"ptp", "place", "type_name", "visible", "description"}, {}};
  u16 next = walk.from;
  u32 code = walk.step(next, next);
  u16 last = walk.from;
  while (code == PM_OK && rows.rows.size() < walk.count) {
    ZEL_ClearWatchDog();
    last = next;
    rows.add(last, place_of(last), type_name_of_ptp(chassis, last),
             PM_LibIsPtpVisible(last) == PM_OK, description_of(last));
    code = walk.step(last, next);
  }
  Answer answer;
  answer.field("listed", rows.rows.size()).field("end", code != PM_OK);
  answer.field("last", last);
  answer.rows("ptps", rows.columns) = std::move(rows);
  if (code == PM_OK) {
    answer.remark("there are more: go on with 'from " + std::to_string(last) + "'");
  } else if (code != PM_ERR_NO_MORE) {
    answer.remark("the walk ended with " + result_text(code));
  }
  return answer;
}

Answer found(const Chassis &chassis, u32 code, u16 ptp) {
  Answer answer;
  answer.field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("ptp", ptp)
        .field("place", place_of(ptp))
        .field("type_name", type_name_of_ptp(chassis, ptp))
        .field("description", description_of(ptp));
  }
  return answer;
}

u32 find_by_place(const std::string &text, bool visible, u16 &ptp) {
  const Place place = place_argument(text);
  return visible ? PM_LibGetVisiblePtpFromFSP(place.frame, place.slot, place.port, &ptp)
                 : PM_LibGetPtpFromFSP(place.frame, place.slot, place.port, &ptp);
}

void need_arguments(const Arguments &arguments, std::size_t least, std::size_t most) {
  if (arguments.size() < least || arguments.size() > most) {
    throw CommandError("'find " + arguments[0] + "' has " + std::to_string(arguments.size() - 1) +
                       " arguments; expected what 'help find' tells");
  }
}

Answer run_find(Console &console, const Arguments &arguments) {
  const std::string &by = arguments[0];
  const host::Scope scope(*console.node().active().instance);
  u16 ptp = 0;
  u32 code = PM_OK;
  if (by == "description") {
    code = PM_LibGetPtpFromDesc(text_argument(arguments, 1).c_str(), &ptp);
  } else if (by == "port") {
    need_arguments(arguments, 3, 3);
    const u16 bindex = board_argument(console, arguments[1]);
    const u32 port = number_argument(arguments[2], 0, 0xFF, "port");
    code = PM_LibGetPtpFromPhyIndex(bindex, static_cast<u8>(port), &ptp);
  } else if (by == "place") {
    need_arguments(arguments, 2, 3);
    const bool visible = arguments.size() > 2;
    if (visible && arguments[2] != "visible") {
      throw CommandError("'" + arguments[2] + "' is no filter; expected visible");
    }
    code = find_by_place(arguments[1], visible, ptp);
  } else if (by == "indexes") {
    need_arguments(arguments, 4, 4);
    const u32 ptp_class = number_argument(arguments[1], 0, 0xFF, "PTP class");
    const u32 index1 = number_argument(arguments[2], 0, 0xFFFF, "index");
    const u32 index2 = number_argument(arguments[3], 0, 0xFFFF, "index");
    code = PM_LibGetPtpFromPhyIndexEx(static_cast<u8>(ptp_class), static_cast<u16>(index1),
                                      static_cast<u16>(index2), &ptp);
  } else {
    throw CommandError("'" + by +
                       "' is nothing to find by; expected description, port, place or indexes");
  }
  return found(console.node().chassis(), code, ptp);
}

void add_board(Rows &rows, const Chassis &chassis, u16 bindex) {
  const u16 frame = static_cast<u16>(bindex / chassis.slots_per_frame());
  const u8 slot = static_cast<u8>(bindex % chassis.slots_per_frame());
  const Board *board = chassis.board(frame, slot);
  u8 outer = 0;
  u8 inner = 0;
  u8 sum = 0;
  const u32 code = PM_LibGetHardwarePortNum(bindex, &outer, &inner, &sum);
  u8 usable_outer = 0;
  u8 usable_inner = 0;
  u8 usable = 0;
  const u32 usable_code = PM_LibGetPortNumFromBIndex(bindex, &usable_outer, &usable_inner, &usable);
  rows.add(bindex, std::to_string(frame) + "/" + std::to_string(slot),
           board == nullptr ? std::string("-") : chassis.kinds[board->kind].name, outer, inner, sum,
           usable_outer, usable_inner, usable, result_text(code != PM_OK ? code : usable_code));
}

Answer run_boards(Console &console, const Arguments &arguments) {
  const Chassis &chassis = console.node().chassis();
  Answer answer;
  Rows &rows = answer.rows("boards", {"bindex", "place", "kind", "outer", "inner", "ports",
                                      "usable_outer", "usable_inner", "usable", "result"});
  if (!arguments.empty()) {
    const u16 bindex = board_argument(console, arguments[0]);
    const host::Scope scope(*console.node().active().instance);
    add_board(rows, chassis, bindex);
    return answer;
  }
  const host::Scope scope(*console.node().active().instance);
  for (const Board &board : chassis.boards) {
    ZEL_ClearWatchDog();
    add_board(rows, chassis, chassis.bindex(board.frame, board.slot));
  }
  return answer;
}

// How many of a sub-line's callbacks are filled; every slot is one pointer.
std::size_t filled_slots(const PmSubCallBack &callbacks) {
  return std::size_t{callbacks.pfnSetAdmin != nullptr} +
         std::size_t{callbacks.pfnSetPromiscuousMode != nullptr} +
         std::size_t{callbacks.pfnGetStats != nullptr} +
         std::size_t{callbacks.pfnGetAttr != nullptr} +
         std::size_t{callbacks.pfnGetAttrPriv != nullptr} +
         std::size_t{callbacks.pfnSynExtract != nullptr} +
         std::size_t{callbacks.pfnSynRestore != nullptr} +
         std::size_t{callbacks.pfnGetActiveSpeed != nullptr} +
         std::size_t{callbacks.pfnGetReplaceType != nullptr};
}

void add_type(Rows &rows, const Chassis &chassis, u16 type) {
  u16 suffix = 0;
  u16 capability = 0;
  u16 co_class = 0;
  PmSubCallBack callbacks{};
  PmSubInnerSubInfo *record = nullptr;
  u32 code = PM_LibGetLogicPtpType(type, &suffix);
  if (code == PM_OK) {
    code = PM_LibGetPtpCapType(type, 0, &capability);
  }
  if (code == PM_OK) {
    code = PM_LibGetPtpCoClass(type, &co_class);
  }
  if (code == PM_OK) {
    code = PM_LibGetSubInfoFromSuffix(suffix, &record);
  }
  if (code == PM_OK) {
    code = PM_LibGetSubFunc(type, &callbacks);
  }
  rows.add(type, type_name_of(chassis, type), suffix, record != nullptr && record->ucVisible == 1,
           capability, co_class, filled_slots(callbacks), result_text(code));
}

Answer run_types(Console &console, const Arguments &arguments) {
  const Chassis &chassis = console.node().chassis();
  const host::Scope scope(*console.node().active().instance);
  Answer answer;
  answer.field("max_port_type", PM_LibGetPtpMaxTypeValue());
  Rows &rows = answer.rows("types", {"type", "type_name", "suffix", "visible", "capability_type",
                                     "co_class", "callbacks", "result"});
  if (!arguments.empty()) {
    add_type(rows, chassis, type_argument(console, arguments[0]));
    return answer;
  }
  PmSubInnerSubInfo *record = nullptr;
  for (u16 suffix = 0; PM_LibGetSubInfoFromSuffix(suffix, &record) == PM_OK; ++suffix) {
    add_type(rows, chassis, record->usPtpType);
  }
  return answer;
}

Answer run_coindex(Console &console, const Arguments &arguments) {
  std::vector<PmFspOntid> onts;
  for (const std::string &argument : arguments) {
    onts.push_back(object_argument(argument));
  }
  std::vector<u32> indexes(onts.size());
  std::vector<u32> types(onts.size());
  u32 translated = 0;
  const host::Scope scope(*console.node().active().instance);
  const auto word = [](void *pointer) { return reinterpret_cast<PmWord>(pointer); };
  const u32 code = PM_LibGetCoIndexAndCotypeByFspOntid(
      word(onts.data()), onts.size(), word(indexes.data()), word(types.data()), word(&translated));
  Answer answer;
  answer.field("result", result_text(code)).field("translated", translated);
  Rows &rows = answer.rows("onts", {"ont", "co_index", "co_type"});
  for (std::size_t position = 0; position < translated && position < onts.size(); ++position) {
    rows.add(arguments[position], Hex{indexes[position]}, types[position]);
  }
  return answer;
}

Answer run_ont(Console &console, const Arguments &arguments) {
  const u32 index = number_argument(arguments[0], 0, 0xFFFFFFFF, "co-index");
  const u32 type = number_argument(arguments[1], 0, 0xFFFFFFFF, "co-type");
  PmFspOntid ont{};
  const host::Scope scope(*console.node().active().instance);
  const u32 code = PM_LibGetFspOntidByCoIndexAndCotype(index, type, reinterpret_cast<PmWord>(&ont));
  Answer answer;
  answer.field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("frame", u32{ont.usFrameID})
        .field("slot", u32{ont.ucSlotID})
        .field("port", u32{ont.ucPortID})
        .field("ont", u32{ont.ulOntID});
  }
  return answer;
}

constexpr Command kCommands[] = {
    {"walk",
     "[from ID|FRAME/SLOT/PORT] [count N] [board BINDEX|FRAME/SLOT] [type TYPE] [vs ID] [visible]",
     "ports in frame, slot, port order, with filters",
     "  Lists N ports, 20 if it is left out, behind the PTP after 'from'; 'last' is where to go "
     "on\n  from, and 'end' tells that nothing follows. TYPE is a port type's value or name. PTPs\n"
     "  behind ports are not walked.",
     0, 11, run_walk},
    {"find",
     "description TEXT | port BINDEX|FRAME/SLOT PORT | place FRAME/SLOT/PORT [visible] | "
     "indexes CLASS INDEX1 INDEX2",
     "the PTP with a description, at a place or with physical indexes",
     "  By description the records are searched from PTP 0 to the first one without static data.\n"
     "  CLASS is 0 for a port, 1 for a PTP behind one.",
     2, kAnyNumber, run_find},
    {"boards", "[BINDEX|FRAME/SLOT]", "the ports of every board or of one",
     "  'outer', 'inner' and 'ports' count its hardware, 'usable' those with a port type in the\n"
     "  device layer. 'result' tells why a board has no counts.",
     0, 1, run_boards},
    {"types", "[TYPE]", "every port type or one: suffix, capability type, co-class, callbacks",
     "  TYPE is its value or its name. 'callbacks' is how many of its sub-line's nine slots are\n"
     "  filled.",
     0, 1, run_types},
    {"coindex", "FRAME/SLOT/PORT/ONT ...", "co-index and co-type of ONTs, from the product's hook",
     "  The hook is given the ONTs, their number, where co-indexes and co-types go, and where the\n"
     "  number of translated ONTs goes.",
     1, kAnyNumber, run_coindex},
    {"ont", "CO_INDEX CO_TYPE", "the ONT of a co-index and co-type, from the product's hook", "", 2,
     2, run_ont}};

}  // namespace

std::span<const Command> find_commands() {
  return kCommands;
}

}  // namespace node
