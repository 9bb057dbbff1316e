// Bookings, and the delivery of primitives to them: from service code, from the host's messages,
// from changed records.
#include "diag.hpp"
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
constexpr u16 ptp = 17, absent = 18, ptp_type = 7, any_type = PM_PTP_TYPE_ALL;
constexpr u32 absent_code = PM_ERR_PTP_NOT_EXIST, range = PM_ERR_PRIMTYPE_RANGE;
constexpr auto book = PM_LibRegPrimaryWordCallback, unbook = PM_LibUnRegPrimaryWordCallback;
constexpr auto deliver = PM_LibBookCallBookedFuncs;
const std::set<u16> check_types = {0, 2, 8, 9, 11, 12}, stop_types = {0, 2, 3, 8, 9, 11, 12};

// "A(17, 13, 5)": booked function A was called with the PTP, the primitive type and the two bytes
// of the parameter as a number.
test::Lines calls;
std::string names;
std::map<char, std::function<u32(void *para)>> behaviour;

template <char name>
u32 booked(u16 ptp_id, u16 prim_type, void *para) {
  names += name;
  calls.push_back(name + ("(" + std::to_string(ptp_id)) + ", " + std::to_string(prim_type));
  calls.back() += para == nullptr ? ")" : ", " + std::to_string(pm::load<u16>(para)) + ")";
  return behaviour.count(name) == 0 ? PM_OK : behaviour[name](para);
}
constexpr PmBookFunc a = booked<'A'>, b = booked<'B'>, c = booked<'C'>;

std::string called() {
  calls.clear();
  return std::exchange(names, "");
}

// How "0x%p" shows a function.
std::string shown(PmBookFunc function) {
  return "0x" + testing::PrintToString(pm::address(function));
}

struct Events : test::LivePm {
  void SetUp() override {
    up();
    put(ptp, test::port_record(0, 1, ptp_type));
  }
  PmGlobalData &data() { return *static_cast<PmGlobalData *>(instance->record.pLocalData); }
  void book_each(u16 prim_type, u16 type, const std::vector<PmBookFunc> &functions) {
    for (const PmBookFunc function : functions) {
      EXPECT_EQ(book(prim_type, type, function), PM_OK);
    }
    settle();
  }
  // One letter per use of the host: takes or frees memory (M), feeds the watchdog (C), reads the
  // ticks (G), records (I), prints (P), traces (n), reports a slow call (L).
  template <typename Call>
  std::string order_of(Call call) {
    std::string order;
    for (const std::string &text :
         host_calls({Fn::ZEL_MemAlloc_F, Fn::ZEL_MemFree, Fn::ZEL_ClearWatchDog, Fn::ZEL_GetTick,
                     Fn::ERR_InnerRecErr, Fn::KVT_Printf, Fn::xPrintf,
                     Fn::DEV_LibRecLongTimeCostPrimaryWordLog},
                    call)) {
      order += text[4];
    }
    settle();
    return order;
  }
};

TEST_F(Events, BookingsStandInTheirOrderAndAnyOneCanBeTakenBack) {
  const struct {
    decltype(book) call;
    u16 type;
    PmBookFunc function;
    const char *order, *delivered;
  } steps[] = {{book, 7, a, "M", "A"},           {book, 7, b, "MC", "AB"},
               {book, 8, a, "MCC", "AB"},        {book, any_type, a, "MCCC", "ABA"},
               {unbook, 7, b, "CCM", "AA"},      {book, 7, c, "MCCC", "AAC"},
               {unbook, 7, a, "CM", "AC"},       {book, 8, a, "MCIIIPM", "AC"},
               {unbook, 7, c, "CCCM", "A"},      {book, 7, c, "MCC", "AC"},
               {unbook, 8, c, "CCCIII", "AC"},   {unbook, 8, a, "CM", "AC"},
               {unbook, any_type, a, "CM", "C"}, {unbook, 7, c, "CM", ""}};
  for (const auto &[call, type, function, order, delivered] : steps) {
    EXPECT_EQ(order_of([&] { return call(14, type, function); }), order);
    EXPECT_EQ(deliver(14, ptp, nullptr), PM_OK);
    EXPECT_EQ(called(), delivered);
  }
  EXPECT_EQ(node.memory.use(host::partition_dynamic).blocks, 0U);
}

