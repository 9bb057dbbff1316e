// Model: subscriptions and restore, synchronisation of the static data.
#include <algorithm>
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = init_record;

bool all_ff(const void *data) {
  u8 ff[214];
  std::memset(ff, 0xFF, sizeof ff);
  return ZEL_MemCmp(data, ff, sizeof ff) == 0;
}

// The class, the length and the pointers of a record, in this order of values when they are wrong.
bool refused(bool right, u32 class_id, const void *data, u32 length) {
  if (!right) {
    record(0, {class_id, is_null(data), length});
  }
  return !right;
}

}  // namespace

u32 Model::PM_ScribeClass() {
  const u32 cid = ROOT_LibGetCurrentCID();
  u32 sum = 0;
  sum += DDM_LibSubscribe(cid, 0x360003, PM_LibScribeRestore_SubAttrCB);
  sum += DDM_LibSubscribe(cid, 0x360004, PM_LibScribeRestore_SubInnerSubInfo);
  sum += DDM_LibSubscribe(cid, 0x360011, PM_LibScribeRestore_DynamicCB);
  sum += DDM_LibSubscribe(cid, 0x360030, PM_LibScribeRestore_StaticDB);
  sum += DDM_LibSubscribe(cid, 0x360040, PM_LibScribeRestorePrimNotify);
  sum += DDM_LibSubscribe(cid, 0x360031, PM_LibScribeRestoreObjDelNum);
  return sum == 0 ? 0 : record(sum, {sum, cid});
}

