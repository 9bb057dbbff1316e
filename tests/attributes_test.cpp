// Attributes of a PTP: the family as a table, each member taken through every way it can go.
#include <numeric>

#include "live_pm.hpp"

namespace {

using test::Lines;
using test::Values;

constexpr u16 ptp = 17, served = 7, empty = 9, foreign = 30;
constexpr u32 none = PM_ERR_PTPTYPE_INVALID, gone = PM_ERR_PTP_NOT_EXIST;

std::array<u8, 105> pattern;
u32 answer;
Values asked;

// The sub-line's function of a slot. It writes the pattern, every byte a different one, into its
// outputs and keeps the numbers it was asked with; with the answer 1 it writes nothing.
template <u32 slot, typename... Arguments>
u32 reply(Arguments... arguments) {
  u32 from = 0;
  asked = {slot};
  const auto take = [&](auto argument) {
    if constexpr (std::is_pointer_v<decltype(argument)>) {
      std::memcpy(argument, &pattern[from], answer == 1 ? 0 : sizeof *argument);
      from += 4;
    } else {
      asked.push_back(argument);
    }
  };
  (take(arguments), ...);
  return answer;
}

// An output of any type, in bytes.
struct Out {
  u8 *at;
  template <typename Value>
  operator Value *() const {
    return reinterpret_cast<Value *>(at);
  }
};
using Call = u32 (*)(Out a, Out b);

struct Slot {
  u32 number;
  std::string caller;
  Call call;
  std::string function;
  Values lookup_recorded;  // when there is no sub-line
  u32 failed_code;         // when the function answers 0x77
};
struct Part {
  u32 start, size;  // bytes of the pattern
};
// Lines begin with the number of their switch.
const std::string id = ", usPtpID = 17", short_text = " fail" + id,
                  nulls = id + ", pulTrasmit = 0, pulReceive = 8",
                  in_null = " fail, input pointer is null", bb = " fail, ulRet = 0x6908bb",
                  c8 = " fail, ulRet = 0x6908c8" + id, ad = " fail, ulRet = 0x6908ad" + id;
struct Member {
  std::string name;
  Call call;
  const Slot *slot;  // null: the library answers itself
  u32 selector;
  std::vector<Part> parts;
  Lines failed = {};  // unless it is the slot's caller and the code
  std::string null_text = in_null + id;
};
// clang-format off
#define CALL(function, ...) [](Out a, [[maybe_unused]] Out b) { return function(ptp, __VA_ARGS__); }
#define SLOT(name, ...) "PM_LibGetSub" #name, CALL(PM_LibGetSub##name, __VA_ARGS__)
#define MEMBER(on, name, ...) \
  #on "PM_LibGet" #name "FromPTP", CALL(PM_LibGet##name##FromPTP, __VA_ARGS__)
#define PART(field) {offsetof(PmSubAttr, field), sizeof(PmSubAttr::field)}
const Slot stats = {2, SLOT(StatsFromPTP, a), "pfnGetStats", {30, none, 30, none, ptp}, 0x77},
    attr = {3, SLOT(AttrFromPTP, a), "pfnGetAttr", {30, none, 30, none, 30, ptp, none}, PM_OK},
    priv = {4, SLOT(AttrFromPTPNEW, 0x12345678, a), "pfnGetAttrPriv",
            {30, none, 30, none, 30, ptp, none, ptp}, PM_OK},
    speed = {7, SLOT(ActiveSpeedFromPTP, a, b), "pfnGetActiveSpeed",
             {30, none, 30, none, 30, ptp, none, ptp}, 0x77};
const Member members[] = {
    {MEMBER(1, Mtu, a), &priv, 0, {PART(ulMtu)}, {"1PM_LibGetSubAttrFromPTPNEW" + short_text},
     short_text},
    {MEMBER(1, Speed, a, b), &priv, 1, {PART(ulTransmitSpeed), PART(ulReceiveSpeed)}, {},
     in_null + nulls},
    {MEMBER(0, LinkState, a), &priv, 2, {PART(ucLinkState)}, {"0PM_GetSubAttrFromPTP" + bb}},
    {MEMBER(1, ConnPresent, a), &priv, 2, {{1, 1}},
     {"0PM_GetSubAttrFromPTP" + bb, "1PM_LibGetLinkStateFromPTP" + bb}},
    {MEMBER(1, TxQLen, a), &priv, 3, {PART(ulTxQLen)}},
    {"1PM_GetNameFromPTP", CALL(PM_LibGetNameFromPTP, 33, a), &attr, 0, {PART(szName), {104, 1}},
     {"1PM_GetSubAttrFromPTP" + bb}, short_text},
    {MEMBER(1, PhyAddr, 6, a), &attr, 0, {PART(aucPhyAddr)}, {"1" + attr.caller + bb + id}},
    {MEMBER(1, Specific, a), &attr, 0, {PART(aulSpecific)},
     {"1Enter PM_LibGetSpecificFromPTP->PM_LibGetSubAttrFromPTP" + bb}},
    {MEMBER(1, AdminStatus, a), &attr, 0, {PART(ucAdminStatus)}},
    {MEMBER(1, PromiscuousMode, a), &attr, 0, {PART(ucPromiscuousMode)}},
    {MEMBER(1, CounterDiscontinuityTime, a), &attr, 0, {PART(ulCounterDiscontinuityTime)}},
    {MEMBER(1, Statistic, a), &stats, 0, {{0, 104}}},
    {MEMBER(0, ActiveSpeed, a, b), &speed, 0, {{0, 4}, {4, 4}}, {}, " fail" + nulls},
    {MEMBER(1, Alias, 33, a), nullptr, 0, {{0, 32}, {104, 1}}},
    {MEMBER(1, LastChangeTick, a), nullptr, 0, {{0, 4}}, {}, short_text},
    {MEMBER(1, linkTrapSwitch, a), nullptr, 0, {{6, 1}}, {}, short_text},
};
// clang-format on

class Attributes : public test::LivePm {
 protected:
  void SetUp() override {
    PmSubLineInfo with{}, without{};
    with.stCallBack = {{}, {}, reply<2>, reply<3>, reply<4>, {}, {}, reply<7>, {}};
    with.usPtpType = served;
    without.usPtpType = empty;
    with.ulPID = without.ulPID = PM_PID_NONE;
    hook_sub_lines({with, without});
    up();
    std::iota(pattern.begin(), pattern.end() - 1, u8{1});
    trace_all();
    node.journal.keep_only({Fn::DBG_xPrintfSwitch});
    node.journal.start();
    EXPECT_EQ(put_type(0, served), PM_OK);
    put_ptp(served);
  }
  void put_ptp(u16 type, u8 exist = 1) {
    PtpDynPubData record = test::port_record(2, 1, type);
    record.ucExist = exist;
    record.LastChangeTick = 0x04030201;
    EXPECT_EQ(put(ptp, record), PM_OK);
    settle();
    mark = node.journal.total();
  }
  // The lines were printed in this order, each on its switch; a lookup of the type came first.
  void told(const Values &answers, const Values &codes, const Values &recorded, Lines lines,
            u16 looked_up = 0) {
    if (looked_up != 0) {
      const std::string type = ", usPtpType = " + std::to_string(looked_up);
      lines.insert(lines.begin(),
                   {"0Enter PM_LibGetSubFunc" + type, "0Enter PM_LibGetSubFuncFromPtpType" + type});
    }
    Lines switches;
    for (std::string &line : lines) {
      switches.push_back(std::string("DBG_xPrintfSwitch(0, ") + line[0] + ") = 1");
      line.erase(0, 1);
    }
    EXPECT_EQ(node.journal.since(std::exchange(mark, node.journal.total())), switches);
    expect(answers, codes, recorded, lines);
  }
  // What was written; all else is as it was.
  void wrote(const std::vector<Part> &parts) {
    host::Bytes expected;
    for (const Part &part : parts) {
      expected.insert(expected.end(), &pattern[part.start], &pattern[part.start] + part.size);
    }
    expected.resize(out.size(), 0xAA);
    EXPECT_EQ(out, expected);
    out.assign(out.size(), 0xAA);
  }
  Values ask(Call call) { return {call({out.data()}, {out.data() + 4})}; }

