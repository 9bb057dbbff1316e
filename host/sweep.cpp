#include "host/sweep.hpp"

#include "host/host.hpp"

namespace host {

namespace {

constexpr u32 partitions[] = {partition_static, partition_block, partition_dynamic};
constexpr u32 for_ever = 0xFFFFFFFF;
constexpr u32 largest = 0xFFFFFFFF;

// Where the answer of a function's kind is not all there is. Of comparisons and of memory only the
// cautious answer is tried: the other one would be a host that lies.
struct Special {
  Fn fn;
  std::vector<u32> answers;
};

const std::vector<Special> &specials() {
  // Outputs are left unwritten by a success, too; the second code ends a walk.
  static const std::vector<u32> getter = {0, 1, 0x689384, largest};
  static const std::vector<Special> list = {
      {Fn::ROOT_LibIsPidDepend, {0, 2}},
      {Fn::DMS_MsgRecvIidGet, {0, 31, 32, largest}},
      {Fn::SYN_LibIsCpuActive, {0, 2}},
      {Fn::DEV_GetMaxFrameNum, {0, 1, 0xFFFF}},
      {Fn::PTOPO_ESWITCH_IsEswitchPort, {0, 1, largest}},
      {Fn::DBG_xPrintfSwitch, {0, 2, largest}},
      {Fn::ZEL_MemCmp, {1, largest}},
      {Fn::ZEL_StrLen, {0, 256, largest}},
      {Fn::KVT_StrNCmp, {0, 1}},
      {Fn::snprintf_truncated_s, {largest}},
      {Fn::vsnprintf_truncated_s, {largest}},
      {Fn::DDM_LibScribeIsClassBtFinished, getter},
      {Fn::RPC_LibSyncCall, getter},
      {Fn::DEV_LibGetFrameAttribute, getter},
      {Fn::DEV_LibGetBoardAttribute, getter},
      {Fn::DEV_LibGetPortTypeOfBoard, getter},
      {Fn::DEV_LibGetBIndexFromFrameIDSlotID, getter},
      {Fn::DEV_LibGetFrameIDSlotIDFromBIndex, getter},
      {Fn::PTOPO_LibGetHardPhyIDFromPortId, getter},
      {Fn::CAP_LibGetCapability, getter},
      {Fn::ATTR_LibGetAttribute, getter},
  };
  return list;
}

}  // namespace

std::vector<u32> failures_of(Fn fn) {
  for (const Special &special : specials()) {
    if (special.fn == fn) {
      return special.answers;
    }
  }
  switch (info_of(fn).answer) {
    case Answer::code:
      return {1, 0x6908AD, largest};
    case Answer::value:
      return {0, largest};
    case Answer::pointer:
    case Answer::handle:
    case Answer::nothing:
      break;
  }
  return {0};
}

std::string Disturbance::text() const {
  return fn ? std::string(name_of(*fn)) + " " + (n == 0 ? "always" : std::to_string(n)) +
                  " answers " + std::to_string(value)
            : std::string("partition ") + Memory::partition_name(partition) + " has room for " +
                  std::to_string(n);
}

void Disturbance::arm(Node &node) const {
  if (fn) {
    const bool once = n != 0 && *fn != Fn::ROOT_LibGetCurrentThis;
    node.faults.fail_nth(*fn, n, value, once ? 1 : for_ever);
  } else if (partition != 0) {
    node.memory.limit_blocks(partition, node.memory.use(partition).blocks + n);
  }
}

void Disturbance::disarm(Node &node) {
  node.faults.clear();
  for (const u32 number : partitions) {
    node.memory.limit_blocks(number, PartitionUse::unlimited);
  }
}

Use::Use(const Node &node) {
  for (const FnInfo &info : fn_infos) {
    calls_[index_of(info.fn)] = node.faults.calls(info.fn);
  }
  for (const u32 number : partitions) {
    allocations_[number - partition_static] = node.memory.use(number).allocations;
  }
}

u32 Use::calls(const Node &now) const {
  u32 sum = 0;
  for (const FnInfo &info : fn_infos) {
    sum += now.faults.calls(info.fn) - calls_[index_of(info.fn)];
  }
  return sum;
}

u32 Use::functions(const Node &now) const {
  u32 sum = 0;
  for (const FnInfo &info : fn_infos) {
    sum += now.faults.calls(info.fn) != calls_[index_of(info.fn)] ? 1U : 0U;
  }
  return sum;
}

std::vector<Disturbance> Use::disturbances(const Node &now) const {
  std::vector<Disturbance> all;
  for (const FnInfo &info : fn_infos) {
    const u32 count = now.faults.calls(info.fn) - calls_[index_of(info.fn)];
    for (u32 n = 0; n <= count && count != 0; ++n) {
      for (const u32 value : failures_of(info.fn)) {
        all.push_back({info.fn, n, value, 0});
      }
    }
  }
  for (const u32 number : partitions) {
    const auto given = now.memory.use(number).allocations - allocations_[number - partition_static];
    for (u32 n = 0; n < given; ++n) {
      all.push_back({{}, n, 0, number});
    }
  }
  return all;
}

}  // namespace host