TEST_F(Events, BookingTracesAndRecords) {
  trace(PM_SWITCH_FUNCTION);
  const std::string add = "PM_LibBookAddBookFunc fail, ", del = "PM_LibBookDelBookFunc fail, ";
  const std::string null = "input null pointer. usPrimType = 15";
  const std::string type = "usPrimType = 14, Type = 7, ", enter = "Enter PM_LibBookAddBookFunc, ";
  const std::string enter_reg = "Enter PM_LibRegPrimaryWordCallback, " + type + "Func = ";
  node.memory.fail_nth(host::partition_dynamic, 1);
  expect(
      {unbook(14, 7, b), book(14, 7, a), book(14, 7, a), book(14, 7, a), unbook(14, 7, b)},
      {PM_ERR_PARA, PM_ERR_MALLOC, PM_OK, PM_ERR_BOOK_EXIST, PM_ERR_DATA_INVALID},
      {PM_ERR_PARA, PM_ERR_MALLOC, 14, 7, pm::word(a), 14, 7, pm::word(b)},
      {del + "PrimeWord is null, usPrimType = 14", enter_reg + shown(a), enter + "usPrimType = 14",
       add + "malloc mem fail. usPrimType = 14", enter_reg + shown(a), enter + "usPrimType = 14",
       enter_reg + shown(a), enter + "usPrimType = 14", add + type + "BookFunc = " + shown(a),
       del + "Unregister primeword fail, usPrimType=14, usType=7, pPrimaryWordFunc=" +
           std::to_string(pm::word(b))});
  const PmBookRecord record = {7, a};
  expect({PM_LibBookAddBookFunc(15, nullptr), PM_LibBookAddBookFunc(15, &record),
          PM_LibBookDelBookFunc(15, nullptr), PM_LibBookDelBookFunc(15, &record)},
         {PM_ERR_PARA, range, PM_ERR_PARA, range}, {PM_ERR_PARA, range, PM_ERR_PARA, range},
         {enter + "usPrimType = 15", add + null, enter + "usPrimType = 15", add + "usPrimType = 15",
          del + null, del + "usPrimType exceed button, usPrimType = 15"});
  for (const auto call : {book, unbook}) {
    EXPECT_EQ(order_of([&] { return call(15, 7, nullptr); }), call == book ? "nII" : "IIn");
    expect(call(15, 7, nullptr), PM_ERR_PARA, {15, 7},
           {"PM_LibRegPrimaryWordCallback fail, " + null + ", usPtpType = 7, pFunc = 0"});
  }
}

TEST_F(Events, WithoutATableNothingIsBookedOrDelivered) {
  book_each(14, 7, {a});
  node.memory.fail_nth(host::partition_static, 1);
  expect({PM_LibMallocBookInit(), book(14, 7, a), PM_LibMallocBookInit(), unbook(14, 7, a)},
         {PM_ERR_MALLOC, PM_ERR_BOOK_EXIST, PM_OK, PM_ERR_PARA},
         {PM_ERR_MALLOC, 14, 7, pm::word(a), PM_ERR_PARA},
         {"\r\n PM_LibMallocBookInit malloc memory fail.",
          "PM_LibBookAddBookFunc fail, usPrimType = 14, Type = 7, BookFunc = " + shown(a)});
  data().pstBookTable = nullptr;
  expect({deliver(15, absent, nullptr), book(14, 7, a), unbook(14, 7, a)},
         {1, PM_ERR_PARA, PM_ERR_PARA}, {15, PM_ERR_PARA, PM_ERR_PARA});
  scope.emplace(node);
  expect({book(15, 7, a), unbook(15, 7, a)}, {range, range}, {range, range});
  expect({book(14, 7, a), unbook(14, 7, a), PM_LibMallocBookInit(), deliver(15, ptp, nullptr)},
         Values(4, PM_ERR_PARA), {PM_ERR_PARA, PM_ERR_PARA, PM_ERR_PARA, ptp});
}

