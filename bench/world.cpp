#include "bench/world.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <random>
#include <stdexcept>

#include "global_data.hpp"

namespace bench {

namespace {

constexpr u32 slots_in_frame = 16;
constexpr u32 cid = 0x36;
constexpr u32 vs_mask = 3;

u32 ports_on_board(u32 ptps) {
  return ptps <= 64 ? 16 : ptps <= 4096 ? 128 : 255;
}

struct Place {
  u16 frame;
  u8 slot;
};

Place place_of_board(u32 board) {
  return {static_cast<u16>(board / slots_in_frame), static_cast<u8>(board % slots_in_frame)};
}

u16 type_of(u16 ptp_id) {
  return static_cast<u16>(first_type + ptp_id % type_num);
}

const PmGlobalData &data_of(const host::Instance &instance) {
  return *static_cast<const PmGlobalData *>(instance.record.pLocalData);
}

void require(bool condition, const char *what) {
  if (!condition) {
    throw std::runtime_error(std::string("the world does not come up: ") + what);
  }
}

u32 register_sub_lines() {
  u32 ret = PM_OK;
  for (u32 i = 0; i < type_num; ++i) {
    PmSubLineInfo info{};
    info.usPtpType = static_cast<u16>(first_type + i);
    info.ulPID = PM_PID_NONE;
    info.stCallBack.pfnGetAttr = sub_line_attr;
    info.stCallBack.pfnGetAttrPriv = sub_line_attr_priv;
    ret |= PM_LibRegSubLineInfo(&info);
  }
  return ret;
}

}  // namespace

PtpDynPubData dynamic_record(u32 ptps, u16 ptp_id) {
  const u32 ports = ports_on_board(ptps);
  const Place place = place_of_board(ptp_id / ports);
  PtpDynPubData record{};
  record.usIndex1 = static_cast<u16>(place.frame * host::Chassis{}.slots_per_frame + place.slot);
  record.usIndex2 = static_cast<u16>(ptp_id % ports);
  record.ucPtpClass = PM_PTP_CLASS_PORT;
  record.ucExist = 1;
  record.usPtpType = type_of(ptp_id);
  record.LastChangeTick = ptp_id;
  record.ulVsMask = vs_mask;
  return record;
}

PtpStaticData static_record(u32 ptps, u16 ptp_id) {
  const PtpDynPubData dynamic = dynamic_record(ptps, ptp_id);
  PtpStaticData record{};
  record.usPtpID = ptp_id;
  record.usBIndex = dynamic.usIndex1;
  record.ucPortID = static_cast<u8>(dynamic.usIndex2);
  record.usType = dynamic.usPtpType;
  record.ulVsMask = dynamic.ulVsMask;
  description_of(ptp_id).copy(record.szDescription, desc_len);
  return record;
}

std::string description_of(u16 ptp_id) {
  char text[desc_len];
  (void)std::snprintf(text, sizeof text, "line %05u", ptp_id);
  return text;
}

u32 sub_line_attr(u16 ptp_id, PmSubAttr *attr) {
  static constexpr char name[] = "subscriber line ";
  std::memcpy(attr->szName, name, sizeof name);
  attr->szName[sizeof name - 1] = static_cast<char>('A' + ptp_id % 26);
  return 0;
}

u32 sub_line_attr_priv(u16 ptp_id, u32 /*selector*/, PmSubAttr *attr) {
  attr->ulMtu = 1500U + ptp_id % 8;
  return 0;
}

World::World(u32 ptps, Fill fill) : ptps_(ptps), ids_(ptps) {
  std::iota(ids_.begin(), ids_.end(), u16{0});
  std::shuffle(ids_.begin(), ids_.end(), std::mt19937(17));
  // Long walks are timed here, and nothing else takes its turn meanwhile.
  node.watchdog.limit_calls = 0xFFFFFFFF;
  lay_chassis();
  publish_spec();
  PmProductMngt hooks{};
  hooks.pfnZelCfg = register_sub_lines;
  require(PM_LibRegProductMngtFuncProc(&hooks) == PM_OK, "hooks");
  {
    const auto outside = host::enter(node);
    require(PM_LibRegisterInfo() == PM_OK, "registration");
  }
  publish_spec();
  instance = node.root.construct(cid);
  require(instance != nullptr, "construction");
  require(node.root.start_fid(*instance, PM_FidInitProc) == PM_OK, "FID start-up");
  for (const u32 phase : {1U, 2U, 8U}) {
    require(node.root.start_phase(*instance, phase) == PM_OK, "phase");
  }
  if (fill == Fill::all) {
    lay_records();
    deliver_batches();
  }
  scope_ = std::make_unique<host::Scope>(*instance);
}

void World::lay_records() {
  for (u32 suffix = 0; suffix < type_num; ++suffix) {
    const PmSubInnerSubInfo info = {0, static_cast<u16>(first_type + suffix), 1, 0, 0, 0};
    node.ddm.preset(PM_CLASS_SUB_INFO, suffix, host::view_of(info));
  }
  for (u32 i = 0; i < ptps_; ++i) {
    const auto ptp_id = static_cast<u16>(i);
    node.ddm.preset(PM_CLASS_DYNAMIC, i, host::view_of(dynamic_record(ptps_, ptp_id)));
    node.ddm.preset(PM_CLASS_STATIC, i, host::view_of(static_record(ptps_, ptp_id)));
  }
}

void World::deliver_batches() {
  node.run();
  require(node.ddm.refused() == 0, "a record was refused");
  require(node.ddm.delivered() == type_num + 2 * ptps_, "records are missing");
}

void World::forget_places() {
  empty_table(data_of(*instance).ulPhyIndexHash);
}

void World::forget_dynamic_records() {
  const PmGlobalData &data = data_of(*instance);
  std::memset(*data.pstPtpDynPubData, 0, data.ulDynRecordNum * sizeof(PtpDynPubData));
}

void World::forget_static_records() {
  empty_table(data_of(*instance).ulStaticDbHash);
}

void World::empty_table(Handle table) {
  for (u32 bucket = 0; bucket < node.hash.buckets(table); ++bucket) {
    for (const void *linked : node.hash.bucket(table, bucket)) {
      void *block = const_cast<void *>(linked);
      (void)ZEL_HASH_Delete_Node(table, block, bucket);
      (void)ZEL_Free(block);
    }
  }
}

void World::lay_chassis() {
  const u32 ports = ports_on_board(ptps_);
  const u32 boards = (ptps_ + ports - 1) / ports;
  for (u32 board = 0; board < boards; ++board) {
    const Place place = place_of_board(board);
    if (place.slot == 0) {
      node.chassis.add_frame(place.frame, slots_in_frame);
    }
    node.chassis.insert(place.frame, place.slot, host::Board::of("BENCH", static_cast<u16>(ports)));
  }
}

void World::publish_spec() {
  PmSpec spec{};
  spec.ulDescMaxLen = desc_len;
  PmAttrCB attr{};
  attr.usVisiblePtpNum = static_cast<u16>(ptps_);
  attr.usMaxPtpID = static_cast<u16>(ptps_ - 1);
  const PmSubAttrNum sub = {type_num, static_cast<u16>(first_type + type_num)};
  node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
  node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(attr));
  node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(sub));
}

}  // namespace bench
