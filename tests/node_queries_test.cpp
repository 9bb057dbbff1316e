// The console's questions about PTPs, its requests to the owner and the debug window, on nodes of
// the example chassis; and the words made from the list of commands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "node/completion.hpp"
#include "node/console.hpp"
#include "node/gbk.hpp"

namespace {

using node::Node;
using testing::ElementsAre;
using testing::HasSubstr;

std::unique_ptr<Node> started(const std::string &chassis) {
  auto up = std::make_unique<Node>(node::load_chassis(PM_SOURCE_DIR "/examples/" + chassis),
                                   std::vector{node::load_product(PM_PRODUCT_FILE)});
  up->start();
  return up;
}

std::string told(Node &node, const std::string &line) {
  std::ostringstream out;
  node::Console(node, out).run_line(line);
  return out.str();
}

nlohmann::json asked(Node &node, const std::string &line) {
  return nlohmann::json::parse(told(node, line + " --json"));
}

TEST(NodeQueries, APtpInFullCarriesItsRecordsAndEveryLiveAttribute) {
  const auto node = started("access_node.toml");
  told(*node, "link up 0/3/5");
  const auto ptp = asked(*node, "ptp 0/3/5 full");
  EXPECT_EQ(ptp["static_bindex"], ptp["dynamic_index1"]);
  EXPECT_EQ(ptp["static_description"], "PON16 port 0/3/5");
  EXPECT_EQ(ptp["live_active_transmit_speed"], 2'488'000'000u);
  EXPECT_EQ(ptp["live_connection_present"], 1);
  EXPECT_EQ(ptp["live_statistics"].get<std::string>().substr(0, 10), "0100000000");
  EXPECT_EQ(asked(*node, "capability 0/3/5 1")["capability_type"], 3);
  EXPECT_EQ(asked(*node, "ptp 15000 full")["live_mtu"], "PM_ERR_PTP_NOT_EXIST (0x6908ad)");
}

// Walking in pieces from wherever the last one stopped visits what one long walk does, and both
// what the chassis says.
TEST(NodeQueries, WalksResumeWithEveryFilter) {
  const auto node = started("access_node.toml");
  const node::Chassis &chassis = node->chassis();
  const struct {
    std::string filters;
    std::function<bool(const node::Ptp &)> passes;
  } cases[] = {
      {"", [](const node::Ptp &) { return true; }},
      {"visible", [](const node::Ptp &ptp) { return !ptp.invisible; }},
      {"board 0/16", [](const node::Ptp &ptp) { return ptp.frame == 0 && ptp.slot == 16; }},
      {"type uplink",
       [&](const node::Ptp &ptp) { return chassis.port_types[ptp.type].value == 10; }},
      {"vs 5", [](const node::Ptp &ptp) { return (ptp.vs_mask >> 5 & 1) != 0; }},
      {"vs 0 visible", [](const node::Ptp &ptp) { return (ptp.vs_mask & 1) && !ptp.invisible; }},
  };
  for (const auto &[filters, passes] : cases) {
    std::map<std::tuple<u16, u8, u8>, u16> expected;
    for (const node::Ptp &ptp : chassis.ptps) {
      if (!ptp.ont && passes(ptp)) expected[{ptp.frame, ptp.slot, ptp.port}] = ptp.id;
    }
    std::vector<u16> in_order;
    for (const auto &[place, id] : expected) in_order.push_back(id);
    std::vector<u16> visited;
    nlohmann::json piece{{"end", false}};
    for (std::string from; !piece["end"]; from = " from " + piece["last"].dump()) {
      piece = asked(*node, "walk count 97 " + filters + from);
      for (const auto &row : piece["ptps"]) visited.push_back(row["ptp"]);
    }
    EXPECT_EQ(visited, in_order) << filters;
  }
  EXPECT_EQ(node->active().host.watchdog.barks(), 0u);
}

TEST(NodeOwner, HandsOutNoIdTwiceAndKeepsDescriptionsAcrossFailovers) {
  const auto node = started("desk.toml");
  EXPECT_EQ(asked(*node, "virtual add 1 2 0x204 ont")["ptp"], 90);
  EXPECT_EQ(asked(*node, "describe 3 \"front desk\"")["description"], "front desk");
  ASSERT_TRUE(node->failover());
  EXPECT_EQ(asked(*node, "virtual add 1 2 0x205 ont")["ptp"], 91);
  EXPECT_EQ(asked(*node, "describe 4 back office")["description"], "back office");
  EXPECT_EQ(asked(*node, "virtual delete 90")["result"], "ok");
  for (const auto &side : node->sides()) {
    const host::Scope scope(*side->instance);
    EXPECT_TRUE(PM_LibIfPtpExist(90) != PM_OK && PM_LibIfPtpExist(91) == PM_OK) << side->cid;
    u16 found = 0;
    EXPECT_EQ(PM_LibGetPtpFromDesc("front desk", &found), PM_OK);
    EXPECT_EQ(PM_LibGetPtpFromDesc("back office", &found), PM_OK);
  }
  ASSERT_TRUE(node->failover());
  EXPECT_EQ(asked(*node, "virtual add 1 2 0x206 ont")["ptp"], 90) << "free again";
  EXPECT_TRUE(node->compare().empty());
}

TEST(NodeOwner, ReportsADeletionToTheBoardThatAskedForIt) {
  const auto node = started("desk.toml");
  EXPECT_EQ(asked(*node, "object delete 0/2/1/1 cleaning up")["in_deletion"], 1);
  ASSERT_TRUE(node->failover());
  EXPECT_EQ(asked(*node, "object ask 0/2/1/1")["result"], "being deleted (0x4d0012)");
  EXPECT_EQ(asked(*node, "object finish 0x6908AD")["in_deletion"], 0);
  EXPECT_EQ(node->events().back().cid, 0x36u);
  EXPECT_EQ(node->events().back().text,
            "configuration of 0/2/1/1: deletion answered PM_ERR_PTP_NOT_EXIST (0x6908ad)");
  EXPECT_EQ(asked(*node, "link down 31 owner")["result"], "ok");
  EXPECT_EQ(node->events().back().text, "uplink lost: PTP 31");
}

TEST(NodeDebugWindow, KeepsItsBytesAndIsUtf8OnTerminalsAndInJson) {
  const auto node = started("desk.toml");
  EXPECT_THAT(told(*node, "dbwin"), HasSubstr("by PTPID\xA3\xACulSubCmd=PTPID\n"));
  EXPECT_EQ(asked(*node, "dbwin 0")["window"][5],
            "  3  Query PTP information by PTPID\uFF0CulSubCmd=PTPID");
  EXPECT_EQ(node::as_utf8("a\xA3\xBD"
                          "b\xA3\xC3\xA9\x1B\xFF\xA3\xA4"),
            "a\uFF1Db\uFF23\\xA9\\x1B\\xFF\\xA3\\xA4");
}

TEST(NodeDebugWindow, SendsNothingUnlessEveryWordIsANumberOf32Bits) {
  const auto node = started("desk.toml");
  const auto sent = [&](const std::string &words) {
    const auto &faults = node->active().host.faults;
    const u32 before = faults.calls(host::Fn::DMS_MsgRecvIidGet);
    bool refused = false;
    try {
      told(*node, "dbwin " + words);
    } catch (const node::CommandError &) {
      refused = true;
    }
    EXPECT_NE(refused, faults.calls(host::Fn::DMS_MsgRecvIidGet) != before) << words;
    return !refused;
  };
  const std::string largest = "0xFFFFFFFF";
  for (const std::string wrong : {"-1", "4294967296", "0x100000000", "99999999999999999999", "x",
                                  "1x", "0x", "+1", "1.0", "1e3", "''"}) {
    for (const std::string front : {"", "1 ", "1 2 ", "1 2 3 "}) {
      EXPECT_FALSE(sent(front + wrong)) << front + wrong;
    }
  }
  EXPECT_FALSE(sent("1 2 3 4 5"));
  std::string words;
  for (int count = 0; count <= 4; ++count, words += largest + " ") {
    EXPECT_TRUE(sent(words));
  }
  EXPECT_TRUE(sent("9 4294967295 0 00000000000"));
}

TEST(NodePrompt, CompletesCommandsAndFixedWords) {
  EXPECT_THAT(node::completions("", "wa"), ElementsAre("walk", "watchdog"));
  EXPECT_THAT(node::completions("link ", ""),
              ElementsAre("--json", "down", "notify", "owner", "up"));
  EXPECT_THAT(node::completions("walk vs 3 v", "vi"), ElementsAre("visible"));
  EXPECT_THAT(node::completions("expect ", "e"), ElementsAre("error", "event"));
  EXPECT_THAT(node::completions("fault fail ", "ZEL_MemA"), ElementsAre("ZEL_MemAlloc_F"));
}

}  // namespace