TEST_F(Events, MatchingFunctionsAreCalledAndAFailureEndsTheDeliveryOfSomeTypes) {
  u16 para = 0x1234;
  void *given = nullptr;
  behaviour['A'] = [](void *) { return PM_RET_NOT_CONCERNED; };
  behaviour['B'] = [&](void *at) { return given = at, PM_ERR_MEM_OPER; };
  const PmBookRecord without_function = {ptp_type, nullptr};
  for (u16 type = 0; type < 40; ++type) {
    const bool stops = stop_types.count(type) != 0;
    EXPECT_EQ(PM_LibIsPrimaryNeedReturn(type), stops ? PM_OK : PM_ERR_DATA_INVALID);
    EXPECT_EQ(PM_LibIsCheckPrimaryWord(type), check_types.count(type));
    if (type < PM_PRIM_NUM) {
      EXPECT_EQ(PM_LibBookAddBookFunc(type, &without_function), PM_OK);
      book_each(type, any_type, {a});
      book_each(type, ptp_type + 1, {c});
      book_each(type, ptp_type, {b, c});
      expect({deliver(type, ptp, &para), deliver(type, PM_PTP_ID_NONE, nullptr)},
             {stops ? PM_ERR_MEM_OPER : PM_OK, PM_OK}, {type, ptp, PM_ERR_MEM_OPER});
      EXPECT_EQ(calls.back(), "A(65535, " + std::to_string(type) + ")");
      EXPECT_EQ(called(), stops ? "ABA" : "ABCA");
      EXPECT_EQ(given, &para);
    }
  }
}

TEST_F(Events, ADeliveryTracesItsCallsAndReportsTheSlowOnes) {
  trace(PM_SWITCH_FUNCTION);
  const std::string enter = "Enter PM_LibBookCallBookedFuncs, usPrimType = ",
                    para = ", Para = 0x(nil)";
  const std::string enter_6 = enter + "6, PtpID= 17" + para;
  const auto traced = "PM_LibBookCallBookedFuncs trace: pPrimProc=" + shown(a) +
                      ", usPrimType=6, usPtpID=17, usPtpType=7, ulRet=0x";
  u32 ticks = 99, ret = PM_OK;
  behaviour['A'] = [&](void *) { return node.clock.advance(ticks), ret; };
  node.journal.name(a, "A");
  node.clock.set(0xFFFFFFF0);
  book_each(6, ptp_type, {a});
  expect(PM_LibEventPtpLinkUp(ptp), PM_OK, {}, {enter_6, traced + "0, used Ticks=99"});
  EXPECT_TRUE(node.debug.long_calls().empty());
  ticks = 100;
  expect(PM_LibEventPtpLinkUp(ptp), PM_OK, {100, 6, pm::word(a)},
         {enter_6, traced + "0, used Ticks=100"});
  const host::LongCall slow = node.debug.long_calls().at(0);
  EXPECT_EQ(std::tie(slow.file, slow.ticks, slow.prim_type, slow.function),
            std::tuple("frame/lib/emp/src/pm/pm_lib_core_adapt", 100U, 6U, "A"));
  ret = 5;
  EXPECT_EQ(order_of([] { return PM_LibEventPtpLinkUp(ptp); }), "nCGGIIILnnIII");
  ticks = 0;
  expect(
      {PM_LibEventPtpLinkUp(ptp), deliver(15, absent, nullptr), deliver(15, ptp, nullptr)},
      {PM_OK, absent_code, range}, {6, ptp, 5, absent_code, absent, 15},
      {enter_6, traced + "5, used Ticks=0",
       "pPrimaryWordFunc fail, Ret = 0x5,Func = " + shown(a) + ", PtpID=17, usPrimType = 6" + para,
       enter + "15, PtpID= 18" + para, "PM_LibGetTypeFromPTP fail, Ret = 0x6908ad, PtpID = 18",
       enter + "15, PtpID= 17" + para, "PM_LibBookAddBookFunc fail, usPrimType = 15"});
}

TEST_F(Events, TheWatchdogIsFedBeforeACallWhenAMultipleOfEightNodesHasPassed) {
  for (u16 i = 0; i < 9; ++i) {
    book_each(6, i % 4 == 0 ? ptp_type : static_cast<u16>(100 + i), {i < 4 ? a : i < 8 ? b : c});
  }
  book_each(6, any_type, {a});
  EXPECT_EQ(order_of([] { return PM_LibEventPtpLinkUp(ptp); }), "CGGGGCGGGG");
}

