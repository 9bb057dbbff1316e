#include "fuzz/rig.hpp"

namespace fuzz {
namespace {

std::size_t calls = 0;

// Booked for every port type: what it is called with is of a PTP that exists, or of none.
u32 booked(u16 ptp, u16 type, void *) {
  ++calls;
  HOLDS(type < PM_PRIM_NUM);
  HOLDS(ptp == PM_PTP_ID_NONE || PM_LibIfPtpExist(ptp) == PM_OK);
  return type % 2 == 0 ? PM_OK : PM_ERR_PARA;
}

u32 register_sub_lines() {
  PmSubLineInfo info{};
  info.usPtpType = 7;
  info.ulPID = PM_PID_NONE;
  u32 code = PM_LibRegSubLineInfo(&info);
  info.usPtpType = 9;
  return code | PM_LibRegSubLineInfo(&info);
}

// IDs at which something may change: the low ones and those around the highest.
std::set<u16> asked_ids() {
  std::set<u16> ids;
  for (u16 id = 0; id < 70; ++id) {
    ids.insert(id);
  }
  for (u32 id = PM_LibGetMaxPtpID() - 1U; id < PM_LibGetMaxPtpID() + 3U; ++id) {
    ids.insert(static_cast<u16>(id));
  }
  return ids;
}

}  // namespace

std::size_t Rig::booked_calls() {
  return calls;
}

bool is_known_code(u32 code) {
#define FUZZ_IS_CODE(name, value, text) || code == (name)
  return code == PM_OK PM_RESULT_LIST(FUZZ_IS_CODE);
#undef FUZZ_IS_CODE
}

Rig::Rig() {
  calls = 0;
  node.chassis.add_frame(0, 4);
  node.chassis.insert(0, 0, host::Board::of("ETH8", 8, 1));
  node.chassis.insert(0, 2, host::Board::of("ETH8", 8, 1));
  PmProductMngt hooks{};
  hooks.pfnZelCfg = register_sub_lines;
  {
    const auto outside = host::enter(node);
    HOLDS(PM_LibRegProductMngtFuncProc(&hooks) == PM_OK);
    HOLDS(PM_LibRegisterInfo() == PM_OK);
  }
  publish_spec();
  instance = start(cid);
  const auto scope = host::enter(*instance);
  for (u16 type = 3; type < 3 + booking_num; ++type) {
    HOLDS(PM_LibRegPrimaryWordCallback(type, PM_PTP_TYPE_ALL, booked) == PM_OK);
  }
}

Rig::~Rig() {
  verdict();
  const std::size_t before = node.memory.live().size();
  HOLDS(node.root.destruct(cid) == PM_OK);
  HOLDS(node.memory.live().size() == before);
  ask_host();
}

host::Instance *Rig::start(u32 number) {
  host::Instance *started = node.root.construct(number);
  HOLDS(started != nullptr);
  ++instances_;
  HOLDS(node.root.start_fid(*started, PM_FidInitProc) == PM_OK);
  for (const u32 phase : {1U, 2U, 8U}) {
    HOLDS(node.root.start_phase(*started, phase) == PM_OK);
  }
  node.run();
  return started;
}

void Rig::publish_spec() {
  PmSpec spec{};
  spec.ulDescMaxLen = desc_len;
  PmAttrCB numbers{};
  numbers.usVisiblePtpNum = 30;
  numbers.usVirtualPtpNum = 5;
  numbers.usMaxPtpID = max_ptp;
  numbers.usExtAreaSize = 10;
  const PmSubAttrNum types = {type_num, max_type};
  node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
  node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(numbers));
  node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(types));
}

void Rig::lay_tables() {
  for (u16 suffix = 0; suffix < type_num; ++suffix) {
    const PmSubInnerSubInfo info = {0, static_cast<u16>(7 + suffix), 1, 0, 1, suffix};
    HOLDS(node.ddm.publish(PM_CLASS_SUB_INFO, suffix, host::view_of(info)) == PM_OK);
  }
  for (u16 id = 1; id <= 8; ++id) {
    const PtpDynPubData record = port_record(0, id);
    HOLDS(node.ddm.publish(PM_CLASS_DYNAMIC, id, host::view_of(record)) == PM_OK);
    PtpStaticData data{};
    data.usPtpID = id;
    std::snprintf(data.szDescription, sizeof data.szDescription, "port %u", id);
    HOLDS(node.ddm.publish(PM_CLASS_STATIC, id, host::view_of(data)) == PM_OK);
  }
}

void Rig::verdict() {
  {
    const auto scope = host::enter(*instance);
    ask_records();
    ask_walks();
    ask_port_types();
  }
  ask_host();
}

