// Steps that bring records: specification, distribution, synchronisation.
#include <algorithm>

#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

u16 half(u32 value) {
  return static_cast<u16>(value);
}

u8 byte_of(u32 value) {
  return static_cast<u8>(value);
}

void publish_spec(Stage &stage, const PmSpec &spec) {
  for (host::Node &node : stage.nodes) {
    node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
  }
}

void general_spec(Stage &stage, const u32 *a) {
  publish_spec(stage, {a[0], a[1], 1, a[2], a[3], a[0] * 77'777});
}

void numbers_spec(Stage &stage, const u32 *a) {
  const PmAttrCB numbers{half(a[0]), half(a[1]), half(a[2]), half(a[3]), 1, half(a[4]), 2, 3};
  for (host::Node &node : stage.nodes) {
    node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(numbers));
  }
}

void types_spec(Stage &stage, const u32 *a) {
  const PmSubAttrNum numbers{half(a[0]), half(a[1])};
  for (host::Node &node : stage.nodes) {
    node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(numbers));
  }
}

// A specification message that need not be right.
template <class P>
void odd_spec(Stage &stage, const u32 *a) {
  constexpr u32 identifiers[] = {0x6C00000, 0x6C00001, 0x6C00002, 0x6C00003};
  constexpr u32 lengths[] = {4, 16, 24, 3, 25};
  struct {
    u32 head[2];
    u32 payload[8];
  } message{};
  message.head[0] = identifiers[a[0] % std::size(identifiers)];
  message.head[1] = lengths[a[1] % std::size(lengths)];
  for (u32 &word : message.payload) {
    word = 0x00400040;  // sane as a count and as a length
  }
  stage.say("answer", {P::PM_LibSpecUpdate(&message)});
}

PtpDynPubData dynamic_of(const u32 *a) {
  PtpDynPubData data{};
  data.usIndex1 = half(a[0]);
  data.usIndex2 = half(a[1]);
  data.ucPtpClass = byte_of(a[2]);
  data.ucExist = byte_of(a[3]);
  data.usPtpType = half(a[4]);
  data.ucInvisible = byte_of(a[5]);
  data.PrivDynDataID = half(a[6]);
  data.LastChangeTick = a[6] * 65'537;
  data.ulVsMask = a[7];
  return data;
}

void dynamic_record(Stage &stage, const u32 *a) {
  const PtpDynPubData data = dynamic_of(a + 1);
  stage.say("answer", {stage.node().ddm.publish(PM_CLASS_DYNAMIC, a[0], host::view_of(data))});
}

PtpStaticData static_of(const u32 *a) {
  PtpStaticData data{};
  data.usPtpID = half(a[0]);
  data.usBIndex = half(a[1]);
  data.ucPortID = byte_of(a[2]);
  data.ucLinkUpDownTrap = byte_of(a[3]);
  data.usType = half(a[4]);
  data.ucVisible = byte_of(a[5]);
  data.ulVsMask = a[6];
  auto *bytes = reinterpret_cast<u8 *>(&data);
  for (u32 i = 14; i < sizeof data; ++i) {
    bytes[i] = static_cast<u8>(i * 7 + a[7] + 1);
  }
  const std::string text = text_of(a[7]);
  std::memcpy(bytes + 13, text.c_str(), std::min<std::size_t>(text.size() + 1, 120));
  return data;
}

void static_record(Stage &stage, const u32 *a) {
  const PtpStaticData data = static_of(a);
  stage.say("answer", {stage.node().ddm.publish(PM_CLASS_STATIC, a[0], host::view_of(data))});
}

// A record of nothing but ones, by distribution or as a unit: the PTP has no static data any more.
template <class P>
void static_gone(Stage &stage, const u32 *a) {
  PmSynRecord unit{};
  unit.ucModule = 5;
  unit.usLen = half(a[1] == 1 ? 213 : 214);
  unit.usVersion = half(a[2] == 3 ? 1 : 0);
  std::memset(static_cast<void *>(&unit.stData), 0xFF, sizeof unit.stData);
  if (a[2] == 0) {
    const PtpStaticData data = unit.stData;
    stage.say("answer", {stage.node().ddm.publish(PM_CLASS_STATIC, a[0], host::view_of(data))});
    return;
  }
  const u32 length = a[3] == 1 ? 219 : a[3] == 2 ? 5 : 220;
  stage.say("answer", {P::PM_LibSynRestoreStaticData(a[0], &unit, length, 0)});
}

template <class P>
void static_unit(Stage &stage, const u32 *a) {
  PmSynRecord unit{};
  unit.usLen = 214;
  unit.stData = static_of(a);
  stage.say("answer", {P::PM_LibSynRestoreStaticData(a[8] == 1 ? a[9] : a[0], &unit, 220, 0)});
}

template <class P>
void extract(Stage &stage, const u32 *a) {
  constexpr u32 lengths[] = {220, 220, 219, 256};
  Room &room = fresh_room(0);
  u32 length = 0x5A5A5A5A;
  stage.say("answer",
            {P::PM_LibSynExtractStaticData(a[0], a[1] == 1 ? nullptr : room.bytes,
                                           lengths[a[3] % 4], a[2] == 1 ? nullptr : &length),
             length});
  say_room(stage, room);
}

void type_record(Stage &stage, const u32 *a) {
  const PmSubInnerSubInfo info{half(a[5]),    half(a[1]), byte_of(a[2]),
                               byte_of(a[5]), half(a[3]), half(a[4])};
  stage.say("answer", {stage.node().ddm.publish(PM_CLASS_SUB_INFO, a[0], host::view_of(info))});
}

