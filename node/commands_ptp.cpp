// Commands about one PTP. The active instance is asked: nothing changes by them.
#include "node/console.hpp"
#include "node/numerals.hpp"
#include "node/ptp_text.hpp"

namespace node {
namespace {

// A value that the library answered, or the text of the code with which it refused.
template <class Value>
void add(Answer &answer, const char *name, u32 code, Value value) {
  if (code == PM_OK) {
    answer.field(name, std::move(value));
  } else {
    answer.field(name, result_text(code));
  }
}

// One attribute through its accessor.
template <class Value>
void add(Answer &answer, const char *name, u16 ptp, u32 (*accessor)(u16, Value *)) {
  Value value{};
  const u32 code = accessor(ptp, &value);
  add(answer, name, code, value);
}

void add_speeds(Answer &answer, const char *transmit_name, const char *receive_name, u16 ptp,
                u32 (*accessor)(u16, u32 *, u32 *)) {
  u32 transmit = 0;
  u32 receive = 0;
  const u32 code = accessor(ptp, &transmit, &receive);
  add(answer, transmit_name, code, transmit);
  add(answer, receive_name, code, receive);
}

void add_name(Answer &answer, const char *name, u16 ptp) {
  char text[PM_NAME_LEN + 1] = "";
  const u32 code = PM_LibGetNameFromPTP(ptp, sizeof text, text);
  add(answer, name, code, std::string(text));
}

// What the sub-line of the PTP's port type answers, in short.
void add_live_attributes(Answer &answer, u16 ptp) {
  u32 mtu = 0;
  if (const u32 code = PM_LibGetMtuFromPTP(ptp, &mtu)) {
    answer.field("live_attributes", result_text(code));
    return;
  }
  answer.field("mtu", mtu);
  add_speeds(answer, "transmit_speed", "receive_speed", ptp, PM_LibGetSpeedFromPTP);
  u8 link_state = 0;
  const u32 code = PM_LibGetLinkStateFromPTP(ptp, &link_state);
  add(answer, "link", code, link_state == 1 ? "up" : "down");
  add_name(answer, "name", ptp);
}

// Every live attribute, one by one.
void add_every_live_attribute(Answer &answer, u16 ptp) {
  add_name(answer, "live_name", ptp);
  add(answer, "live_mtu", ptp, PM_LibGetMtuFromPTP);
  add_speeds(answer, "live_transmit_speed", "live_receive_speed", ptp, PM_LibGetSpeedFromPTP);
  add_speeds(answer, "live_active_transmit_speed", "live_active_receive_speed", ptp,
             PM_LibGetActiveSpeedFromPTP);
  add(answer, "live_link_state", ptp, PM_LibGetLinkStateFromPTP);
  add(answer, "live_connection_present", ptp, PM_LibGetConnPresentFromPTP);
  add(answer, "live_admin_status", ptp, PM_LibGetAdminStatusFromPTP);
  add(answer, "live_transmit_queue", ptp, PM_LibGetTxQLenFromPTP);
  u8 address[PM_PHY_ADDR_LEN] = {};
  u32 code = PM_LibGetPhyAddrFromPTP(ptp, sizeof address, address);
  add(answer, "live_physical_address", code, hex_of_bytes(address));
  u32 specific[2] = {};
  code = PM_LibGetSpecificFromPTP(ptp, specific);
  add(answer, "live_specific_1", code, Hex{specific[0]});
  add(answer, "live_specific_2", code, Hex{specific[1]});
  add(answer, "live_promiscuous_mode", ptp, PM_LibGetPromiscuousModeFromPTP);
  add(answer, "live_counter_discontinuity", ptp, PM_LibGetCounterDiscontinuityTimeFromPTP);
  PmSubStats statistics{};
  code = PM_LibGetStatisticFromPTP(ptp, &statistics);
  add(answer, "live_statistics", code, hex_of_bytes(statistics.aucData));
  u8 alias[PM_DESC_LEN_MAX + 1] = {};
  code = PM_LibGetAliasFromPTP(ptp, sizeof alias, alias);
  add(answer, "live_alias", code, std::string(reinterpret_cast<const char *>(alias)));
  add(answer, "live_last_change_tick", ptp, PM_LibGetLastChangeTickFromPTP);
  add(answer, "live_link_trap", ptp, PM_LibGetlinkTrapSwitchFromPTP);
}

void add_dynamic_record(Answer &answer, u16 ptp) {
  PtpDynPubData record{};
  const u32 code = PM_LibGetAllDynDataFromPtpID(ptp, &record);
  answer.field("dynamic_record", result_text(code));
  if (code != PM_OK) {
    return;
  }
  // The fields are unaligned: each is read as a value of its own.
  answer.field("dynamic_class", u32{record.ucPtpClass})
      .field("dynamic_index1", u32{record.usIndex1})
      .field("dynamic_index2", u32{record.usIndex2})
      .field("dynamic_exist", u32{record.ucExist})
      .field("dynamic_type", u32{record.usPtpType})
      .field("dynamic_invisible", u32{record.ucInvisible})
      .field("dynamic_private_id", u32{record.PrivDynDataID})
      .field("dynamic_last_change_tick", u32{record.LastChangeTick})
      .field("dynamic_vs_mask", Hex{record.ulVsMask});
}

void add_static_record(Answer &answer, u16 ptp) {
  PtpStaticData record{};
  const u32 code = PM_LibStaticDataGetDataFromPTP(ptp, &record);
  answer.field("static_record", result_text(code));
  if (code != PM_OK) {
    return;
  }
  answer.field("static_ptp", u32{record.usPtpID})
      .field("static_bindex", u32{record.usBIndex})
      .field("static_port", u32{record.ucPortID})
      .field("static_link_trap", u32{record.ucLinkUpDownTrap})
      .field("static_type", u32{record.usType})
      .field("static_invisible", u32{record.ucVisible})
      .field("static_vs_mask", Hex{record.ulVsMask})
      .field("static_description", description_of(ptp));
}

void add_identity(Answer &answer, const Chassis &chassis, u16 ptp) {
  u8 ptp_class = 0;
  u16 index1 = 0;
  u16 index2 = 0;
  PM_LibGetPhyIndexFromPTPEx(ptp, &ptp_class, &index1, &index2);
  u32 mask = 0;
  PM_LibGetVsMaskFromPtp(ptp, &mask);
  u16 managing = 0;
  const u32 managed = PM_LibGetPtpMngtVsID(ptp, &managing);
  u16 type = 0;
  PM_LibGetTypeFromPTP(ptp, &type);
  answer.field("class", ptp_class == PM_PTP_CLASS_PORT ? "port" : "behind a port")
      .field("place", place_of(ptp))
      .field("index1", index1)
      .field("index2", index2)
      .field("type", type)
      .field("type_name", type_name_of(chassis, type));
  add(answer, "co_class", ptp, PM_LibGetCoClassFromPtpID);
  answer.field("visible", PM_LibIsPtpVisible(ptp) == PM_OK)
      .field("virtual_systems", systems_of(mask))
      .field("managed_by",
             managed == PM_OK ? "virtual system " + std::to_string(managing) : result_text(managed))
      .field("description", description_of(ptp));
  u8 wired = 0;
  if (PM_LibGetPtpPhyStateFromPTP(ptp, &wired) == PM_OK) {
    answer.field("lan_switch", wired == 1 ? "connected" : "not connected");
  }
}

Answer run_ptp(Console &console, const Arguments &arguments) {
  const bool full = arguments.size() > 1;
  if (full && arguments[1] != "full") {
    throw CommandError("'" + arguments[1] + "' is no extent; expected full");
  }
  const u16 ptp = ptp_argument(console, arguments[0]);
  const host::Scope scope(*console.node().active().instance);
  Answer answer;
  answer.field("ptp", ptp);
  const u32 exists = PM_LibIfPtpExist(ptp);
  answer.field("exists", exists == PM_OK);
  if (exists == PM_OK) {
    add_identity(answer, console.node().chassis(), ptp);
  } else {
    answer.field("result", result_text(exists));
  }
  if (full) {
    add_dynamic_record(answer, ptp);
    add_static_record(answer, ptp);
    add_every_live_attribute(answer, ptp);
  } else if (exists == PM_OK) {
    add_live_attributes(answer, ptp);
  }
  return answer;
}

Answer run_private(Console &console, const Arguments &arguments) {
  const u16 ptp = ptp_argument(console, arguments[0]);
  const u32 length = arguments.size() > 1
                         ? number_argument(arguments[1], 1, PM_PRI_DATA_SIZE, "number of bytes")
                         : u32{PM_PRI_DATA_SIZE};
  const host::Scope scope(*console.node().active().instance);
  host::Bytes data(length);
  const u32 code = PM_LibGetPrivStaticDataFromPTP(ptp, length, data.data());
  Answer answer;
  answer.field("ptp", ptp).field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("private_data", hex_of_bytes(data));
  }
  return answer;
}

Answer run_physical(Console &console, const Arguments &arguments) {
  const u16 ptp = ptp_argument(console, arguments[0]);
  const host::Scope scope(*console.node().active().instance);
  u8 state = 0;
  const u32 code = PM_LibGetPtpPhyStateFromPTP(ptp, &state);
  Answer answer;
  answer.field("ptp", ptp).field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("physical_state", state).field("connected", state == 1);
  }
  return answer;
}

