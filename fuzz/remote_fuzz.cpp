// Answers of the owner of the PTP database, failures of the transport, and calls of the published
// services with any arguments.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

// What the owner answers to the next call.
struct Answer {
  u32 transport;  // nonzero: the owner is not reached
  u32 result;
  u16 output;
};

constexpr const char *services[] = {"PM_SapiAddVirtualPtp",      "PM_SapiDelVirtualPtp",
                                    "PM_SapiSetDescFromPTP",     "PM_SapiIsObjSupportSrvCfg",
                                    "PM_SapiOperCheckCanDelPTP", "PM_SapiDelObjectCfg"};

u32 completed = 0;

u32 completion(PmFspOntid *, u32 result) {
  ++completed;
  return result;
}

struct Session {
  Rig rig;
  Answer answer{};

  Session() {
    completed = 0;
    for (const char *service : services) {
      rig.node.rpc.serve(service, [this](RpcPara &para) {
        host::rpc_output(para, 1, host::view_of(answer.output));
        return answer.result;
      });
    }
  }
  void prepare(Input &input) {
    answer = input.record<Answer>();
    rig.node.faults.clear();
    if (answer.transport != 0) {
      rig.node.faults.fail_nth(host::Fn::RPC_LibSyncCall, 1, answer.transport);
      rig.node.faults.fail_nth(host::Fn::RPC_LibAyncCall, 1, answer.transport);
    }
  }
  u32 outcome() const { return answer.transport != 0 ? answer.transport : answer.result; }
};

void add_virtual(Session &session, Input &input) {
  auto desc = input.record<PmVirtualPtpDesc>();
  u16 id = 0x1234;
  HOLDS(PM_LibAddVirtualPtp(&desc, &id) == session.outcome());
  if (session.outcome() != PM_OK) {
    return;
  }
  HOLDS(id == session.answer.output);
  PtpDynPubData record{};
  if (PM_LibGetAllDynDataFromPtpID(id, &record) == PM_OK) {
    HOLDS(record.usIndex1 == desc.usIndex1 && record.usIndex2 == desc.usIndex2 &&
          record.ucPtpClass == desc.ucPtpClass && record.usPtpType == desc.usPtpType &&
          record.ucExist == 1);
  } else {
    HOLDS(id > max_ptp || PM_LibIfPtpExist(0) == PM_ERR_PARA);
  }
}

void change_one(Session &session, Input &input) {
  const u16 id = input.number<u16>();
  HOLDS(PM_LibDelVirtualPtp(id) == session.outcome());
  session.prepare(input);
  HOLDS(PM_LibOperCheckCanDelPTP(id) ==
        (session.answer.transport != 0 ? 1 : session.answer.result));
  session.prepare(input);
  std::vector<u8> text = input.whole_block(input.number<u8>());
  HOLDS(PM_LibSetDescFromPTP(id, text.data(), static_cast<u32>(text.size())) == session.outcome());
}

void delete_object(Session &session, Input &input) {
  auto key = input.record<PmFspOntid>();
  std::vector<u8> text = input.whole_block(input.number<u16>() % 300);
  text.push_back(0);
  auto *characters = reinterpret_cast<char *>(text.data());
  const u32 code = PM_LibDelObjectCfg(&key, characters, input.number<u32>());
  HOLDS(code ==
        (std::strlen(characters) > PM_DEL_TEXT_LEN_MAX ? PM_ERR_LEN_RANGE : session.outcome()));
  PM_LibSetObjectNumInDelete(input.number<u8>() % 3);
  session.prepare(input);
  const u32 supported = PM_LibIsObjSupportSrvCfg(&key);
  const bool asked = PM_LibGetObjectNumInDelete() != 0 && session.answer.transport == 0;
  HOLDS(supported == (asked ? session.answer.result : PM_OK));
}

// The other direction: what the owner's process calls here.
void call_published(Session &session, Input &input) {
  const u16 type = input.number<u16>();
  const u16 id = input.number<u16>();
  u32 parameter = 0;
  const u32 code = session.rig.node.root.call_service(cid, "PM_SapiBookCallBookedFuncs", type, id,
                                                      static_cast<void *>(&parameter));
  HOLDS(is_known_code(code));
  HOLDS(type < PM_PRIM_NUM || code != PM_OK);
  auto key = input.record<PmFspOntid>();
  const u32 before = completed;
  const bool known = input.number<u8>() % 2 == 0;
  HOLDS(session.rig.node.root.call_service(
            cid, "PM_SapiNotifyDelObjectCfgResult",
            known ? static_cast<PmDelObjectCompletionFunc>(completion) : nullptr, &key,
            input.number<u32>()) == PM_OK);
  HOLDS(completed == before + (known ? 1 : 0));
  HOLDS(PM_LibLinkEventNotify(id, static_cast<u8>(type)) == session.answer.transport);
  session.rig.node.run();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  Input input(bytes, size);
  Session session;
  if (input.number<u8>() % 2 == 0) {
    session.rig.lay_tables();
  }
  constexpr void (*steps[])(Session &, Input &) = {add_virtual, change_one, delete_object,
                                                   call_published};
  const auto scope = host::enter(*session.rig.instance);
  while (!input.empty()) {
    const u8 step = input.number<u8>();
    session.prepare(input);
    steps[step % std::size(steps)](session, input);
    session.rig.node.faults.clear();
  }
  return 0;
}
