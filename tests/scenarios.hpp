// A small node on which single steps are made and looked at, and everything that belongs to its
// instances: for sweeps that disturb scenes of its life.
#ifndef TESTS_SCENARIOS_HPP
#define TESTS_SCENARIOS_HPP

#include <algorithm>
#include <set>

#include "global_data.hpp"
#include "live_pm.hpp"

namespace scenes {

// In a list of codes: what the disturbed host function answers.
constexpr u32 host_code = 0x4057C0DE;
using Codes = std::vector<u32>;

struct Step {
  std::string name;
  u32 code;
  Codes allowed;  // besides the undisturbed one
  bool wrote;     // an output, although the code tells of a failure
};

inline PmSubLineInfo sub_line(u16 type, u32 pid) {
  PmSubLineInfo info{};
  info.usPtpType = type;
  info.ulPID = pid;
  info.pfnInitFunc = [](u32) { return PM_OK; };
  info.stCallBack.pfnGetStats = [](u16, PmSubStats *) { return PM_OK; };
  info.stCallBack.pfnGetAttr = [](u16, PmSubAttr *attr) {
    return attr == nullptr ? PM_OK : (attr->ucAdminStatus = 1, PM_OK);
  };
  info.stCallBack.pfnGetAttrPriv = [](u16, u32, PmSubAttr *) { return PM_OK; };
  info.stCallBack.pfnGetActiveSpeed = [](u16, u32 *, u32 *) { return PM_OK; };
  return info;
}

// Process-wide records start empty. Board 0 (slot 0 of frame 0) and board 33 carry PTPs.
class Stage : public test::LivePm {
 public:
  static constexpr u32 standby_cid = cid + 1;
  static constexpr test::Counts counts = {.max_ptp_id = 40, .visible = 5, .virtual_ptps = 1};
  std::vector<Step> steps;
  std::set<const void *> kept;  // blocks of instances that are gone, and lost ones
  host::Instance *standby = nullptr;

  Stage() {
    for (const auto &[identifier, size] :
         {std::pair{PM_SPEC_MSG_SPEC, 24}, {PM_SPEC_MSG_ATTR_CB, 16}, {PM_SPEC_MSG_SUB_ATTR, 4}}) {
      const u32 message[8] = {static_cast<u32>(identifier), static_cast<u32>(size)};
      PM_LibSpecUpdate(message);
    }
    hook_sub_lines({sub_line(7, 100), sub_line(8, PM_PID_NONE)});
    node.owner.set_virtual_range(30, 39);
  }
  void TestBody() override {}

  template <typename Call>
  u32 step(const std::string &name, const Codes &allowed, Call call) {
    std::memset(outputs_, fresh, sizeof outputs_);
    const u32 code = call();
    const bool wrote = code != PM_OK && std::count(outputs_, std::end(outputs_), fresh) !=
                                            static_cast<std::ptrdiff_t>(sizeof outputs_);
    steps.push_back({name, code, allowed, wrote});
    return code;
  }
  // An output of the next step.
  template <typename Value>
  Value *to(u32 number = 0) {
    return reinterpret_cast<Value *>(&outputs_[number * sizeof outputs_ / 4]);
  }

  // A running instance with port types 7 and 8, PTPs 0 to 3 of class 0, 4 of class 1, and static
  // data for the first five.
  void full() {
    up(counts);
    put_type(0, 7, 70, 1);
    put_type(1, 8, 80, 1);
    for (u16 id = 0; id < 5; ++id) {
      PtpDynPubData record = test::port_record(id < 3 ? 0 : 33, id, 7, id == 2 ? 0x6 : 0x1);
      record.ucPtpClass = id == 4 ? PM_PTP_CLASS_OTHER : PM_PTP_CLASS_PORT;
      put(id, record);
      put(test::static_record(id, "port " + std::to_string(id)));
    }
    const PmPtpClassFunc functions = {nullptr, nullptr, [](u16, u16 *board, u8 *port) {
                                        *board = 33;
                                        *port = 4;
                                        return PM_OK;
                                      }};
    PM_LibRegPtpClassFunc(PM_PTP_CLASS_OTHER, &functions);
    node.run();
  }
  void add_standby() {
    scope.reset();
    standby = node.root.construct(standby_cid);
    node.root.start_fid(*standby, PM_FidInitProc);
    for (const u32 number : {1U, 2U, 8U}) {
      node.root.start_phase(*standby, number);
    }
    node.run();
    node.syn.pair(*instance, *standby);
    node.syn.attach(host::CatchUp::full);
    node.run();
    scope.emplace(*instance);
  }

