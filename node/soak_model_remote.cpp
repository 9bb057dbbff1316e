// Model: remote calls, object deletion, capability and attribute classes.
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

namespace {

struct Sent {
  u32 kind;
  u32 length;
  void *value;
};

void *by_value(PmWord value) {
  return reinterpret_cast<void *>(value);
}

void describe(RpcPara &block, std::initializer_list<Sent> parameters) {
  RPC_LibParaInit(&block, static_cast<u32>(parameters.size()));
  u32 index = 0;
  for (const Sent &sent : parameters) {
    RPC_LibParaSet(&block, index++, sent.kind, sent.length, sent.value);
  }
}

// The transport's code; the server's answer beside it.
u32 call(const char *service, std::initializer_list<Sent> parameters, u32 &answer) {
  RpcPara block;
  u8 result[516] = {};
  describe(block, parameters);
  const u32 ret = RPC_LibSyncCall(0, service, &block, result);
  std::memcpy(&answer, result, sizeof answer);
  return ret;
}

// A failure of either, recorded.
u32 plain_call(const char *service, std::initializer_list<Sent> parameters) {
  u32 answer = 0;
  const u32 ret = call(service, parameters, answer);
  return sapi_record.code(ret != 0 ? ret : answer);
}

}  // namespace

// -- Services

u32 Model::PM_SapiBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara) {
  return PM_LibBookCallBookedFuncs(usPrimType, usPtpID, pPara);
}

u32 Model::PM_SapiNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                           PmFspOntid *pstKey, u32 ulResult) {
  return PM_LibNotifyDelObjectCfgResult(pfnCompletion, pstKey, ulResult);
}

u32 Model::PM_LibLinkEventNotify(u16 usPtpID, u8 ucEvent) {
  RpcPara block;
  describe(block, {{0, 2, by_value(usPtpID)}, {0, 1, by_value(ucEvent)}});
  return sapi_record.code(RPC_LibAyncCall(0, "PM_SapiLinkEventNotify", &block));
}

// -- Virtual PTPs and descriptions

u32 Model::PM_LibAddVirtualPtp(PmVirtualPtpDesc *pstDesc, u16 *pusNewPtpID) {
  const u32 ret = plain_call("PM_SapiAddVirtualPtp", {{1, 8, pstDesc}, {2, 2, pusNewPtpID}});
  if (ret != 0) {
    return ret;
  }
  if (pstDesc == nullptr || pusNewPtpID == nullptr) {
    return sapi_record(0, {0x689380});
  }
  const u16 index1 = pstDesc->usIndex1;
  const u16 index2 = pstDesc->usIndex2;
  const u16 type = pstDesc->usPtpType;
  const u8 exist = 1;
  const u16 ptp = *pusNewPtpID;
  u32 failed = PM_LibSetDynPubDataAttr(ptp, 0, &index1);
  failed |= PM_LibSetDynPubDataAttr(ptp, 1, &index2);
  failed |= PM_LibSetDynPubDataAttr(ptp, 2, &pstDesc->ucPtpClass);
  failed |= PM_LibSetDynPubDataAttr(ptp, 3, &exist);
  failed |= PM_LibSetDynPubDataAttr(ptp, 4, &type);
  sapi_record.code(failed);
  return 0;
}

u32 Model::PM_LibDelVirtualPtp(u16 usPtpID) {
  return plain_call("PM_SapiDelVirtualPtp", {{0, 2, by_value(usPtpID)}});
}

u32 Model::PM_LibSetDescFromPTP(u16 usPtpID, u8 *pucDesc, u32 ulLength) {
  return plain_call("PM_SapiSetDescFromPTP", {{0, 2, by_value(usPtpID)}, {1, ulLength, pucDesc}});
}

// -- Object deletion

u32 Model::PM_LibGetObjectNumInDelete() {
  return board().deleting;
}

u32 Model::PM_LibSetObjectNumInDelete(u32 ulObjNum) {
  board().deleting = ulObjNum;
  return 0;
}

u32 Model::PM_LibIsObjSupportSrvCfg(PmFspOntid *pstKey) {
  if (PM_LibGetObjectNumInDelete() == 0) {
    return 0;
  }
  u32 answer = 0;
  const u32 ret = call("PM_SapiIsObjSupportSrvCfg", {{1, 8, pstKey}}, answer);
  return ret != 0 ? sapi_record(0, {ret}) : sapi_record.code(answer);
}