Answer run_capability(Console &console, const Arguments &arguments) {
  const u16 ptp = ptp_argument(console, arguments[0]);
  const u32 capability = number_argument(arguments[1], 0, 0xFFFFFFFF, "capability");
  const host::Scope scope(*console.node().active().instance);
  u16 type = 0;
  const u32 type_code = PM_LibGetPtpCapType(0xFFFF, ptp, &type);
  Answer answer;
  answer.field("ptp", ptp).field("capability", capability);
  add(answer, "capability_type", type_code, type);
  return answer.field("result", result_text(PM_LibGetPtpCapability(ptp, capability)));
}

Answer run_attribute(Console &console, const Arguments &arguments) {
  constexpr u32 kLengthByDefault = 4;
  constexpr u32 kMostBytes = 1'024;
  const u16 ptp = ptp_argument(console, arguments[0]);
  const u32 attribute = number_argument(arguments[1], 0, 0xFFFFFFFF, "attribute");
  const u32 length = arguments.size() > 2
                         ? number_argument(arguments[2], 0, kMostBytes, "number of bytes")
                         : kLengthByDefault;
  const host::Scope scope(*console.node().active().instance);
  host::Bytes value(kMostBytes);
  const u32 code =
      PM_LibGetPtpAttributeCluster(ptp, attribute, static_cast<u16>(length), value.data());
  value.resize(length);
  Answer answer;
  answer.field("ptp", ptp).field("attribute", attribute).field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("value", hex_of_bytes(value));
  }
  return answer;
}