  // What the instances hold and what the host keeps of them, without addresses of blocks.
  std::string picture() {
    std::string all;
    for (host::Instance *one : node.root.instances()) {
      const auto inside = host::enter(*one);
      append_tables(all, pm::load<PmGlobalData>(one->record.pLocalData));
      const auto classes = node.ddm.subscriptions(one->cid());
      append(all, classes.data(), classes.size() * sizeof(u32));
      all += std::to_string(node.syn.marked(*one)) + "/" + std::to_string(one->pids.size());
    }
    for (const auto &[id, flag] : node.objects.objects()) {
      all += std::to_string(id.vs) + ":" + std::to_string(id.ptp) + "=" + std::to_string(flag);
    }
    return all + std::to_string(node.root.publications().size());
  }

  // Blocks that the instances lead to, and those that are kept.
  std::set<const void *> held() {
    std::set<const void *> blocks = kept;
    for (host::Instance *one : node.root.instances()) {
      if (one->record.pLocalData != nullptr) {
        insert_blocks(blocks, pm::load<PmGlobalData>(one->record.pLocalData));
      }
    }
    return blocks;
  }

 private:
  static constexpr u8 fresh = 0xEE;
  alignas(8) u8 outputs_[1024];

  static void append(std::string &all, const void *bytes, std::size_t size) {
    all.append(static_cast<const char *>(bytes), size);
  }
  template <typename Visit>
  static void each_booking(const PmGlobalData &data, Visit visit) {
    for (u32 type = 0; data.pstBookTable != nullptr && type < PM_PRIM_NUM; ++type) {
      const PmBookNode *at = data.pstBookTable->apstHead[type];
      for (; at != nullptr; at = at->pstNext) {
        visit(type, at);
      }
    }
  }
  static void append_tables(std::string &all, const PmGlobalData &data) {
    each_booking(data, [&](u32 type, const PmBookNode *at) {
      append(all, &type, sizeof type);
      append(all, at, sizeof at->stRecord);
    });
    if (data.pstSubAttrCB != nullptr) {
      append(all, data.pstSubAttrCB, 2 * sizeof(u16));
      append(all, data.pstSubAttrCB->pstSubInnerSubInfo,
             data.usSubInfoNum * sizeof(PmSubInnerSubInfo));
    }
    append(all, data.pstSubCallBack, data.usSubCallBackNum * sizeof(PmSubCallBackEntry));
    if (data.pstPtpDynPubData != nullptr) {
      append(all, *data.pstPtpDynPubData, data.ulDynRecordNum * sizeof(PtpDynPubData));
    }
    for (u16 id = 0; id <= counts.max_ptp_id; ++id) {
      if (const PmStaticDBNode *found = PM_LibFindStaticDBNode(id)) {
        append(all, &found->stData, sizeof found->stData);
      }
    }
    for (const PmSubInfoNode *at = data.pstSubInfoHead; at != nullptr; at = at->pstNext) {
      append(all, &at->stInfo, sizeof at->stInfo);
    }
    append(all, &data.astDbwinCmd, sizeof data.astDbwinCmd);
    append(all, &data.astPtpClassFunc, sizeof data.astPtpClassFunc);
    append(all, &data.astDbgSwitch, sizeof data.astDbgSwitch);
    all += std::to_string(data.ulObjNumInDelete) + "/" + std::to_string(data.usPtpTypeNum);
  }
  void insert_blocks(std::set<const void *> &blocks, const PmGlobalData &data) {
    blocks.insert({data.pstSubAttrCB, data.pstSubCallBack, data.pstBookTable, data.pstPtpDynPubData,
                   data.pstInstProductMngt});
    if (data.pstSubAttrCB != nullptr) {
      blocks.insert(data.pstSubAttrCB->pstSubInnerSubInfo);
    }
    if (data.pstPtpDynPubData != nullptr) {
      blocks.insert(*data.pstPtpDynPubData);
    }
    for (const PmSubInfoNode *at = data.pstSubInfoHead; at != nullptr; at = at->pstNext) {
      blocks.insert(at);
    }
    each_booking(data, [&](u32, const PmBookNode *at) { blocks.insert(at); });
    for (const Handle table : {data.ulStaticDbHash + 0, data.ulPhyIndexHash + 0}) {
      std::size_t left = node.hash.nodes(table);
      for (u32 number = 0; left > 0; ++number) {
        const auto bucket = node.hash.bucket(table, number);
        blocks.insert(bucket.begin(), bucket.end());
        left -= bucket.size();
      }
    }
  }
};

// The same again has to go well when the host works again.
struct Scene {
  std::string name;
  void (*prepare)(Stage &);
  void (*act)(Stage &);

  friend void PrintTo(const Scene &scene, std::ostream *out) { *out << scene.name; }
};

extern const std::vector<Scene> all;

}  // namespace scenes

#endif
