// The published services, and the requests to the owner of the PTP database.
#include "live_pm.hpp"

namespace {

// "PM_SapiDelVirtualPtp 0(1100)": the service, then the kind of each parameter with its bytes, with
// their number if the answer fills them.
std::string text_of(const host::SentCall &call) {
  std::string text = call.service;
  for (const host::SentParameter &parameter : call.parameters) {
    text += " " + std::to_string(parameter.kind) + "(";
    char byte[4];
    for (const u8 value : parameter.bytes) {
      (void)std::snprintf(byte, sizeof byte, "%02x", value);
      text += byte;
    }
    text += parameter.kind == RPC_KIND_OUTPUT ? std::to_string(parameter.length) + ")" : ")";
  }
  return text;
}

PmFspOntid key = {0x0102, 3, 4, 0x05060708};
PmVirtualPtpDesc desc = {1, 0xEE, 0x1112, 0x1314, 40};
u16 new_ptp_id = 0;
char text[] = "ab";
// Completion functions travel as a machine word.
const std::string completion = sizeof(PmWord) == 4 ? "44332211" : "4433221100000000";

struct Request {
  std::string sent;
  u32 (*call)();
  bool answers;                            // the owner's answer comes back
  bool records;                            // and is recorded
  u32 unreached = host::code_unreachable;  // what is answered when the owner was not reached
};

const Request requests[] = {
    {"PM_SapiLinkEventNotify 0(1234) 0(56)", [] { return PM_LibLinkEventNotify(0x3412, 0x56); },
     false, false},
    {"PM_SapiAddVirtualPtp 1(01ee121114132800) 2(2)",
     [] { return PM_LibAddVirtualPtp(&desc, &new_ptp_id); }, true, true},
    {"PM_SapiDelVirtualPtp 0(1234)", [] { return PM_LibDelVirtualPtp(0x3412); }, true, true},
    {"PM_SapiSetDescFromPTP 0(1234) 1(616200)",
     [] { return PM_LibSetDescFromPTP(0x3412, reinterpret_cast<u8 *>(text), 3); }, true, true},
    {"PM_SapiIsObjSupportSrvCfg 1(0201030408070605)", [] { return PM_LibIsObjSupportSrvCfg(&key); },
     true, true, PM_OK},
    {"PM_SapiOperCheckCanDelPTP 0(1234)", [] { return PM_LibOperCheckCanDelPTP(0x3412); }, true,
     false, 1},
    {"PM_SapiDelObjectCfg 1(0201030408070605) 1(6162) 0(36000000) 0(" + completion + ")",
     [] { return PM_LibDelObjectCfg(&key, text, 0x11223344); }, true, true},
};

class Sapi : public test::LivePm {
 protected:
  void SetUp() override {
    up();
    trace_all();
  }
  // An instance whose CID is not the component type.
  void enter_other() { scope.emplace(*node.root.construct(0x77)); }
};

TEST_F(Sapi, BothServicesArePublishedWhateverBecomesOfTheFirst) {
  enter_other();
  const std::string call = "ROOT_LibSrvmPubishSapi(\"PM_Sapi";
  EXPECT_EQ(host_calls({Fn::ROOT_LibSrvmPubishSapi}, PM_LibPrimarySapiPublish),
            (Lines{call + "BookCallBookedFuncs\", 119) = 0",
                   call + "NotifyDelObjectCfgResult\", 119) = 0"}));
  node.faults.fail_always(Fn::ROOT_LibSrvmPubishSapi, 9);
  expect(PM_LibPrimarySapiPublish, PM_OK, {9, 0x77, 9, 0x77});
}

TEST_F(Sapi, PublishedServiceHandsOnWhatItGets) {
  put(17, test::port_record(2, 5));
  PM_LibRegPrimaryWordCallback(8, 7, [](u16 ptp_id, u16 prim_type, void *para) {
    return 100U * ptp_id + 10U * prim_type + *static_cast<u8 *>(para);
  });
  EXPECT_EQ(node.root.call_service(cid, "PM_SapiBookCallBookedFuncs", u16{8}, u16{17},
                                   static_cast<void *>(text)),
            100U * 17 + 80 + 'a');
}

TEST_F(Sapi, RequestSendsItsParametersAndPassesTheAnswerOn) {
  PM_LibSetObjectNumInDelete(1);
  put(0, test::port_record(0, 0));
  for (const Request &request : requests) {
    SCOPED_TRACE(request.sent);
    u32 answer = 0;
    node.rpc.serve(request.sent.substr(0, request.sent.find(' ')),
                   [&](RpcPara &) { return answer; });
    expect(request.call, PM_OK, {});
    const host::SentCall sent = node.rpc.sent().back();
    EXPECT_EQ(text_of(sent), request.sent);
    EXPECT_EQ(std::tie(sent.destination, sent.synchronous), std::tuple(0U, request.answers));
    answer = 7;
    expect(request.call, request.answers ? 7 : PM_OK, request.records ? Values{7} : Values{});
    node.rpc.reachable = false;
    expect(request.call, request.unreached, {host::code_unreachable});
    EXPECT_EQ(node.errors.since().back().file, "frame/lib/emp/src/pm/pm_lib_sapi");
    node.rpc.reachable = true;
  }
}

TEST_F(Sapi, DeletionIsRequestedInTheNameOfTheCallerWithAtMost255Characters) {
  enter_other();
  expect(PM_LibDelObjectCfg(&key, nullptr, 0), PM_OK, {});
  const host::SentParameter sent = node.rpc.sent().back().parameters[1];
  EXPECT_EQ(std::tie(sent.null, sent.length), std::tuple(true, 0U));
  EXPECT_EQ(node.owner.deletions().back().cid, 0x77U);
  std::string longest(255, 'x');
  PmFspOntid other{};
  expect(PM_LibDelObjectCfg(&other, longest.data(), 0), PM_OK, {});
  EXPECT_EQ(node.owner.deletions().back().text, longest);
  longest += 'x';
  expect(PM_LibDelObjectCfg(&other, longest.data(), 0), PM_ERR_LEN_RANGE, {});
  EXPECT_EQ(node.rpc.sent().size(), 2U);
}

TEST_F(Sapi, NewVirtualPtpIsKnownAtOnceInFiveFields) {
  const PtpDynPubData before = {1, 2, 0, 0, 7, 1, 0x55, 0x66, 0x77};
  const PtpDynPubData after = {0x1112, 0x1314, 1, 1, 40, 1, 0x55, 0x66, 0x77};
  const PtpDynPubData all_but_the_first = {1, 0x1314, 1, 1, 40, 1, 0x55, 0x66, 0x77};
  // What is there when the instance is lost before the first, the second .. field.
  const PtpDynPubData so_far[] = {before,
                                  {0x1112, 2, 0, 0, 7, 1, 0x55, 0x66, 0x77},
                                  {0x1112, 0x1314, 0, 0, 7, 1, 0x55, 0x66, 0x77},
                                  {0x1112, 0x1314, 1, 0, 7, 1, 0x55, 0x66, 0x77},
                                  {0x1112, 0x1314, 1, 1, 7, 1, 0x55, 0x66, 0x77}};
  put(50, before);
  const auto expect_added = [&](u16 chosen, u32 answer, PmVirtualPtpDesc *given, u16 *id,
                                const Values &recorded, const PtpDynPubData &left) {
    node.rpc.serve("PM_SapiAddVirtualPtp", [=](RpcPara &para) {
      host::rpc_output(para, 1, host::view_of(chosen));
      return answer;
    });
    expect([&] { return PM_LibAddVirtualPtp(given, id); }, answer, recorded);
    node.faults.clear();
    PtpDynPubData record{};
    PM_LibGetAllDynDataFromPtpID(50, &record);
    EXPECT_TRUE(test::same(record, left));
  };
  expect_added(50, 7, &desc, &new_ptp_id, {7}, before);
  expect_added(50, 0, &desc, nullptr, {PM_ERR_PARA}, before);
  expect_added(50, 0, nullptr, &new_ptp_id, {PM_ERR_PARA}, before);
  expect_added(201, 0, &desc, &new_ptp_id, {201, 201, 201, 201, 201, PM_ERR_PTPID_RANGE}, before);
  node.faults.fail_nth(Fn::ROOT_LibGetCurrentThis, 1);
  expect_added(50, 0, &desc, &new_ptp_id, {50, PM_ERR_PARA}, all_but_the_first);
  expect_added(50, 0, &desc, &new_ptp_id, {}, after);
  for (u32 fields = 0; fields < 5; ++fields) {
    put(50, before);
    settle();
    node.faults.fail_nth(Fn::ROOT_LibGetCurrentThis, fields + 1, {}, 5);
    Values recorded(5 - fields, 50);
    recorded.push_back(PM_ERR_PARA);
    expect_added(50, 0, &desc, &new_ptp_id, recorded, so_far[fields]);
  }
}

// Without all of its parameters a request would do something else than it is asked for.
TEST_F(Sapi, ARequestWhoseParametersCannotBeSetIsNotSent) {
  PM_LibSetObjectNumInDelete(1);
  for (const Request &request : requests) {
    for (u32 failing = 0; failing < (request.sent.find(") ") == std::string::npos ? 2U : 3U);
         ++failing) {
      node.faults.fail_nth(failing == 0 ? Fn::RPC_LibParaInit : Fn::RPC_LibParaSet,
                           std::max(failing, 1U), 0x55);
      const u32 code = request.unreached == host::code_unreachable ? 0x55 : request.unreached;
      expect(request.call, code, {0x55});
    }
  }
  EXPECT_TRUE(node.rpc.sent().empty());
}

TEST_F(Sapi, WithoutDeletionsEveryObjectIsSupportedUnasked) {
  node.rpc.reachable = false;
  expect(PM_LibIsObjSupportSrvCfg(nullptr), PM_OK, {});
  expect(PM_LibSetObjectNumInDelete(0xFFFFFFFF), PM_OK, {});
  EXPECT_EQ(PM_LibGetObjectNumInDelete(), 0xFFFFFFFF);
  expect(PM_LibIsObjSupportSrvCfg(&key), PM_OK, {host::code_unreachable});
  scope.emplace(node);
  expect(PM_LibSetObjectNumInDelete(1), PM_OK, {});
  EXPECT_EQ(PM_LibGetObjectNumInDelete(), 0U);
  expect(PM_LibPrimarySapiPublish(), PM_ERR_PARA, {PM_ERR_PARA});
}

TEST_F(Sapi, DeletionIsCompletedThroughThePublishedService) {
  static u32 completed = 0;
  u32 (*const complete)(PmFspOntid *, u32) = [](PmFspOntid *object, u32 result) {
    completed += object->ulOntID + result;
    return result;
  };
  PM_LibDelObjectCfg(&key, nullptr, reinterpret_cast<PmWord>(complete));
  node.run();
  expect(PM_LibIsObjSupportSrvCfg(&key), host::code_in_deletion, {host::code_in_deletion});
  EXPECT_TRUE(node.owner.finish_deletion(9));
  const host::Line line = node.debug.lines().back();
  expect(PM_LibGetObjectNumInDelete(), 0, {9},
         {"\r\n PM_LibNotifyDelObjectCfgResult, f/s/p/ontid:258/3/4/84281096, ulResult:9"});
  EXPECT_EQ(std::tie(line.printer, line.selector, line.file),
            std::make_tuple(Fn::DBG_InnerPrintInfo, 54, "frame/lib/emp/src/pm/pm_lib_core_adapt"));
  expect(PM_SapiNotifyDelObjectCfgResult(nullptr, &key, 9), PM_OK, {1});
  expect(PM_SapiNotifyDelObjectCfgResult(complete, nullptr, 9), PM_OK, {0});
  EXPECT_EQ(PM_SapiNotifyDelObjectCfgResult(complete, &key, 9), PM_OK);
  EXPECT_EQ(completed, 2 * (key.ulOntID + 9));
}

}  // namespace
