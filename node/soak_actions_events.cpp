// Steps that book, raise and register, and the product's moods.
#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

u16 half(u32 value) {
  return static_cast<u16>(value);
}

template <class P>
void book(Stage &stage, const u32 *a) {
  stage.say("answer",
            {P::PM_LibRegPrimaryWordCallback(half(a[0]), half(a[1]), booked_function(a[2]))});
}

template <class P>
void unbook(Stage &stage, const u32 *a) {
  stage.say("answer",
            {P::PM_LibUnRegPrimaryWordCallback(half(a[0]), half(a[1]), booked_function(a[2]))});
}

template <class P>
void book_record(Stage &stage, const u32 *a) {
  const PmBookRecord booking{half(a[1]), booked_function(a[2])};
  const PmBookRecord *record = a[3] == 1 ? nullptr : &booking;
  stage.say("answer", {a[4] == 0 ? P::PM_LibBookDelBookFunc(half(a[0]), record)
                                 : P::PM_LibBookAddBookFunc(half(a[0]), record)});
}

template <class P>
void primitive(Stage &stage, const u32 *a) {
  PmPrimMsg message{};
  message.usPrimaryWord = half(a[0]);
  message.usPtpID = half(a[1]);
  message.aucPara[0] = static_cast<u8>(a[2]);
  message.aucPara[1] = static_cast<u8>(a[2] * 3);
  stage.say("answer", {P::PM_PrimMsgProc(a[3] == 1 ? nullptr : &message)});
}

template <class P>
void wrapped_primitive(Stage &stage, const u32 *a) {
  constexpr u32 lengths[] = {28, 28, 27, 29};
  PmDevDdmTlv tlv{};
  tlv.ulLength = lengths[a[2] % std::size(lengths)];
  tlv.stValue.usPrimaryWord = half(a[0]);
  tlv.stValue.usPtpID = half(a[1]);
  stage.say("answer", {P::PM_LibPrimNotifyRtRestore(a[3] == 1 ? nullptr : &tlv)});
}

template <class P>
void call_booked(Stage &stage, const u32 *a) {
  u32 para = a[2];
  void *address = a[3] == 1 ? nullptr : &para;
  stage.say("answer", {a[4] == 0 ? P::PM_LibBookCallBookedFuncs(half(a[0]), half(a[1]), address)
                                 : P::PM_SapiBookCallBookedFuncs(half(a[0]), half(a[1]), address)});
}

// The notifications asked directly, with another record as the old or new one.
template <class P>
void notify(Stage & /*stage*/, const u32 *a) {
  const u16 ptp = half(a[1]);
  PtpDynPubData data{};
  data.ucExist = static_cast<u8>(a[2]);
  data.ulVsMask = a[3];
  switch (a[0]) {
    case 0:
      P::PM_LibEventPrimNotify(ptp, &data);
      break;
    case 1:
      P::PM_LibPrimaryNotifyBefore(ptp, &data);
      break;
    case 2:
      P::PM_LibPrimaryNotifyAfter(ptp, &data);
      break;
    default:
      P::PM_LibPtpVsPrimaryNotifyAfter(ptp, &data);
      P::PM_LibPtpVsPrimaryNotifyBefore(ptp, &data);
      break;
  }
}

void behave(Stage &stage, const u32 *a) {
  stage.product.booked[a[0] % Product::kFunctions] = {a[1], a[2], a[3], half(a[4])};
}

void mood(Stage &stage, const u32 *a) {
  stage.product.callback_answer = a[0];
  stage.product.writes_on_failure = a[1] != 0;
  stage.product.hook_answer = a[2];
  stage.product.class_answer = a[3];
  stage.product.phase_answer = a[4];
}

