// Kinds of steps that only ask.
#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

template <class P>
void find_static(Stage &stage, const u32 *a) {
  const PmStaticDBNode *node = P::PM_LibFindStaticDBNode(static_cast<u16>(a[0]));
  stage.say("found", {node != nullptr ? 1U : 0U});
}

template <class P>
void from_desc(Stage &stage, const u32 *a) {
  const std::string text = text_of(a[0]);
  u16 ptp = 0x5A5A;
  const u32 ret =
      P::PM_LibGetPtpFromDesc(a[1] == 1 ? nullptr : text.c_str(), a[2] == 1 ? nullptr : &ptp);
  stage.say("answer", {ret, ptp});
}

void say_info(Stage &stage, const PmSubInnerSubInfo *info) {
  if (info != nullptr) {
    stage.say_bytes("  record", info, sizeof *info);
  }
}

void say_callbacks(Stage &stage, const PmSubCallBackEntry *entry) {
  stage.say("  callbacks", {entry != nullptr ? 1U : 0U});
  if (entry != nullptr) {
    stage.say("  type", {entry->usPtpType, entry->ulReserved});
    const PmSubCallBack slots = entry->stCallBack;  // which need not be aligned
    stage.say_slots(slots);
  }
}

template <class P>
void info_from_suffix(Stage &stage, const u32 *a) {
  PmSubInnerSubInfo *info = nullptr;
  stage.say("answer", {P::PM_LibGetSubInfoFromSuffix(static_cast<u16>(a[0]), &info)});
  say_info(stage, info);
}

template <class P>
void sub_info(Stage &stage, const u32 *a) {
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *entry = nullptr;
  stage.say("answer", {P::PM_LibGetSubInfo(static_cast<u16>(a[0]), &info, &entry)});
  say_info(stage, info);
  say_callbacks(stage, entry);
}

template <class P>
void sub_func(Stage &stage, const u32 *a) {
  PmSubCallBackEntry *entry = nullptr;
  stage.say("answer", {P::PM_LibGetSubFuncFromPtpType(static_cast<u16>(a[0]), &entry)});
  say_callbacks(stage, entry);
}

template <class P>
void slots_of(Stage &stage, const u32 *a) {
  PmSubCallBack slots{};
  const auto number = static_cast<u16>(a[1]);
  stage.say("answer", {a[0] == 0 ? P::PM_LibGetSubFunc(number, &slots)
                                 : P::PM_LibGetSubFuncFromPTP(number, &slots)});
  stage.say_slots(slots);
}

// The registered sub-lines, one after the other.
template <class P>
void sub_lines(Stage &stage, const u32 * /*a*/) {
  PmSubInfoNode *node = nullptr;
  for (u32 ret = 0, i = 0; ret == 0 && i < 50; ++i) {
    PmSubInfoNode *next = nullptr;
    ret = P::PM_LibLibCfgGetNextSubInfoNode(node, &next);
    stage.say("answer", {ret});
    if (next != nullptr) {
      stage.say("  sub-line", {next->stInfo.usPtpType, next->stInfo.ulPID});
      stage.say_slots(next->stInfo.stCallBack);
    }
    node = next;
  }
}

}  // namespace

std::vector<Op> store_questions() {
  return {
      SOAK_ASK(2, PM_GetPmSpec, spec_index),
      SOAK_ASK(1, PM_LibGetPmSpec, spec_index),
      SOAK_ASK(2, PM_LibGetPtpMaxNum),
      SOAK_ASK(2, PM_LibGetMaxPtpID),
      SOAK_ASK(6, PM_LibGetDynPubDataAttr, ptp, selector, null),
      SOAK_ASK(6, PM_LibGetAllDynDataFromPtpID, ptp, null),
      SOAK_ASK(2, PM_LibGetDynPrivMemRangeFromMemID, any),
      SOAK_ASK(1, PM_LibConverDbErrorCode, few),
      SOAK_ASK(1, PM_LibConverDbErrorCode, any),
      SOAK_ASK(6, PM_LibStaticDataGetDataFromPTP, ptp, null),
      SOAK_BOTH(2, "find-static", find_static, ptp),
      SOAK_ASK(6, PM_LibGetDescFromPTP, ptp, length, null),
      SOAK_BOTH(5, "ptp-from-text", from_desc, desc, null, null),
      SOAK_ASK(5, PM_LibGetPrivStaticDataFromPTP, ptp, length, null),
  };
}