void counts_record(Stage &stage, const u32 *a) {
  const PmSubAttrNum numbers{half(a[0]), half(a[1])};
  stage.say("answer", {stage.node().ddm.publish(PM_CLASS_SUB_ATTR, 0, host::view_of(numbers))});
}

void notification(Stage &stage, const u32 *a) {
  PmPrimNotify data{};
  data.usPrimType = half(a[0]);
  data.usPtpID = half(a[1]);
  data.aucPara[0] = byte_of(a[2]);
  data.aucPara[1] = byte_of(a[2] + 1);
  stage.say("answer", {stage.node().ddm.send(PM_CLASS_PRIM_NOTIFY, 0, host::view_of(data))});
}

void deletion_count(Stage &stage, const u32 *a) {
  const u32 data[2] = {a[0], 0xEEEEEEEE};
  const host::ByteView view = host::view_of(data);
  constexpr std::size_t sizes[] = {4, 4, 8, 3};
  stage.say("answer", {stage.node().ddm.send(PM_CLASS_OBJ_DEL_NUM, 0,
                                             view.first(sizes[a[1] % std::size(sizes)]))});
}

void lay_record(Stage &stage, const u32 *a) {
  const PtpDynPubData data = dynamic_of(a + 1);
  stage.node().ddm.preset(PM_CLASS_DYNAMIC, a[0], host::view_of(data));
}

void batches(Stage &stage, const u32 * /*a*/) {
  if (stage.instance() != nullptr) {
    stage.node().ddm.restart_batches(stage.instance()->cid());
  }
}

// A handler asked directly, with a class, a length and pointers that need not be right.
template <class P>
void odd_record(Stage &stage, const u32 *a) {
  constexpr struct {
    u32 class_id;
    u32 length;
    DdmRestoreFunc restore;
  } handlers[] = {{0x360003, 4, P::PM_LibScribeRestore_SubAttrCB},
                  {0x360004, 10, P::PM_LibScribeRestore_SubInnerSubInfo},
                  {0x360011, 19, P::PM_LibScribeRestore_DynamicCB},
                  {0x360030, 214, P::PM_LibScribeRestore_StaticDB},
                  {0x360040, 32, P::PM_LibScribeRestorePrimNotify},
                  {0x360031, 4, P::PM_LibScribeRestoreObjDelNum},
                  {0x360000, 24, P::PM_LibScribeRestore_Spec},
                  {0x360001, 16, P::PM_LibScribeRestore_AttrCB}};
  const auto &handler = handlers[a[0] % std::size(handlers)];
  u8 data[256] = {};
  for (std::size_t i = 0; i < sizeof data; ++i) {
    data[i] = static_cast<u8>(i % 4 == 0 ? 24 + a[1] % 8 : 0);
  }
  const u32 key = a[1];
  const u32 class_id = handler.class_id + (a[2] == 1 ? 1 : 0);
  const u32 length = handler.length + (a[2] == 2 ? 1 : 0) - (a[2] == 3 ? 1 : 0);
  stage.say("answer", {handler.restore(class_id, 0, a[3] == 1 ? nullptr : &key,
                                       a[4] == 1 ? nullptr : data, length)});
}

template <class P>
void set_attribute(Stage &stage, const u32 *a) {
  Room &room = fresh_room(0);
  std::memcpy(room.bytes, &a[2], sizeof a[2]);
  stage.say("answer",
            {P::PM_LibSetDynPubDataAttr(half(a[0]), a[1], a[3] == 1 ? nullptr : room.bytes)});
}

}  // namespace

std::vector<Op> record_actions() {
  return {
      SOAK_SAME(2, "general-spec", general_spec, any, any, desc_length, any),
      SOAK_SAME(2, "numbers-spec", numbers_spec, count, few, few, max_ptp, byte),
      SOAK_SAME(1, "types-spec", types_spec, types, max_type),
      SOAK_BOTH(2, "odd-spec", odd_spec, few, few),
      SOAK_ASK(6, PM_LibSetPmSpec, spec_index, desc_length),
      SOAK_SAME(120, "dynamic", dynamic_record, ptp, board, index2, ptp_class, exist, type,
                invisible, any, mask),
      SOAK_SAME(60, "static", static_record, ptp, board, port, few, type, few, mask, desc),
      SOAK_BOTH(10, "static-gone", static_gone, ptp, null, few, few),
      SOAK_BOTH(10, "static-unit", static_unit, ptp, board, port, few, type, few, mask, desc, null,
                ptp),
      SOAK_BOTH(10, "extract", extract, ptp, null, null, few),
      SOAK_SAME(16, "type", type_record, suffix, type, yes, byte, byte, byte),
      SOAK_SAME(2, "counts", counts_record, types, max_type),
      SOAK_SAME(20, "notification", notification, prim, ptp, byte),
      SOAK_SAME(3, "deletion-count", deletion_count, few, few),
      SOAK_SAME(4, "lay", lay_record, ptp, board, index2, ptp_class, exist, type, invisible, any,
                mask),
      SOAK_SAME(1, "batches", batches),
      SOAK_BOTH(8, "odd-record", odd_record, byte, ptp, few, null, null),
      SOAK_BOTH(10, "set-attribute", set_attribute, ptp, selector, any, null),
      SOAK_ASK(1, PM_LibMallocForDynCB),
      SOAK_ASK(2, PM_LibDeleteStaticDBNode, ptp),
  };
}

}  // namespace soak