  host::Bytes out = host::Bytes(112, 0xAA);
  std::uint64_t mark = 0;
};

TEST_F(Attributes, MembersHandOverTheirPartOrTellWhatFailed) {
  PtpStaticData record = test::static_record(ptp, {pattern.begin(), pattern.begin() + 40});
  record.ucLinkUpDownTrap = pattern[6];
  EXPECT_EQ(put(record), PM_OK);
  for (const auto &[name, call, slot, selector, parts, failed, null_text] : members) {
    SCOPED_TRACE(name);
    put_ptp(served);
    asked.clear();
    told(ask(call), {PM_OK}, {}, {}, slot == nullptr ? 0 : served);
    wrote(parts);
    const bool two_outputs = null_text.find("pulReceive") != null_text.npos;
    told({call({nullptr}, {reinterpret_cast<u8 *>(8)})}, {PM_ERR_PARA},
         two_outputs ? Values{ptp, 1} : Values{ptp}, {name + null_text});
    if (slot == nullptr) {
      EXPECT_EQ(asked, Values{});
      continue;
    }
    const Values numbers = slot == &priv ? Values{ptp, selector} : Values{ptp};
    EXPECT_EQ(asked.at(0), slot->number);
    EXPECT_EQ(Values(asked.begin() + 1, asked.end()), numbers);
    put_ptp(empty);
    Lines lines = {"0" + (slot == &attr ? "PM_GetSubAttrFromPTP" : slot->caller) + " fail, " +
                   slot->function + " is null"};
    for (const std::string &line : failed.empty() ? Lines{name[0] + slot->caller + bb} : failed) {
      lines.push_back(line);
    }
    const bool unrecorded = slot == &attr && name.find("Counter") == name.npos;
    told(ask(call), {PM_ERR_FUNC_NULL}, unrecorded ? Values{} : numbers, lines, empty);
    put_ptp(served, 0);
    const std::string who = name == "1PM_GetNameFromPTP" ? "PM_If" : "PM_LibIf";
    told(ask(call), {gone}, {}, {name[0] + who + "PtpExist" + ad});
    wrote({});
  }
}

TEST_F(Attributes, AMissingSubLineIsToldAndOnlySomeFailuresArePassedOn) {
  for (const Slot *slot : {&stats, &attr, &priv, &speed}) {
    put_ptp(foreign);
    Lines lines = {"0not find the ptp type, usPtpType = 30",
                   "0PM_LibGetSubInfo fail, ulRet = 0x6908c8, usPtpType = 30",
                   "0PM_LibGetSubFunc" + c8 + ", usPtpType = 30"};
    if (slot != &stats) {
      lines.push_back((slot == &attr ? "0PM_GetSubFunc" : "0PM_LibGetSubFunc") + ("FromPTP" + c8));
    }
    told(ask(slot->call), {none}, slot->lookup_recorded, lines, foreign);
    put_ptp(served);
    answer = 0x77;
    told(ask(slot->call), {slot->failed_code}, {0x77, ptp},
         {"0" + slot->function + " fail, ulRet = 0x77" + id}, served);
    EXPECT_EQ(asked, slot == &priv ? (Values{4, ptp, 0x12345678}) : (Values{slot->number, ptp}));
  }
  put_ptp(served, 0);
  told(ask(stats.call), {gone}, {gone, ptp}, {"0PM_LibGetTypeFromPTP" + ad});
  told(ask(attr.call), {gone}, {gone, ptp, gone},
       {"0PM_LibGetTypeFromPTP" + ad, "0PM_GetSubFuncFromPTP" + ad});
  put_ptp(served);
  wrote({{0, 104}});
  for (const Member &member : members) {
    if (member.slot == &stats || member.slot == &speed) {
      EXPECT_EQ(ask(member.call), Values{0x77});
      wrote({});
    }
  }
  answer = 1;
  EXPECT_EQ(PM_LibGetSpecificFromPTP(ptp, Out{out.data()}), PM_OK);
  pattern = {};
  wrote({{0, 8}});
}

TEST_F(Attributes, LengthsAndSecondOutputsAreChecked) {
  const Out at = {out.data()}, four = {reinterpret_cast<u8 *>(4)};
  const std::string second = ", usPtpID = 17, pulTrasmit = 4, pulReceive = 0";
  told({PM_LibGetNameFromPTP(ptp, 32, at), PM_LibGetPhyAddrFromPTP(ptp, 5, at),
        PM_LibGetPhyAddrFromPTP(ptp, 7, at), PM_LibGetSpeedFromPTP(ptp, four, nullptr),
        PM_LibGetActiveSpeedFromPTP(ptp, four, nullptr)},
       {PM_ERR_NAME_LEN, PM_ERR_PHYADDR_LEN, PM_ERR_PHYADDR_LEN, PM_ERR_PARA, PM_ERR_PARA},
       {ptp, 0, ptp, 0},
       {"1PM_GetNameFromPTP fail ulNameLength = 32", "1PM_LibGetPhyAddrFromPTP fail ulLen = 5",
        "1PM_LibGetPhyAddrFromPTP fail ulLen = 7", "1PM_LibGetSpeedFromPTP" + in_null + second,
        "0PM_LibGetActiveSpeedFromPTP fail" + second});
  node.faults.fail_nth(Fn::strncpy_s, 1, 5);
  told({PM_LibGetNameFromPTP(ptp, 33, at)}, {PM_ERR_STR_OPER}, {5}, {}, served);
  node.faults.fail_nth(Fn::memcpy_s, 1, 6);
  told({PM_LibGetPhyAddrFromPTP(ptp, 6, at)}, {PM_ERR_MEM_OPER}, {6}, {}, served);
  wrote({});
  // A shorter name is terminated, and so is the buffer.
  pattern[offsetof(PmSubAttr, szName) + 2] = 0;
  EXPECT_EQ(PM_LibGetNameFromPTP(ptp, 33, at), PM_OK);
  EXPECT_EQ(std::exchange(out[32], 0xAA), 0);
  wrote({{offsetof(PmSubAttr, szName), 3}});
  pattern[offsetof(PmSubAttr, ucLinkState)] = 1;
  EXPECT_EQ(PM_LibGetConnPresentFromPTP(ptp, at), PM_OK);
  wrote({{0, 1}});
}

TEST_F(Attributes, TheLibrarysOwnRecordsMayBeMissing) {
  const Out at = {out.data()};
  EXPECT_EQ(put(test::static_record(ptp + 1)), PM_OK);
  told({PM_LibGetlinkTrapSwitchFromPTP(ptp, at)}, {gone}, {3, ptp, gone, ptp},
       {"0DB_Query fail, usDbRet = 3" + id,
        "1PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x6908ad"});
  put_ptp(served, 0);
  told({PM_LibGetlinkTrapSwitchFromPTP(ptp, at), PM_LibGetLastChangeTickFromPTP(ptp, at),
        PM_LibGetAliasFromPTP(ptp, 32, at)},
       {gone, gone, PM_ERR_LEN}, {gone, ptp},
       {"0PM_LibGetDynPubDataAttr" + ad, "1PM_LibIfPhyPtpExist" + ad,
        "1PM_LibGetDynPubDataAttr" + ad,
        "0PM_LibGetDescFromPTP fail, length of desc is invalid, ulDescLength = 32"});
  wrote({});
}

}  // namespace
