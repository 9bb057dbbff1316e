// Records of the data distribution, in any order, of any class, length and content: each restore
// handler takes what its class says, refuses the rest, and what it has taken is what is read.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

struct Head {
  u8 handler;
  u8 flags;
  u8 length;
  u8 class_change;  // of the handler's own class
  u32 key;
};

enum : u8 { no_key = 1, no_data = 2, batch_over = 4, count_types_anew = 8 };

struct Delivery {
  Head head;
  std::vector<u8> data;
  bool fits;  // class, data and length are as the handler wants them
};

struct Session {
  Rig rig;
  u32 slots = 0;  // of the dynamic store; 0 = there is none yet
};

u32 restore_types(Session &, const Delivery &delivery, u32 code) {
  HOLDS(code == (delivery.fits ? PM_OK : PM_ERR_DATA_INVALID));
  return code;
}

u32 restore_sub_info(Session &, const Delivery &delivery, u32 code) {
  PmSubInnerSubInfo *info = nullptr;
  const bool taken =
      delivery.fits && (delivery.head.flags & no_key) == 0 &&
      PM_LibGetSubInfoFromSuffix(static_cast<u16>(delivery.head.key), &info) == PM_OK &&
      delivery.head.key <= 0xFFFF;
  if (taken) {
    HOLDS(code == PM_OK && same(*info, record_in<PmSubInnerSubInfo>(delivery.data)));
  } else {
    HOLDS(code == PM_ERR_DATA_INVALID || code == PM_ERR_MEM_OPER);
  }
  return code;
}

u32 restore_dynamic(Session &session, const Delivery &delivery, u32 code) {
  const bool readable = delivery.fits && (delivery.head.flags & no_key) == 0;
  if (readable && session.slots == 0) {
    session.slots = PM_LibGetMaxPtpID() + 1U;
  }
  const u16 id = static_cast<u16>(delivery.head.key);
  if (!readable || id > PM_LibGetMaxPtpID() || id >= session.slots) {
    HOLDS(code == PM_ERR_DATA_INVALID);
    return code;
  }
  HOLDS(code == PM_OK);
  PtpDynPubData record{};
  const u32 read = PM_LibGetAllDynDataFromPtpID(id, &record);
  const auto given = record_in<PtpDynPubData>(delivery.data);
  HOLDS(read == (given.ucExist != 0 ? PM_OK : PM_ERR_PTP_NOT_EXIST) && same(record, given));
  return code;
}

u32 restore_static(Session &, const Delivery &delivery, u32 code) {
  HOLDS(code == (delivery.fits ? PM_OK : PM_ERR_DATA_INVALID));
  if (!delivery.fits) {
    return code;
  }
  const auto given = record_in<PtpStaticData>(delivery.data);
  const bool absent =
      std::all_of(delivery.data.begin(), delivery.data.end(), [](u8 byte) { return byte == 0xFF; });
  const PmStaticDBNode *node = PM_LibFindStaticDBNode(given.usPtpID);
  HOLDS(absent ? node == nullptr : node != nullptr && same(node->stData, given));
  return code;
}

u32 restore_primitive(Session &, const Delivery &delivery, u32 code) {
  HOLDS(code == (delivery.fits ? PM_OK : PM_ERR_PARA));
  return code;
}

u32 restore_deletions(Session &, const Delivery &delivery, u32 code) {
  const bool taken = delivery.data.size() >= sizeof(u32);
  HOLDS(code == (taken ? PM_OK : PM_ERR_PARA));
  HOLDS(!taken || PM_LibGetObjectNumInDelete() == record_in<u32>(delivery.data));
  return code;
}

struct Handler {
  u32 class_id;
  std::size_t size;
  DdmRestoreFunc restore;
  u32 (*judge)(Session &session, const Delivery &delivery, u32 code);
};

constexpr Handler handlers[] = {
    {PM_CLASS_SUB_ATTR, sizeof(PmSubAttrNum), PM_LibScribeRestore_SubAttrCB, restore_types},
    {PM_CLASS_SUB_INFO, sizeof(PmSubInnerSubInfo), PM_LibScribeRestore_SubInnerSubInfo,
     restore_sub_info},
    {PM_CLASS_DYNAMIC, sizeof(PtpDynPubData), PM_LibScribeRestore_DynamicCB, restore_dynamic},
    {PM_CLASS_STATIC, sizeof(PtpStaticData), PM_LibScribeRestore_StaticDB, restore_static},
    {PM_CLASS_PRIM_NOTIFY, sizeof(PmPrimNotify), PM_LibScribeRestorePrimNotify, restore_primitive},
    {PM_CLASS_OBJ_DEL_NUM, sizeof(u32), PM_LibScribeRestoreObjDelNum, restore_deletions},
    {PM_CLASS_SPEC, sizeof(PmSpec), PM_LibScribeRestore_Spec, restore_types},
    {PM_CLASS_ATTR_CB, sizeof(PmAttrCB), PM_LibScribeRestore_AttrCB, restore_types},
};

void deliver(Session &session, Input &input) {
  Delivery delivery{};
  delivery.head = input.record<Head>();
  const Head &head = delivery.head;
  const Handler &handler = handlers[head.handler % std::size(handlers)];
  if ((head.flags & no_data) == 0) {
    delivery.data = input.whole_block(head.length);
  }
  // Deliveries without data have a length all the same.
  const u32 length = head.length;
  delivery.fits =
      head.class_change == 0 && delivery.data.data() != nullptr && length == handler.size;
  session.rig.node.ddm.forced_batch_state = (head.flags & batch_over) != 0 ? 1 : 0;
  // Neither key nor data is aligned.
  std::vector<u8> key(sizeof head.key + 1);
  std::memcpy(key.data() + 1, &head.key, sizeof head.key);
  const void *key_at = (head.flags & no_key) != 0 ? nullptr : key.data() + 1;
  const u32 code = handler.restore(handler.class_id + head.class_change, 0, key_at,
                                   delivery.data.empty() ? nullptr : delivery.data.data(), length);
  handler.judge(session, delivery, code);
  if ((head.flags & count_types_anew) != 0) {
    HOLDS(PM_LibPtpTypeNumInit() == PM_OK);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  Input input(bytes, size);
  Session session;
  if (input.number<u8>() % 2 == 0) {
    session.rig.lay_tables();
    session.slots = max_ptp + 1U;
  }
  const auto scope = host::enter(*session.rig.instance);
  while (!input.empty()) {
    deliver(session, input);
  }
  return 0;
}