u32 Model::PM_LibOperCheckCanDelPTP(u16 usPtpID) {
  u32 answer = 0;
  const u32 ret = call("PM_SapiOperCheckCanDelPTP", {{0, 2, by_value(usPtpID)}}, answer);
  return ret != 0 ? sapi_record(1, {ret}) : answer;
}

u32 Model::PM_LibDelObjectCfg(PmFspOntid *pstKey, char *pcText, PmWord ulCompletion) {
  const u32 length = pcText == nullptr ? 0 : ZEL_StrLen(pcText);
  if (length > 255) {
    return 0x6908BD;
  }
  const u32 cid = ROOT_LibGetCurrentCID();
  return plain_call("PM_SapiDelObjectCfg", {{1, 8, pstKey},
                                            {1, length, pcText},
                                            {0, 4, by_value(cid)},
                                            {0, sizeof(PmWord), by_value(ulCompletion)}});
}

u32 Model::PM_LibNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                          PmFspOntid *pstKey, u32 ulResult) {
  if (pfnCompletion == nullptr || pstKey == nullptr) {
    return core_record(0, {is_null(pfnCompletion)});
  }
  const u32 ont = pstKey->ulOntID;
  DBG_InnerPrintInfo(54,
                     "\r\n PM_LibNotifyDelObjectCfgResult, f/s/p/ontid:%u/%u/%u/%u, ulResult:%u",
                     pstKey->usFrameID, pstKey->ucSlotID, pstKey->ucPortID, ont, ulResult);
  core_record.code(pfnCompletion(pstKey, ulResult));
  return 0;
}

// -- Capability and attribute classes

u32 Model::PM_LibRegCapClassMngt() {
  const PmClassMngtReg info{PM_LibGetPtpTypeForAttm, 54, 32};
  return core_record.code(CAP_LibRegCapMngtProc(3, &info));
}

u32 Model::PM_LibRegAttrClassMngt() {
  const PmClassMngtReg info{PM_LibGetPtpTypeForAttm, 54, static_cast<u16>(PM_LibGetPmSpec(5))};
  return core_record.code(ATTR_LibRegClassMngtProc(3, &info));
}

u32 Model::PM_LibGetPtpCapability(u16 usPtpID, u32 ulCapability) {
  if (ulCapability == 0xFFFFFFFF) {
    return core_record(0x689383, {usPtpID, ulCapability});
  }
  return PM_LibIfPtpExist(usPtpID) != 0 ? 0x6908AD : CAP_LibGetCapability(3, usPtpID, ulCapability);
}

u32 Model::PM_LibGetPtpAttributeCluster(u16 usPtpID, u32 ulPtpAttributeValue, u16 usLen,
                                        void *pBuf) {
  if (ulPtpAttributeValue == 0xFFFFFFFF || usLen == 0 || pBuf == nullptr) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibGetPtpAttributeCluster fail, input pointer is null, usPtpID = %u, "
                    "ulPtpAttributeValue = %u",
                    usPtpID, ulPtpAttributeValue);
    return core_record(0x689383, {usPtpID, ulPtpAttributeValue});
  }
  return PM_LibIfPtpExist(usPtpID) != 0
             ? 0x6908AD
             : ATTR_LibGetAttribute(3, usPtpID, ulPtpAttributeValue, pBuf, usLen);
}

u32 Model::PM_LibGetPtpCapType(u32 ulValue, u16 usPtpID, u16 *pusCapType) {
  if (pusCapType == nullptr) {
    return 0x689383;
  }
  auto type = static_cast<u16>(ulValue);
  if (ulValue > PM_LibGetPtpMaxTypeValue()) {
    const u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
    if (ret != 0) {
      return core_record(ret, {ret});
    }
  }
  u16 suffix = 0;
  const u32 ret = PM_LibGetLogicPtpType(type, &suffix);
  if (ret != 0) {
    return core_record(ret, {ret});
  }
  *pusCapType = board().types[suffix].usCapType;
  return 0;
}

u32 Model::PM_AttrDbFunc() {
  return 0;
}

u32 Model::PM_LibGetPtpTypeForAttm(u32 ulValue, u16 usPtpID, u16 *pusPtpType) {
  if (pusPtpType == nullptr) {
    return 0x689383;
  }
  if (ulValue <= PM_LibGetPtpMaxTypeValue()) {
    *pusPtpType = static_cast<u16>(ulValue);
    return 0;
  }
  u16 type = 0;
  const u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != 0) {
    return core_record(ret, {usPtpID});
  }
  *pusPtpType = type;
  return 0;
}

}  // namespace soak
