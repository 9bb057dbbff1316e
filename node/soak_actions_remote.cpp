// Steps that call the owner of the PTP database, and what the owner does.
#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

template <class P>
void add_virtual(Stage &stage, const u32 *a) {
  PmVirtualPtpDesc desc{static_cast<u8>(a[0]), static_cast<u8>(a[1]), static_cast<u16>(a[1]),
                        static_cast<u16>(a[2]), static_cast<u16>(a[3])};
  Room &room = fresh_room(0);
  stage.say("answer",
            {P::PM_LibAddVirtualPtp(a[4] == 1 ? nullptr : &desc,
                                    a[5] == 1 ? nullptr : reinterpret_cast<u16 *>(room.bytes))});
  say_room(stage, room);
}

template <class P>
void delete_virtual(Stage &stage, const u32 *a) {
  stage.say("answer", {P::PM_LibDelVirtualPtp(static_cast<u16>(a[0] == 0 ? a[1] : 40 + a[0]))});
}

template <class P>
void set_text(Stage &stage, const u32 *a) {
  std::string text = text_of(a[1]);
  stage.say("answer",
            {P::PM_LibSetDescFromPTP(static_cast<u16>(a[0]),
                                     a[2] == 1 ? nullptr : reinterpret_cast<u8 *>(text.data()),
                                     static_cast<u32>(text.size()))});
}

PmFspOntid key_of(u32 number) {
  return {static_cast<u16>(number & 1), static_cast<u8>(number >> 1 & 1),
          static_cast<u8>(number & 7), number * 70'001};
}

template <class P>
void delete_object(Stage &stage, const u32 *a) {
  PmFspOntid key = key_of(a[0]);
  constexpr std::size_t lengths[] = {0, 10, 255, 256};
  std::string text(lengths[a[1] % std::size(lengths)], 't');
  stage.say("answer", {P::PM_LibDelObjectCfg(&key, a[2] == 1 ? nullptr : text.data(),
                                             completion_function())});
}

template <class P>
void object_questions(Stage &stage, const u32 *a) {
  PmFspOntid key = key_of(a[0]);
  stage.say("answer", {P::PM_LibIsObjSupportSrvCfg(&key)});
}

template <class P>
void deletion_result(Stage &stage, const u32 *a) {
  PmFspOntid key = key_of(a[0]);
  const auto function = reinterpret_cast<PmDelObjectCompletionFunc>(completion_function());
  stage.say("answer", {P::PM_SapiNotifyDelObjectCfgResult(a[1] == 1 ? nullptr : function,
                                                          a[2] == 1 ? nullptr : &key, a[0])});
}

void finish_deletion(Stage &stage, const u32 *a) {
  stage.say("finished", {stage.nodes[0].owner.finish_deletion(a[0]) ? 1U : 0U});
}

void owner_mood(Stage &stage, const u32 *a) {
  host::Owner &owner = stage.nodes[0].owner;
  owner.online = a[0] != 0;
  owner.undeletable.clear();
  owner.undeletable[static_cast<u16>(a[1])] = a[2];
}

}  // namespace

std::vector<Op> remote_actions() {
  return {
      SOAK_BOTH(5, "add-virtual", add_virtual, ptp_class, board, index2, type, null, null),
      SOAK_BOTH(4, "delete-virtual", delete_virtual, few, ptp),
      SOAK_BOTH(6, "set-text", set_text, ptp, desc, null),
      SOAK_BOTH(5, "delete-object", delete_object, few, few, null),
      SOAK_BOTH(5, "object-free", object_questions, few),
      SOAK_BOTH(3, "deletion-result", deletion_result, few, null, null),
      SOAK_SAME(4, "finish-deletion", finish_deletion, answer),
      SOAK_SAME(2, "owner", owner_mood, few, ptp, answer),
      SOAK_ASK(5, PM_LibOperCheckCanDelPTP, ptp),
      SOAK_ASK(5, PM_LibLinkEventNotify, ptp, yes),
      SOAK_ASK(1, PM_LibRegCapClassMngt),
      SOAK_ASK(1, PM_LibRegAttrClassMngt),
      SOAK_ASK(1, PM_LibSetObjectNumInDelete, few),
      SOAK_ASK(10, PM_LibDbgSwitchControl, there, few, few, yes),
      SOAK_ASK(1, PM_LibInitPMDbgSwitches),
  };
}

}  // namespace soak