TEST_F(Events, ADeliverySurvivesChangesOfItsListByTheFunctionsItCalls) {
  const auto off = [](PmBookFunc function) { return unbook(6, ptp_type, function); };
  const auto on = [](PmBookFunc function) { return book(6, ptp_type, function); };
  const std::tuple<char, std::function<u32()>, const char *> changes[] = {{'A', [&] { return off(a); }, "ABC"},
                                                                          {'A', [&] { return off(b); }, "AC"},
                                                                          {'A', [&] { return off(a), off(b); }, "A"},
                                                                          {'A', [&] { return off(a), on(a); }, "ABCA"},
                                                                          {'A', [&] { return off(b), on(b); }, "ACB"},
                                                                          {'C', [&] { return book(6, any_type, a); }, "ABCA"}};
  for (const auto &[who, change, expected] : changes) {
    data().pstBookTable->apstHead[6] = nullptr;
    book_each(6, ptp_type, {a, b, c});
    bool done = false;
    behaviour = {{who, [&](void *) { return std::exchange(done, true) ? PM_OK : change(); }}};
    EXPECT_EQ(PM_LibEventPtpLinkUp(ptp), PM_OK);
    EXPECT_EQ(called(), expected);
  }
}

TEST_F(Events, AMessageIsDeliveredByItsType) {
  trace(PM_SWITCH_ERROR);
  behaviour['A'] = [](void *para) { return para != nullptr ? pm::store(para, u16{9}), 0 : 0; };
  for (u16 type = 0; type <= PM_PRIM_NUM; ++type) {
    (void)book(type, any_type, a);
    settle();
    PmDevDdmTlv wrapped = {{}, 28, {}, {0xFFFF, type, ptp, {0x34, 0x12}, {}}};
    const u32 code = PM_LibPrimNotifyRtRestore(&wrapped);
    const std::string number = std::to_string(type);
    if (check_types.count(type) != 0) {
      expect(code, PM_ERR_PRIM_CHECK_TYPE, {type});
    } else if (type < 3 || type > 7) {
      expect(
          code, PM_OK, {type},
          {"PM_PrimMsgProc exception, input usPrimaryWord is invalid, usPrimaryWord  = " + number});
    } else {
      EXPECT_EQ(calls, Lines{"A(17, " + number + (type == 5 ? ", 4660)" : ")")});
      EXPECT_EQ(wrapped.stValue.aucPara[0], 0x34);
      wrapped.stValue.usPtpID = absent;
      expect({code, PM_PrimMsgProc(&wrapped.stValue)}, {PM_OK, absent_code},
             {absent_code, absent, absent_code});
    }
    calls.clear();
  }
  const PmDevDdmTlv shorter = {{}, 27, {}, {}}, longer = {{}, 29, {}, {}};
  const std::string tlv = "PM_LibPrimNotifyRtRestore-> pstDevDdmTlv->ulLength=";
  expect({PM_LibPrimNotifyRtRestore(&shorter), PM_LibPrimNotifyRtRestore(&longer)}, {1, 1},
         {27, 29}, {tlv + "27 error !", tlv + "29 error !"});
  EXPECT_EQ(node.debug.lines().back().selector, 0x80000000U);
  expect({PM_PrimMsgProc(nullptr), PM_LibPrimNotifyRtRestore(nullptr)}, Values(2, PM_ERR_PARA),
         Values(2, PM_ERR_PARA));
  EXPECT_EQ(PM_LibEventPtpLinkUp(ptp) | PM_LibEventPtpLinkUp(absent), PM_OK);
  EXPECT_EQ(PM_LibEventPtpLinkDown(ptp) | PM_LibEventPtpLinkDown(absent), PM_OK);
  EXPECT_EQ(calls, (Lines{"A(17, 6)", "A(17, 7)"}));
}

// What the library does about a PTP's next record: calls of booked functions, additions and
// deletions of object configuration.
struct Notifications : Events {
  void SetUp() override {
    Events::SetUp();
    for (u16 type = 3; type < PM_PRIM_NUM; ++type) {
      book_each(type, any_type, {a});
    }
    node.journal.keep_only({Fn::PUB_LibAddObjAllCfg, Fn::PUB_LibDelObjAllCfg});
    node.journal.set_observer([](const host::JournalEntry &entry) {
      calls.push_back(host::name_of(entry.fn) + ("(" + entry.arguments) + ")");
      calls.back().erase(0, sizeof "PUB_Lib" - 1);
    });
    node.journal.start();
  }
  void put_mask(u32 vs_mask, const Lines &expected, u32 flag = 1, u8 exists = 1) {
    PtpDynPubData record = test::port_record(0, 1, ptp_type, vs_mask);
    record.ucExist = exists;
    calls.clear();
    settle();
    EXPECT_EQ(put(ptp, record), PM_OK);
    EXPECT_EQ(calls, expected);
    if (!expected.empty()) {
      EXPECT_EQ(node.objects.log().back().flags, (std::array<u32, 2>{flag, 0}));
    }
  }
  static std::string add(u32 vs) { return "AddObjAllCfg(" + std::to_string(vs) + ", 2, 17)"; }
  static std::string del(u32 vs) { return "DelObjAllCfg(" + std::to_string(vs) + ", 2, 17)"; }
};