std::vector<Op> identity_questions() {
  return {
      SOAK_ASK(6, PM_LibGetPhyIndexFromPTP, ptp, null, null),
      SOAK_ASK(2, PM_LibGetPhyIndexFromPTPEnc, ptp_class, ptp, null, null),
      SOAK_ASK(3, PM_LibGetPhyIndexFromPTPEx, ptp, null, null, null),
      SOAK_ASK(4, PM_LibGetFSPFromPtp, ptp, null, null, null),
      SOAK_ASK(4, PM_LibGetTypeFromPTP, ptp, null),
      SOAK_ASK(2, PM_LibIfPtpExist, ptp),
      SOAK_ASK(3, PM_LibIfPhyPtpExist, ptp),
      SOAK_ASK(3, PM_LibGetVsNumByVsMask, mask),
      SOAK_ASK(4, PM_LibGetVsMaskFromPtp, ptp, null),
      SOAK_ASK(4, PM_LibIfPtpInVs, ptp, vs),
      SOAK_ASK(4, PM_LibIfPtpOnlyInOneVs, ptp, vs),
      SOAK_ASK(3, PM_LibIfPortBelongMultiVs, ptp),
      SOAK_ASK(4, PM_LibGetPtpMngtVsID, ptp, null),
      SOAK_ASK(4, PM_LibIsPtpVisible, ptp),
      SOAK_ASK(4, PM_LibGetVisiblePtpFromFSP, frame, slot, port, null),
      SOAK_ASK(5, PM_LibGetPtpPhyStateFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetPtpFromPhyIndexOnSrv, ptp_class, board, index2, null),
      SOAK_ASK(3, PM_LibGetPtpFromPhyIndexOnSrvByEnum, ptp_class, board, index2, null),
      SOAK_ASK(6, PM_LibGetPtpFromPhyIndex, board, port, null),
      SOAK_ASK(4, PM_LibGetPtpFromPhyIndexEx, ptp_class, board, index2, null),
      SOAK_ASK(6, PM_LibGetPtpFromFSP, frame, slot, port, null),
  };
}

std::vector<Op> type_questions() {
  return {
      SOAK_ASK(1, PM_LibIsCheckPrimaryWord, prim),
      SOAK_ASK(1, PM_LibIsPrimaryNeedReturn, prim),
      SOAK_ASK(1, PM_LibCfgGetPtpTypeNum, there),
      SOAK_ASK(1, PM_LibGetPtpMaxTypeValue),
      SOAK_BOTH(3, "type-of-suffix", info_from_suffix, suffix),
      SOAK_ASK(3, PM_LibIsPtpTypeValid, type),
      SOAK_ASK(4, PM_LibGetLogicPtpType, type, null),
      SOAK_BOTH(3, "type-record", sub_info, type),
      SOAK_BOTH(3, "type-callbacks", sub_func, type),
      SOAK_BOTH(3, "slots-of-type", slots_of, there, type),
      SOAK_BOTH(3, "slots-of-ptp", slots_of, yes, ptp),
      SOAK_BOTH(1, "sub-lines", sub_lines),
      SOAK_ASK(3, PM_LibGetPtpCoClass, type, null),
      SOAK_ASK(4, PM_LibGetCoClassFromPtpID, ptp, null),
      SOAK_ASK(1, PM_LibGetCoIndexAndCotypeByFspOntid, word, word, word, word, word),
      SOAK_ASK(1, PM_LibGetFspOntidByCoIndexAndCotype, word, word, word),
      SOAK_ASK(1, PM_LibPltOperCheckRegister, word, word),
      SOAK_ASK(1, PM_LibPltRegisterPtpCapAttrInitFunc, word, word),
      SOAK_ASK(1, PM_LibPltSetInstanceDynAttributeDefaultValue, word, word),
  };
}

}  // namespace soak