constexpr Command kCommands[] = {
    {"ptp", "ID|FRAME/SLOT/PORT [full]", "one PTP: identity, place, type, live attributes",
     "  'index1' and 'index2' are the physical indexes of its record; for a PTP behind a port\n"
     "  'place' is that of the port, as its product maps it. With 'full' the dynamic and the "
     "static\n  record and every live attribute follow, field by field; what cannot be read says "
     "why.",
     1, 2, run_ptp},
    {"private", "ID|FRAME/SLOT/PORT [LENGTH]", "the private static data of a port",
     "  The first LENGTH bytes, all 120 if it is left out, in hexadecimal digits.", 1, 2,
     run_private},
    {"physical", "ID|FRAME/SLOT/PORT", "is a port connected with its board's LAN switch?",
     "  E-switch ports always count as connected; invisible ports are refused.", 1, 1,
     run_physical},
    {"capability", "ID|FRAME/SLOT/PORT VALUE", "ask the capability service about a PTP",
     "  'capability_type' is that of the PTP's port type. The stand-in's service answers ok for\n"
     "  every capability of a PTP whose class is registered.",
     2, 2, run_capability},
    {"attribute", "ID|FRAME/SLOT/PORT VALUE [LENGTH]", "ask the attribute service about a PTP",
     "  LENGTH is the size of the buffer, 4 bytes if it is left out. The stand-in's service "
     "answers\n  the port type in the first two bytes.",
     2, 3, run_attribute}};

}  // namespace

std::span<const Command> ptp_commands() {
  return kCommands;
}

}  // namespace node