TEST_F(Notifications, AChangeOfVirtualSystemsIsAnnouncedAndConfigured) {
  put_mask(0x6, {add(1), "A(17, 13, 1)", add(2), "A(17, 13, 2)"}, 2);
  put_mask(0xA, {"A(17, 14, 2)", del(2), add(3), "A(17, 13, 3)"}, 2);
  put_mask(0x20B, {});
  put_mask(0x102, {"A(17, 14, 3)", del(3), add(8), "A(17, 13, 8)"}, 2);
  put_mask(0x2, {"A(17, 14, 8)", del(8)}, 2);
  put_mask(0x0, {"A(17, 14, 1)", del(1)});
  node.faults.fail_always(Fn::ROOT_LibIsPidDepend, 2);
  put_mask(0x2, {});
  put_mask(0x4, {});
}

TEST_F(Notifications, FailuresAreRecordedAndAFailedConfigurationIsUndone) {
  behaviour['A'] = [](void *) { return 5U; };
  put_mask(0x2, {add(1), "A(17, 13, 1)"});
  expect(0, 0, {13, ptp, 5});
  put_mask(0x8, {"A(17, 14, 1)", del(1), add(3), "A(17, 13, 3)"});
  node.faults.fail_nth(Fn::PUB_LibAddObjAllCfg, 2, 9);
  put_mask(0x3A, {add(1), "A(17, 13, 1)", add(4), del(4)}, 2);
  expect(0, 0, {13, ptp, 5, 4, 2, ptp}, {"\r\n PUB_LibAddObjCfg fail, ulRet=9, usVsID=4"});
  const host::Line &line = node.debug.lines().back();
  EXPECT_EQ(line.selector, 0x7CU);
  EXPECT_EQ(line.file, "frame/lib/emp/src/pm/pm_lib_init");
  // Of a PTP that is gone the configuration changes all the same, and nothing can be delivered.
  put_mask(0x3A, {}, 0, 0);
  put_mask(0x38, {del(1)}, 1, 0);
  expect(0, 0, {absent_code, ptp, absent_code, ptp, absent_code, absent_code, ptp});
}

TEST_F(Notifications, ExistenceIsRaisedByTheStateOfTheBatch) {
  PtpDynPubData old = test::port_record(0, 1, ptp_type);
  for (u32 i = 0; i < 8; ++i) {
    const u8 finished = (i & 4) != 0, existed = (i & 2) != 0, exists = (i & 1) != 0;
    const bool gone = finished && existed && !exists;
    EXPECT_EQ(PM_LibSetDynPubDataAttr(ptp, PM_DYN_ATTR_EXIST, &exists), PM_OK);
    old.ucExist = existed;
    node.ddm.forced_batch_state = finished != 0 ? u8{2} : u8{0};
    PM_LibEventPrimNotify(ptp, &old);
    expect(0, 0, gone ? Values{absent_code, ptp, absent_code} : Values{});
    EXPECT_EQ(called(), exists && !(finished && existed) ? "A" : "");
    PM_LibPrimaryNotifyAfter(ptp, &old);
    EXPECT_EQ(calls, exists && !finished ? Lines{"A(17, 3)"} : Lines{});
    (void)called();
  }
  const auto expect_nothing = [&](const PtpDynPubData *record, const Values &recorded) {
    PM_LibEventPrimNotify(ptp, record);
    PM_LibPrimaryNotifyBefore(ptp, record);
    PM_LibPrimaryNotifyAfter(ptp, record);
    expect(static_cast<u32>(calls.size()), 0, recorded);
  };
  expect_nothing(nullptr, {});
  // An answer that leaves the state alone counts as a running batch.
  node.faults.fail_always(Fn::DDM_LibScribeIsClassBtFinished, 0);
  PM_LibEventPrimNotify(ptp, nullptr);
  EXPECT_EQ(called(), "A");
  node.faults.fail_always(Fn::DDM_LibScribeIsClassBtFinished, 9);
  expect_nothing(&old, {9, 9});
  scope.emplace(*node.root.add(0x77));  // an instance that is not constructed
  expect_nothing(&old, {});
  scope.emplace(node);
  expect_nothing(&old, {});
}
}  // namespace