template <class P>
void register_hooks(Stage &stage, const u32 *a) {
  const PmProductMngt hooks = hooks_of(a[0]);
  const PmProductMngt *table = a[1] == 1 ? nullptr : &hooks;
  stage.say("answer", {a[2] == 0 ? P::PM_LibRegInstProductMngtFuncProc(table)
                                 : P::PM_LibRegProductMngtFuncProc(table)});
}

template <class P>
void register_class(Stage &stage, const u32 *a) {
  const PmPtpClassFunc functions = class_functions(a[1]);
  stage.say("answer",
            {P::PM_LibRegPtpClassFunc(static_cast<u8>(a[0]), a[2] == 1 ? nullptr : &functions)});
}

void plan_sub_lines(Stage &stage, const u32 *a) {
  constexpr u16 usual[] = {7, 9, 12, 40, 3, 0};
  stage.product.sub_lines.clear();
  for (u32 i = 0; i < 1 + a[0]; ++i) {
    stage.product.sub_lines.push_back(
        sub_line_of(usual[(a[1] + i) % std::size(usual)], i == 0 ? a[2] : 0xFFFFFFFF, i, a[3]));
  }
}

template <class P>
void register_sub_line(Stage &stage, const u32 *a) {
  const PmSubLineInfo info = sub_line_of(half(a[0]), a[1], a[2], a[3]);
  stage.say("answer", {a[5] == 0 ? P::PM_LibCfgAddSubInfoNode(&info)
                                 : P::PM_LibRegSubLineInfo(a[4] == 1 ? nullptr : &info)});
}

// Rows of the table of sub-lines, and the functions that fill and release it.
template <class P>
void rebuild_types(Stage &stage, const u32 *a) {
  switch (a[0]) {
    case 0:
      P::PM_LibCfgVarInit();
      break;
    case 1:
      stage.say("answer", {P::PM_LibCfgReleaseMem()});
      break;
    case 2:
      stage.say("answer", {P::PM_LibPtpTypeNumInit()});
      break;
    default:
      stage.say("answer", {P::PM_LibSubInnerSubInfoInit()});
      break;
  }
}

}  // namespace

std::vector<Op> event_actions() {
  return {
      SOAK_BOTH(40, "book", book, prim, type, function),
      SOAK_BOTH(12, "unbook", unbook, prim, type, function),
      SOAK_BOTH(6, "book-record", book_record, prim, type, function, null, few),
      SOAK_BOTH(30, "primitive", primitive, prim, ptp, byte, null),
      SOAK_BOTH(6, "wrapped-primitive", wrapped_primitive, prim, ptp, few, null),
      SOAK_BOTH(20, "call-booked", call_booked, prim, ptp, any, null, few),
      SOAK_ASK(8, PM_LibEventPtpLinkUp, ptp),
      SOAK_ASK(8, PM_LibEventPtpLinkDown, ptp),
      SOAK_BOTH(12, "notify", notify, few, ptp, exist, mask),
      SOAK_SAME(10, "behave", behave, function, answer, ticks, deed, type),
      SOAK_SAME(4, "mood", mood, answer, yes, answer, answer, there),
      SOAK_BOTH(2, "hooks", register_hooks, bits, null, few),
      SOAK_BOTH(2, "class-functions", register_class, ptp_class, few, null),
      SOAK_SAME(2, "plan-sub-lines", plan_sub_lines, few, few, pid, bits),
      SOAK_BOTH(4, "sub-line", register_sub_line, type, pid, few, bits, null, few),
      SOAK_BOTH(1, "rebuild-types", rebuild_types, few),
      SOAK_ASK(1, PM_LibMallocForSubAttrCB),
      SOAK_ASK(1, PM_LibMallocSubAttrGlobalVar),
      SOAK_ASK(1, PM_LibMallocSubCallBack),
      SOAK_ASK(1, PM_LibCfgRegSubLinePid),
      SOAK_ASK(1, PM_LibPltEventRegister),
      SOAK_ASK(1, PM_LibPltZelCfg),
  };
}

}  // namespace soak