void Rig::ask_records() const {
  for (const u16 id : asked_ids()) {
    PtpDynPubData record{};
    const u32 code = PM_LibGetAllDynDataFromPtpID(id, &record);
    HOLDS(is_known_code(code));
    const bool exists = PM_LibIfPtpExist(id) == PM_OK;
    HOLDS(exists == (code == PM_OK && record.ucExist != 0));
    u16 type = 0;
    HOLDS((PM_LibGetTypeFromPTP(id, &type) == PM_OK) == exists);
    u32 vs_mask = 0;
    HOLDS((PM_LibGetVsMaskFromPtp(id, &vs_mask) == PM_OK) == exists);
    if (exists) {
      HOLDS(id <= PM_LibGetMaxPtpID());
      HOLDS(type == record.usPtpType && vs_mask == record.ulVsMask);
      for (u32 vs = 0; vs < PM_VS_NUM; ++vs) {
        HOLDS((PM_LibIfPtpInVs(id, vs) == PM_OK) == ((vs_mask >> vs & 1) != 0));
      }
    }
    // What a place leads to is a PTP of that place.
    if (exists && record.ucExist == 1 && record.ucPtpClass < PM_PTP_CLASS_NUM) {
      u16 found = 0;
      HOLDS(PM_LibGetPtpFromPhyIndexEx(record.ucPtpClass, record.usIndex1, record.usIndex2,
                                       &found) == PM_OK);
      PtpDynPubData there{};
      HOLDS(PM_LibGetAllDynDataFromPtpID(found, &there) == PM_OK);
      HOLDS(there.usIndex1 == record.usIndex1 && there.usIndex2 == record.usIndex2 &&
            there.ucPtpClass == record.ucPtpClass);
    }
    PtpStaticData data{};
    const u32 static_code = PM_LibStaticDataGetDataFromPTP(id, &data);
    HOLDS(is_known_code(static_code) || static_code == 1);
    char text[PM_DESC_LEN_MAX + 1] = {};
    const bool described = PM_LibGetDescFromPTP(id, sizeof text, text) == PM_OK;
    HOLDS(!described || static_code == PM_OK);
    HOLDS(std::memchr(text, 0, sizeof text) != nullptr);
    if (static_code == PM_OK) {
      HOLDS(data.usPtpID == id);
      HOLDS(PM_LibFindStaticDBNode(id) != nullptr);
    }
  }
}

void Rig::ask_walks() const {
  std::set<u16> all;
  u16 id = PM_PTP_ID_NONE;
  while (PM_LibGetNextPtpFromPTP(PM_BINDEX_ALL, id, PM_PTP_TYPE_ALL, &id) == PM_OK) {
    HOLDS(PM_LibIfPtpExist(id) == PM_OK);
    HOLDS(all.insert(id).second);
    u16 frame = 0;
    u8 slot = 0;
    u8 port = 0;
    HOLDS(PM_LibGetFSPFromPtp(id, &frame, &slot, &port) == PM_OK);
    HOLDS(node.chassis.board(frame, slot) != nullptr && port < 9);
  }
  for (u32 vs = 0; vs < PM_VS_NUM; ++vs) {
    std::size_t members = 0;
    for (const u16 ptp : all) {
      members += PM_LibIfPtpInVs(ptp, vs) == PM_OK ? 1 : 0;
    }
    id = PM_PTP_ID_NONE;
    std::size_t walked = 0;
    while (PM_LibGetNextPtpFromVS(vs, PM_BINDEX_ALL, id, PM_PTP_TYPE_ALL, &id) == PM_OK) {
      HOLDS(all.contains(id) && PM_LibIfPtpInVs(id, vs) == PM_OK);
      ++walked;
    }
    HOLDS(walked == members);
  }
}

void Rig::ask_port_types() const {
  for (u16 suffix = 0; suffix < 300; ++suffix) {
    PmSubInnerSubInfo *info = nullptr;
    const u32 code = PM_LibGetSubInfoFromSuffix(suffix, &info);
    HOLDS(code == PM_OK || code == PM_ERR_SUFFIX_INVALID);
    if (code != PM_OK || info->usPtpType == 0) {
      continue;
    }
    const u16 type = info->usPtpType;
    u16 found = 0;
    if (PM_LibGetLogicPtpType(type, &found) == PM_OK) {
      PmSubInnerSubInfo *other = nullptr;
      HOLDS(PM_LibGetSubInfoFromSuffix(found, &other) == PM_OK);
      HOLDS(other->usPtpType == type && found <= suffix);
    }
  }
}

// Blocks that are nodes of hash tables are linked there, and there is no block beside the tables.
void Rig::ask_host() const {
  HOLDS(node.misuses.empty());
  HOLDS(!host::Memory::guarded());  // the end of a block is where the sanitizer looks
  HOLDS(node.watchdog.barks() == 0);
  std::size_t linked = 0;
  for (std::size_t table = 1; table <= node.hash.tables(); ++table) {
    linked += node.hash.nodes(static_cast<Handle>(table));
  }
  std::size_t nodes = 0;
  std::size_t others = 0;
  for (const host::Block &block : node.memory.live()) {
    const bool is_node =
        block.size == sizeof(PmStaticDBNode) || block.size == sizeof(PmPhyIndexNode);
    ++(is_node ? nodes : others);
  }
  HOLDS(nodes == linked);
  // Per instance the control block, the booking table, two sub-lines; then, when they are first
  // needed, port-type records and callbacks, the dynamic store's anchor and records.
  const std::size_t of_start = 4 * instances_;
  const std::size_t of_records = 4 * instances_;
  HOLDS(others >= of_start + booking_num && others <= of_start + of_records + booking_num);
}

}  // namespace fuzz
