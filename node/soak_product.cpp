// The product of a soak: every function says that it was called.
#include "node/soak_stage.hpp"

namespace soak {

namespace {

template <u32 number>
u32 booked(u16 ptp, u16 prim, void *para) {
  Stage &stage = *current_stage;
  const Product::Behaviour does = stage.product.booked[number - 1];
  stage.say("booked", {number, ptp, prim, static_cast<u32>(stage.node().objects.log().size())});
  if (para != nullptr) {
    stage.say_bytes("  parameter", para, 2);
  }
  stage.node().clock.advance(does.ticks);
  if (++stage.booked_depth == 1) {
    const PmBookFunc self = booked_function(number);
    const PmBookFunc next = booked_function(number % Product::kFunctions + 1);
    const u32 answer =
        does.deed == 1   ? stage.player.unbook(prim, does.type, self)
        : does.deed == 2 ? stage.player.unbook(prim, does.type, next)
        : does.deed == 3
            ? stage.player.book(static_cast<u16>((prim + 1) % PM_PRIM_NUM), does.type, next)
            : 0;
    stage.say("  deed", {does.deed, answer});
  }
  --stage.booked_depth;
  return does.answer;
}

// What a sub-line knows of a PTP: made up from its ID.
PmSubAttr attributes_of(u32 variant, u16 ptp) {
  PmSubAttr attr{};
  attr.ulMtu = 1'500U + ptp + variant;
  attr.ulReceiveSpeed = 100'000U * variant + ptp;
  attr.ulTransmitSpeed = 200'000U * variant + ptp;
  for (u32 i = 0; i < sizeof attr.aucPhyAddr; ++i) {
    attr.aucPhyAddr[i] = static_cast<u8>(ptp * 3U + i + variant);
  }
  attr.ucAdminStatus = static_cast<u8>(ptp % 3U + variant);
  attr.ucLinkState = static_cast<u8>(ptp % 3);
  attr.ulTxQLen = 64U + ptp % 7U;
  attr.aulSpecific[0] = 0x1000U + ptp;
  attr.aulSpecific[1] = 0x2000U + variant;
  for (u32 i = 0; i < 32U - ptp % 3U; ++i) {
    attr.szName[i] = static_cast<char>('A' + (ptp + i) % 26);
  }
  attr.ucReserved = 0xEE;
  attr.ucPromiscuousMode = static_cast<u8>(ptp % 2 + 1);
  attr.ulCounterDiscontinuityTime = 0xABC0000U + ptp;
  attr.ulReserved = 0xEEEEEEEE;
  return attr;
}

bool writes(const Product &product) {
  return product.callback_answer == 0 || product.writes_on_failure;
}

template <u32 variant>
u32 get_attr(u16 ptp, PmSubAttr *out) {
  Stage &stage = *current_stage;
  stage.say("attributes", {variant, ptp});
  if (writes(stage.product)) {
    *out = attributes_of(variant, ptp);
  }
  return stage.product.callback_answer;
}

template <u32 variant>
u32 get_attr_priv(u16 ptp, u32 selector, PmSubAttr *out) {
  Stage &stage = *current_stage;
  stage.say("one attribute", {variant, ptp, selector});
  if (writes(stage.product)) {
    *out = attributes_of(variant, ptp);
  }
  return stage.product.callback_answer;
}

template <u32 variant>
u32 get_stats(u16 ptp, PmSubStats *out) {
  Stage &stage = *current_stage;
  stage.say("statistics", {variant, ptp});
  for (u32 i = 0; writes(stage.product) && i < sizeof out->aucData; ++i) {
    out->aucData[i] = static_cast<u8>(ptp + i * variant);
  }
  return stage.product.callback_answer;
}

template <u32 variant>
u32 get_speed(u16 ptp, u32 *transmit, u32 *receive) {
  Stage &stage = *current_stage;
  stage.say("active speed", {variant, ptp});
  if (writes(stage.product)) {
    *transmit = 10'000U + ptp;
    *receive = 20'000U + ptp + variant;
  }
  return stage.product.callback_answer;
}

template <u32 number>
u32 uncalled() {
  current_stage->say("a function that is never called", {number});
  return number;
}

template <u32 variant>
PmSubCallBack callbacks() {
  return {uncalled<variant * 10 + 1>, uncalled<variant * 10 + 2>, get_stats<variant>,
          get_attr<variant>,          get_attr_priv<variant>,     uncalled<variant * 10 + 3>,
          uncalled<variant * 10 + 4>, get_speed<variant>,         uncalled<variant * 10 + 5>};
}

u32 sub_line_init(u32 phase) {
  current_stage->say("sub-line's start", {phase});
  return 0;
}

void sub_line_message(void * /*message*/) {
  current_stage->say("sub-line's message", {});
}

template <u32 variant>
u32 get_place(u16 ptp, u16 *board, u8 *port) {
  constexpr u16 boards[] = {0, 2, 33};
  Stage &stage = *current_stage;
  stage.say("place", {variant, ptp});
  *board = boards[(ptp + variant) % 3];
  *port = static_cast<u8>(ptp % 9);
  return stage.product.class_answer;
}

u32 phase_hook(u32 phase) {
  current_stage->say("phase hook", {phase});
  return current_stage->product.phase_answer;
}

u32 configuration_hook() {
  Stage &stage = *current_stage;
  stage.say("configuration hook", {});
  for (const PmSubLineInfo &info : stage.product.sub_lines) {
    stage.say("  sub-line", {stage.player.register_sub_line(&info)});
  }
  return stage.product.hook_answer;
}

u32 event_hook() {
  current_stage->say("event hook", {});
  return current_stage->product.hook_answer;
}

u32 low(PmWord value) {
  return static_cast<u32>(value);
}

u32 co_index_hook(PmWord a, PmWord b, PmWord c, PmWord d, PmWord e) {
  current_stage->say("co-index hook", {low(a), low(b), low(c), low(d), low(e)});
  return current_stage->product.hook_answer;
}

u32 ont_hook(PmWord a, PmWord b, PmWord c) {
  current_stage->say("ONT hook", {low(a), low(b), low(c)});
  return current_stage->product.hook_answer;
}

template <u32 slot>
u32 word_hook(PmWord a, PmWord b) {
  current_stage->say("hook", {slot, low(a), low(b)});
  return current_stage->product.hook_answer;
}

u32 completed(PmFspOntid *key, u32 result) {
  current_stage->say("completed", {result});
  current_stage->say_bytes("  key", key, sizeof *key);
  return current_stage->product.hook_answer;
}

}  // namespace

PmBookFunc booked_function(u32 number) {
  constexpr PmBookFunc all[] = {nullptr,   booked<1>, booked<2>, booked<3>,
                                booked<4>, booked<5>, booked<6>};
  return number < std::size(all) ? all[number] : nullptr;
}

PmSubCallBack callbacks_of(u32 variant, u32 present) {
  PmSubCallBack slots = variant % Product::kVariants == 0   ? callbacks<0>()
                        : variant % Product::kVariants == 1 ? callbacks<1>()
                                                            : callbacks<2>();
  slots.pfnGetStats = (present & 1) != 0 ? slots.pfnGetStats : nullptr;
  slots.pfnGetAttr = (present & 2) != 0 ? slots.pfnGetAttr : nullptr;
  slots.pfnGetAttrPriv = (present & 4) != 0 ? slots.pfnGetAttrPriv : nullptr;
  slots.pfnGetActiveSpeed = (present & 8) != 0 ? slots.pfnGetActiveSpeed : nullptr;
  return slots;
}

PmSubLineInfo sub_line_of(u16 type, u32 pid, u32 variant, u32 present) {
  PmSubLineInfo info{};
  info.usPtpType = type;
  info.ulPID = pid;
  info.pfnInitFunc = sub_line_init;
  info.pfnMainProc = sub_line_message;
  info.stCallBack = callbacks_of(variant, present);
  return info;
}

PmPtpClassFunc class_functions(u32 variant) {
  constexpr PmGetPhyIndexFunc places[] = {nullptr, get_place<1>, get_place<2>};
  return {uncalled<91>, uncalled<92>, places[variant % std::size(places)]};
}

PmProductMngt hooks_of(u32 present) {
  PmProductMngt hooks{};
  const auto has = [present](u32 slot) { return ((present >> slot) & 1) != 0; };
  hooks.pfnPhaseProc = has(0) ? phase_hook : nullptr;
  hooks.pfnReserved1 = uncalled<93>;
  hooks.pfnReserved2 = uncalled<94>;
  hooks.pfnGetCoIndexByFspOntid = has(3) ? co_index_hook : nullptr;
  hooks.pfnGetFspOntidByCoIndex = has(4) ? ont_hook : nullptr;
  hooks.pfnZelCfg = has(5) ? configuration_hook : nullptr;
  hooks.pfnEventRegister = has(6) ? event_hook : nullptr;
  hooks.pfnOperCheckRegister = has(7) ? word_hook<7> : nullptr;
  hooks.pfnRegisterPtpCapAttrInitFunc = has(8) ? word_hook<8> : nullptr;
  hooks.pfnSetInstanceDynAttributeDefaultValue = has(9) ? word_hook<9> : nullptr;
  hooks.pfnReserved10 = uncalled<95>;
  return hooks;
}

PmWord completion_function() {
  return reinterpret_cast<PmWord>(completed);
}

}  // namespace soak
