// Commands that ask the owner of the PTP database for something, through the active instance.
#include "node/console.hpp"
#include "node/numerals.hpp"
#include "node/ptp_text.hpp"
#include "platform/dbg.h"

namespace node {
namespace {

// Component type under which the console prints, so that its lines count as events.
constexpr u32 kComponentType = 0x7FF;

Answer list_virtual(Node &node) {
  const host::Scope scope(*node.active().instance);
  Answer answer;
  Rows &rows =
      answer.rows("virtual_ptps", {"ptp", "class", "index1", "index2", "type_name", "exists"});
  for (const u16 ptp : node.owner().virtual_ptps()) {
    u8 ptp_class = 0;
    u16 index1 = 0;
    u16 index2 = 0;
    PM_LibGetPhyIndexFromPTPEx(ptp, &ptp_class, &index1, &index2);
    rows.add(ptp, ptp_class, index1, index2, type_name_of_ptp(node.chassis(), ptp),
             PM_LibIfPtpExist(ptp) == PM_OK);
  }
  return answer;
}

Answer add_virtual(Console &console, const Arguments &arguments) {
  PmVirtualPtpDesc wanted{};
  wanted.ucPtpClass = static_cast<u8>(number_argument(arguments[1], 0, 0xFF, "PTP class"));
  wanted.usIndex1 = static_cast<u16>(number_argument(arguments[2], 0, 0xFFFF, "index"));
  wanted.usIndex2 = static_cast<u16>(number_argument(arguments[3], 0, 0xFFFF, "index"));
  wanted.usPtpType = type_argument(console, arguments[4]);
  u16 ptp = 0;
  u32 code = PM_OK;
  {
    const host::Scope scope(*console.node().active().instance);
    code = PM_LibAddVirtualPtp(&wanted, &ptp);
  }
  console.node().settle();
  Answer answer;
  answer.field("result", result_text(code));
  if (code == PM_OK) {
    answer.field("ptp", ptp);
  }
  return answer;
}

Answer run_virtual(Console &console, const Arguments &arguments) {
  Node &node = console.node();
  if (arguments.empty()) {
    return list_virtual(node);
  }
  if (arguments[0] == "add" && arguments.size() == 5) {
    return add_virtual(console, arguments);
  }
  if (arguments[0] != "delete" || arguments.size() != 2) {
    throw CommandError(
        "that is nothing to do with virtual PTPs; expected what 'help virtual'"
        " tells");
  }
  const u16 ptp = ptp_argument(console, arguments[1]);
  u32 code = PM_OK;
  {
    const host::Scope scope(*node.active().instance);
    code = PM_LibDelVirtualPtp(ptp);
  }
  node.settle();
  return Answer().field("ptp", ptp).field("result", result_text(code));
}

Answer run_describe(Console &console, const Arguments &arguments) {
  const u16 ptp = ptp_argument(console, arguments[0]);
  const std::string text = text_argument(arguments, 1);
  host::Bytes bytes(text.begin(), text.end());
  Node &node = console.node();
  u32 code = PM_OK;
  {
    const host::Scope scope(*node.active().instance);
    code = PM_LibSetDescFromPTP(ptp, bytes.data(), static_cast<u32>(bytes.size()));
  }
  node.settle();
  const host::Scope scope(*node.active().instance);
  return Answer()
      .field("ptp", ptp)
      .field("result", result_text(code))
      .field("description", description_of(ptp));
}

std::string text_of(const host::ObjectKey &key) {
  return std::to_string(key.frame) + "/" + std::to_string(key.slot) + "/" +
         std::to_string(key.port) + "/" + std::to_string(key.ont);
}

// Completion function of every deletion that the console requests.
u32 report_deletion(PmFspOntid *key, u32 result) {
  const PmFspOntid object = *key;
  xPrintf(kComponentType, "configuration of %u/%u/%u/%u: deletion answered %s",
          unsigned{object.usFrameID}, unsigned{object.ucSlotID}, unsigned{object.ucPortID},
          unsigned{object.ulOntID}, result_text(result).c_str());
  return PM_OK;
}

Answer list_deletions(Node &node) {
  const host::Scope scope(*node.active().instance);
  Answer answer;
  answer.field("in_deletion", PM_LibGetObjectNumInDelete())
      .field("finished_ever", node.owner().finished_deletions());
  Rows &rows = answer.rows("deletions", {"object", "text", "requester"});
  for (const host::Deletion &deletion : node.owner().deletions()) {
    rows.add(text_of(deletion.key), deletion.text, Hex{deletion.cid});
  }
  return answer;
}

Answer finish_deletion(Node &node, const Arguments &arguments) {
  const u32 result =
      arguments.size() > 1 ? number_argument(arguments[1], 0, 0xFFFFFFFF, "result") : 0;
  if (!node.owner().finish_deletion(result)) {
    throw CommandError("no deletion is under way; expected 'object delete' before");
  }
  node.settle();
  return list_deletions(node);
}

Answer object_request(Console &console, const Arguments &arguments) {
  Node &node = console.node();
  PmFspOntid object = object_argument(arguments[1]);
  std::string text = text_argument(arguments, 2);
  u32 code = PM_OK;
  {
    const host::Scope scope(*node.active().instance);
    code = arguments[0] == "ask" ? PM_LibIsObjSupportSrvCfg(&object)
                                 : PM_LibDelObjectCfg(&object, text.empty() ? nullptr : text.data(),
                                                      reinterpret_cast<PmWord>(&report_deletion));
  }
  node.settle();
  const host::Scope scope(*node.active().instance);
  return Answer()
      .field("object", arguments[1])
      .field("result", result_text(code))
      .field("in_deletion", PM_LibGetObjectNumInDelete());
}

Answer run_object(Console &console, const Arguments &arguments) {
  Node &node = console.node();
  if (arguments.empty()) {
    return list_deletions(node);
  }
  const std::string &what = arguments[0];
  if (what == "finish") {
    return finish_deletion(node, arguments);
  }
  if (arguments.size() < 2 || (what != "ask" && what != "delete" && what != "check")) {
    throw CommandError("that is nothing to do with objects; expected what 'help object' tells");
  }
  if (what != "check") {
    return object_request(console, arguments);
  }
  const u16 ptp = ptp_argument(console, arguments[1]);
  const host::Scope scope(*node.active().instance);
  return Answer().field("ptp", ptp).field("result", result_text(PM_LibOperCheckCanDelPTP(ptp)));
}

constexpr Command kCommands[] = {
    {"virtual", "[add CLASS INDEX1 INDEX2 TYPE | delete ID|FRAME/SLOT/PORT]",
     "list the virtual PTPs, or have the owner add or delete one",
     "  The owner chooses the lowest PTP ID that is free. CLASS is 0 for a port, 1 for a PTP "
     "behind\n  one; TYPE is a port type's value or name.",
     0, 5, run_virtual},
    {"describe", "ID|FRAME/SLOT/PORT TEXT", "have the owner set a PTP's description",
     "  'description' is what the active instance answers afterwards.", 2, kAnyNumber,
     run_describe},
    {"object", "[ask OBJECT | delete OBJECT [TEXT] | finish [RESULT] | check ID|FRAME/SLOT/PORT]",
     "the configuration of objects: ask, have it deleted, let a deletion end",
     "  OBJECT is FRAME/SLOT/PORT/ONT. Alone it lists the deletions under way. 'ask' tells "
     "whether\n"
     "  an object accepts service configuration, 'delete' requests the deletion and 'finish' lets\n"
     "  the owner end the oldest one: its result arrives as an event. 'check' asks whether a PTP\n"
     "  may be deleted.",
     0, kAnyNumber, run_object}};

}  // namespace

std::span<const Command> owner_commands() {
  return kCommands;
}

}  // namespace node