u32 Model::PM_LibScribeRestore_SubAttrCB(u32 ulClassID, u32, const void *, const void *pData,
                                         u32 ulLen) {
  if (refused(ulClassID == 0x360003 && pData != nullptr && ulLen == 4, ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  std::memcpy(&type_numbers, pData, 4);
  return 0;
}

u32 Model::PM_LibScribeRestore_SubInnerSubInfo(u32 ulClassID, u32, const void *pKey,
                                               const void *pData, u32 ulLen) {
  if (refused(ulClassID == 0x360004 && pData != nullptr && pKey != nullptr && ulLen == 10,
              ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  Board &my = board();
  if (!my.has_types || !my.has_callbacks) {
    const u32 ret = PM_LibMallocSubAttrGlobalVar();
    if (ret != 0) {
      return record(0x68937F, {ret});
    }
    PM_LibSubInnerSubInfoInit();
  }
  u32 index = 0;
  std::memcpy(&index, pKey, sizeof index);
  if (index >= types_there(my)) {
    return record(0x689383, {index});
  }
  std::memcpy(&my.types[index], pData, 10);
  return 0;
}

u32 Model::PM_LibScribeRestore_DynamicCB(u32 ulClassID, u32, const void *pKey, const void *pData,
                                         u32 ulLen) {
  if (refused(ulClassID == 0x360011 && pData != nullptr && pKey != nullptr && ulLen == 19,
              ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  Board &my = board();
  if (!my.has_store) {
    const u32 ret = PM_LibMallocForDynCB();
    if (ret != 0) {
      return record(0x689385, {ret});
    }
    record.code(PM_LibPltEventRegister());
  }
  u16 ptp = 0;
  std::memcpy(&ptp, pKey, sizeof ptp);
  if (ptp > PM_LibGetMaxPtpID() || ptp >= my.dynamics.size()) {
    return record(0x689383, {ptp});
  }
  PtpDynPubData data{};
  std::memcpy(&data, pData, sizeof data);
  PM_LibPrimaryNotifyBefore(ptp, &data);
  const PtpDynPubData old = my.dynamics[ptp];
  my.dynamics[ptp] = data;
  PM_LibPrimaryNotifyAfter(ptp, &old);
  return 0;
}

u32 Model::PM_LibScribeRestore_StaticDB(u32 ulClassID, u32, const void *, const void *pData,
                                        u32 ulLen) {
  if (refused(ulClassID == 0x360030 && pData != nullptr && ulLen == 214, ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  PtpStaticData data{};
  std::memcpy(&data, pData, sizeof data);
  const u32 ret =
      all_ff(pData) ? PM_LibDeleteStaticDBNode(data.usPtpID) : PM_LibUpdateStaticDBNode(&data);
  if (ret != 0) {
    return record(1, {data.usPtpID});
  }
  SYN_LibModuleDataUnitModifyRecord(5, 0, data.usPtpID);
  return 0;
}

u32 Model::PM_LibScribeRestorePrimNotify(u32 ulClassID, u32, const void *, const void *pData,
                                         u32 ulLen) {
  if (ulClassID != 0x360040 || pData == nullptr || ulLen != 32) {
    return record(0x689380, {0x689380});
  }
  u16 head[2];
  std::memcpy(head, pData, sizeof head);
  auto *para = const_cast<u8 *>(static_cast<const u8 *>(pData)) + 4;
  const u32 ret = PM_LibBookCallBookedFuncs(head[0], head[1], para);
  return ret == 0 ? 0 : record(0, {head[0], ret});
}

u32 Model::PM_LibScribeRestoreObjDelNum(u32, u32, const void *, const void *pData, u32 ulLen) {
  if (pData == nullptr || ulLen < 4) {
    return record(0x689380, {ulLen, 4});
  }
  u32 count = 0;
  std::memcpy(&count, pData, sizeof count);
  PM_LibSetObjectNumInDelete(count);
  return 0;
}

u32 Model::PM_LibScribeRestore_Spec(u32 ulClassID, u32, const void *, const void *pData,
                                    u32 ulLen) {
  if (refused(ulClassID == 0x360000 && pData != nullptr && ulLen == 24, ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  std::memcpy(&spec, pData, 24);
  return 0;
}

u32 Model::PM_LibScribeRestore_AttrCB(u32 ulClassID, u32, const void *, const void *pData,
                                      u32 ulLen) {
  if (refused(ulClassID == 0x360001 && pData != nullptr && ulLen == 16, ulClassID, pData, ulLen)) {
    return 0x689383;
  }
  std::memcpy(&numbers, pData, 16);
  return 0;
}

// -- Synchronisation

u32 Model::PM_LibSynRegister() {
  u32 ret = SYN_LibRegisterModuleDataSynInfo(5, 1, 0, 0, 0);
  if (ret == 0) {
    ret = SYN_LibRegisterSynDataBlockFix(5, 2, 2, 0, 220, PM_LibGetMaxPtpID() + 1U, 0, 0,
                                         PM_LibSynExtractStaticData, PM_LibSynRestoreStaticData, 0,
                                         0);
  }
  if (ret == 0) {
    ret = SYN_LibRegisterModuleDataMode(5, 0, 0, 0);
  }
  if (ret == 0) {
    ret = SYN_LibRegisterSetBitTableFun(5, PM_LibSynResetAllBitTable);
  }
  return record.code(ret);
}

u32 Model::PM_LibSynExtractStaticData(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen) {
  if (SYN_LibIsCpuActive() == 0) {
    return record(0x689383, {0x689383});
  }
  if (pBuf == nullptr || pulOutLen == nullptr) {
    return record(0x689380, {0x689380});
  }
  if (ulBufLen < 220) {
    return record(0x6908B3, {ulBufLen, 220});
  }
  if (ulUnit > PM_LibGetMaxPtpID()) {
    return record(0x6908C2, {ulUnit, PM_LibGetMaxPtpID()});
  }
  PmSynRecord unit{};
  unit.ucModule = 5;
  unit.usLen = 214;
  std::memset(static_cast<void *>(&unit.stData), 0xFF, sizeof unit.stData);
  const auto ptp = static_cast<u16>(ulUnit);
  if (PM_LibFindStaticDBNode(ptp) != nullptr) {
    unit.stData = board().statics[ptp].data;
  }
  std::memcpy(pBuf, &unit, sizeof unit);
  *pulOutLen = 220;
  return 0;
}

u32 Model::PM_LibSynRestoreStaticData(u32 ulUnit, const void *pRecord, u32 ulLen, u32) {
  if (pRecord == nullptr) {
    return record(0x689380, {0x689380});
  }
  if (ulUnit > PM_LibGetMaxPtpID()) {
    return record(0x6908C2, {ulUnit, PM_LibGetMaxPtpID()});
  }
  if (ulLen < 6) {
    return record(0x6908B3, {ulLen, 220});
  }
  u16 version = 0;
  std::memcpy(&version, static_cast<const u8 *>(pRecord) + 4, sizeof version);
  const u32 ret = version == 0
                      ? PM_LibSynRestoreStaticDataV0(static_cast<u16>(ulUnit), pRecord, ulLen)
                      : 0x689383;
  return ret == 0 ? 0 : record(ret, {ret, version});
}

u32 Model::PM_LibSynRestoreStaticDataV0(u16 usPtpID, const void *pRecord, u32 ulLen) {
  if (pRecord == nullptr) {
    return record(0x689380, {0x689380});
  }
  if (ulLen < 220) {
    return record(0x6908B3, {ulLen, 220});
  }
  PmSynRecord unit{};
  std::memcpy(&unit, pRecord, sizeof unit);
  if (unit.usLen != 214) {
    return record(0x689383, {214, unit.usLen});
  }
  const PtpStaticData data = unit.stData;
  return all_ff(&data) ? PM_LibDeleteStaticDBNode(usPtpID) : PM_LibUpdateStaticDBNode(&data);
}

void Model::PM_LibSynResetAllBitTable() {}

u32 Model::PM_SynSetDynPrivAttrBitTable() {
  return 0;
}

}  // namespace soak
