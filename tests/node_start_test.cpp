// Nodes of the example chassis, brought up with the bundled product: what they answer, and what
// reaches the product's booked functions.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "node/console.hpp"
#include "node/document.hpp"
#include "node/feed.hpp"

namespace {

using node::Node;

const std::string kExamples = PM_SOURCE_DIR "/examples/";

std::unique_ptr<Node> started(const std::string &chassis, const node::StartReport &report = {}) {
  auto up = std::make_unique<Node>(node::load_chassis(kExamples + chassis),
                                   std::vector{node::load_product(PM_PRODUCT_FILE)});
  up->start(report);
  return up;
}

// What a line of the console prints.
std::string told(Node &node, const std::string &line) {
  std::ostringstream out;
  node::Console(node, out).run_line(line);
  return out.str();
}

std::vector<std::string> event_texts(const Node &node, std::size_t after) {
  std::vector<std::string> texts;
  for (const node::Event &event : node.events()) texts.push_back(event.text);
  texts.erase(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(after));
  return texts;
}

PtpDynPubData dynamic_record_in(Node &node, u16 ptp) {
  const host::Scope scope(*node.active().instance);
  PtpDynPubData record{};
  PM_LibGetAllDynDataFromPtpID(ptp, &record);
  return record;
}

TEST(NodeStart, StartsInOrderAndRestoresEveryClass) {
  std::string order;
  node::StartReport report;
  report.step = [&](const std::string &step, const std::string &outcome) {
    order += step + (outcome.empty() ? "" : "=" + outcome) + ";";
  };
  report.restore = [&](const node::Restore &restore) {
    if (!restore.finished) return;
    order += std::string(restore.class_name) + "=" + std::to_string(restore.delivered) + "-" +
             std::to_string(restore.refused) + ";";
  };
  const auto node = started("desk.toml", report);
  const std::string steps =
      "register component 54=ok;specification messages=ok;construct instance 0x%s=ok;"
      "FID start-up=ok;PID phase 1=ok;PID phase 2=ok;PID phase 8=ok;"
      "port-type counts=1-0;port types=4-0;dynamic records=31-0;static records=%s-0;"
      "notifications=0-0;objects in deletion=1-0;";
  const auto of_board = [&](const std::string &cid, const std::string &static_records) {
    std::string text = steps;
    text.replace(text.find("%s"), 2, cid);
    text.replace(text.find("%s"), 2, static_records);
    return text;
  };
  EXPECT_EQ(order, "active board;" + of_board("36", "31") + "standby board;" +
                       of_board("136", "0") +
                       "synchronisation;units shipped=31;static data of both sides=identical;");
}

TEST(NodeStart, AnswersForEveryPtpOfTheAccessNodeAsItsChassisSays) {
  const auto node = started("access_node.toml");
  const node::Chassis &chassis = node->chassis();
  ASSERT_GT(chassis.ptps.size(), 10'000u);
  const host::Scope scope(*node->active().instance);
  std::size_t wrong = 0;
  for (const node::Ptp &ptp : chassis.ptps) {
    ZEL_ClearWatchDog();
    u16 frame = 0;
    u8 slot = 0;
    u8 port = 0;
    u16 type = 0;
    u32 mask = 0;
    char description[81] = "";
    const bool place = PM_LibGetFSPFromPtp(ptp.id, &frame, &slot, &port) == PM_OK &&
                       frame == ptp.frame && slot == ptp.slot && port == ptp.port;
    const bool kind =
        PM_LibGetTypeFromPTP(ptp.id, &type) == PM_OK && type == chassis.port_types[ptp.type].value;
    const bool systems = PM_LibGetVsMaskFromPtp(ptp.id, &mask) == PM_OK && mask == ptp.vs_mask;
    const bool sight = (PM_LibIsPtpVisible(ptp.id) == PM_OK) != ptp.invisible;
    const u32 text = PM_LibGetDescFromPTP(ptp.id, sizeof description, description);
    const bool described =
        ptp.ont ? text == PM_ERR_FUNC_NULL : text == PM_OK && description == ptp.description;
    if (!place || !kind || !systems || !sight || !described) ++wrong;
  }
  EXPECT_EQ(wrong, 0u);
  EXPECT_EQ(PM_LibIfPtpExist(16'000), PM_ERR_PTP_NOT_EXIST);
  u16 ptp = 0;
  EXPECT_EQ(PM_LibGetPtpFromFSP(0, 0, 17, &ptp), PM_OK);
  EXPECT_EQ(ptp, 17);
  u8 wired = 0;
  EXPECT_EQ(PM_LibGetPtpPhyStateFromPTP(980, &wired), PM_OK);
  EXPECT_EQ(wired, 1);
  for (const auto &side : node->sides()) {
    EXPECT_EQ(side->host.watchdog.barks(), 0u);
    EXPECT_TRUE(side->host.misuses.empty());
    EXPECT_EQ(side->host.memory.check(), 0u);
  }
}

TEST(NodeEvents, LinkEventsReachTheBookedFunctionsOfTheRightInstances) {
  const auto node = started("desk.toml");
  const std::size_t before = node->events().size();
  EXPECT_EQ(node->raise(PM_PRIM_LINK_UP, 40), PM_ERR_PTP_NOT_EXIST);
  EXPECT_EQ(node->raise(PM_PRIM_LINK_UP, 3), PM_OK);
  EXPECT_EQ(node->notify(PM_PRIM_LINK_DOWN, 31), PM_OK);
  EXPECT_EQ(
      event_texts(*node, before),
      (std::vector<std::string>{"link up: PTP 3 (ge-3), change 1",
                                "link down: PTP 31 (uplink-31), change 1", "uplink lost: PTP 31",
                                "link down: PTP 31 (uplink-31), change 1", "uplink lost: PTP 31"}));
  EXPECT_EQ(node->events().back().cid, 0x136u);
  EXPECT_NE(told(*node, "ptp 3").find("link             up"), std::string::npos);
}

TEST(NodeEvents, AChangedRecordReachesBothBoardsAndMovesVirtualSystems) {
  const auto node = started("desk.toml");
  const std::size_t before = node->events().size();
  PtpDynPubData record = dynamic_record_in(*node, 3);
  record.ulVsMask = 0xC;
  EXPECT_EQ(node->publish(PM_CLASS_DYNAMIC, host::bytes_of_u32(3), host::view_of(record)), PM_OK);
  const std::vector<std::string> moves{"PTP 3 leaves virtual system 1",
                                       "PTP 3 joins virtual system 3"};
  std::vector<std::string> on_both = moves;
  on_both.insert(on_both.end(), moves.begin(), moves.end());
  EXPECT_EQ(event_texts(*node, before), on_both);
  EXPECT_TRUE(node->active().host.objects.has(3, 3));
}

TEST(NodeStandby, TakesOverWithTheStaticDataThatSynchronisationBrought) {
  const auto node = started("desk.toml");
  ASSERT_TRUE(node->failover());
  ASSERT_EQ(node->active().cid, 0x136u);
  EXPECT_NE(told(*node, "ptp 0/4/1").find("description      uplink 0/4/1"), std::string::npos);
  // A static record now reaches the new active side only, and the old one by synchronisation.
  PtpStaticData record{};
  record.usPtpID = 31;
  record.szDescription[0] = 'x';
  EXPECT_EQ(node->publish(PM_CLASS_STATIC, host::bytes_of_u32(31), host::view_of(record)), PM_OK);
  node->synchronise();
  EXPECT_TRUE(node->compare().empty());
  ASSERT_TRUE(node->failover());
  EXPECT_NE(told(*node, "ptp 31").find("description      x"), std::string::npos);
}

TEST(NodeStandby, ComparingFindsAUnitThatOneSideLacks) {
  const auto node = started("desk.toml");
  {
    const host::Scope scope(*node->sides()[1]->instance);
    PM_LibDeleteStaticDBNode(5);
  }
  const std::vector<host::SyncDifference> differing = node->compare();
  ASSERT_EQ(differing.size(), 1u);
  EXPECT_EQ(differing[0].unit, 5u);
}

TEST(NodeConsole, AnswersAsTextAndAsJson) {
  const auto node = started("desk.toml");
  EXPECT_EQ(told(*node, "vs 2 2"),
            "virtual system  2\n"
            "ptps            4\n"
            "in no other     2\n"
            "first ptps:\n"
            "  ptp  place  type name  visible  description\n"
            "    2  0/0/2  ge         yes      ge 0/0/2\n"
            "    3  0/0/3  ge         yes      ge 0/0/3\n"
            "and 2 more: vs 2 COUNT lists as many as you like\n");
  EXPECT_EQ(told(*node, "link up 0/2/3 --json"),
            R"({"ptp":19,"primitive":6,"delivered_by":"message","result":"ok","printed":)"
            R"([{"instance":54,"text":"link up: PTP 19 (pon-19), change 1"}]})"
            "\n");
  EXPECT_EQ(told(*node, "  # nothing"), "");
  // The switch goes the way of the operator: a message of the debug window.
  told(*node, "trace 0 on");
  EXPECT_NE(told(*node, "link up 88").find("0x36  Enter PM_LibBookCallBookedFuncs"),
            std::string::npos);
}

TEST(NodeConsole, AScriptStopsAtItsFirstErrorAndNamesTheLine) {
  const auto node = started("desk.toml");
  const struct {
    const char *line;
    const char *complaint;
  } cases[] = {
      {"lnik up 3",
       "s:3: there is no command 'lnik'; expected one that 'help' lists, 'link' perhaps"},
      {"quit now", "s:3: 'quit' has 1 argument; expected quit alone"},
      {"fault fail", "s:3: the host function is missing; expected the name of one of platform/"},
      {"journal filter ZEL_MemAloc_F",
       "s:3: 'ZEL_MemAloc_F' is no host function; expected one of platform/, "
       "'ZEL_MemAlloc_F' perhaps"},
      {"ptp", "s:3: 'ptp' has 0 arguments; expected ptp ID|FRAME/SLOT/PORT [full]"},
      {"ptp 0x1FFFF", "s:3: '0x1FFFF' is no PTP ID; expected 0 to 65534"},
      {"ptp 0/1", "s:3: '0/1' is no place; expected FRAME/SLOT/PORT"},
      {"ptp 0/5/0", "s:3: no PTP at 0/5/0: PM_ERR_PTP_NOT_EXIST (0x6908ad)"},
      {"link sideways 3", "s:3: 'sideways' is no link state; expected up or down"},
      {"publish 0x360030 0 123",
       "s:3: '123' is no record; expected bytes as pairs of hexadecimal digits"},
      {"vs 9", "s:3: '9' is no virtual system; expected 0 to 8"},
      {"walk to 3", "s:3: 'to' is no filter; expected what 'help walk' tells"},
      {"walk type lan", "s:3: 'lan' is no port type; expected 0 to 65535"},
      {"find port 3", "s:3: 'find port' has 1 arguments; expected what 'help find' tells"},
      {"object ask 0/1/2", "s:3: '0/1/2' is no place; expected FRAME/SLOT/PORT/ONT"},
      {"dbwin 1 on", "s:3: 'on' is no number; expected 0 to 4294967295"},
      {"feed /none", "s:3: /none: cannot be read; expected a feed"}};
  for (const auto &[line, complaint] : cases) {
    std::istringstream script("# a comment\nspec\n" + std::string(line) + "\nlink up 3\n");
    std::ostringstream out;
    node::Console console(*node, out);
    try {
      console.run_script(script, "s", false);
      ADD_FAILURE() << "no complaint about " << line;
    } catch (const node::InputError &error) {
      EXPECT_STREQ(error.what(), complaint);
    }
    EXPECT_EQ(out.str().find("primitive"), std::string::npos) << "went on after " << line;
  }
}

TEST(NodeFeed, AppliesEachKindInOrder) {
  const auto node = started("desk.toml");
  const std::size_t before = node->events().size();
  std::istringstream lines(
      "{\"format\": \"pmnode-feed\", \"version\": 1}\n"
      "{\"spec\": \"0x6C00001\", \"data\": \"0100000000003b000000000000000000\"}\n"
      "{\"ticks\": 7}\n\n"
      "{\"primitive\": \"00000600030000000000000000000000000000000000000000000000\"}\n"
      "{\"class\": 3538993, \"key\": 0, \"data\": \"09000000\"}\n"
      "{\"class\": \"0x360011\", \"key\": 3, \"data\": \"00\"}\n"
      "{\"message\": "
      "\"040000004c000000360000000000000010000000010000000100000002000000ff000000\"}\n");
  EXPECT_EQ(node::apply_feed(*node, node::feed_from(lines, "f").items), 1u);
  EXPECT_EQ(PM_LibGetMaxPtpID(), 59);
  ASSERT_EQ(node->events().size(), before + 1);
  EXPECT_EQ(node->events().back().tick, 7u);
  EXPECT_NE(node->active().host.debug.text().find("Set switch Successful"), std::string::npos);
  for (const auto &side : node->sides()) {
    const host::Scope scope(*side->instance);
    EXPECT_EQ(PM_LibGetObjectNumInDelete(), 9u);
  }
}

TEST(NodeFeed, RefusesADamagedOrForeignLineByItsNumber) {
  const std::string header = "{\"format\": \"pmnode-feed\", \"version\": 1}\n{\"ticks\": 1}\n";
  const std::string recording = "{\"format\": \"pmnode-feed\", \"version\": 3}\n";
  const struct {
    std::string text;
    std::string complaint;
  } cases[] = {
      {"", R"(f:1: the file is no feed; expected {"format": "pmnode-feed", "version": 1 to 3})"},
      {"{\"format\": \"other\", \"version\": 1}",
       R"(f:1: the file is no feed; expected {"format": "pmnode-feed", "version": 1 to 3})"},
      {"{\"format\": \"pmnode-feed\", \"version\": 4}",
       "f:1: version 4 of the format is not known; expected "
       R"({"format": "pmnode-feed", "version": 1 to 3})"},
      {header + "{\"command\": \"status\", \"from\": \"script\"}",
       "f:3: the line says nothing known; expected spec, class, primitive, message or ticks"},
      {"{\"format\": \"pmnode-feed\", \"version\": 2}\n{\"command\": \"a\", \"from\": \"b\"}",
       "f:2: 'from' is \"b\"; expected script, pipe or prompt"},
      {recording + "{\"file\": \"a\", \"content\": {\"bytes\": \"0g\"}}",
       "f:2: there is no text; expected 'content', a string or its bytes"},
      {recording + "{\"entered\": \"word\", \"board\": 1}",
       "f:2: 'entered' is \"word\"; expected one of spec, record, message, phase, fid, service, "
       "remote_answer, unit"},
      {recording + "{\"entered\": \"spec\", \"board\": 1, \"instance\": 1, \"id\": 1}",
       "f:2: the number is missing; expected 'answer', a number or \"0x..\" of 32 bits"},
      {recording + "{\"entered\": \"spec\", \"answer\": 0, \"key\": 1, \"board\": 1, "
                   "\"instance\": 1, \"id\": 1}",
       "f:2: 'key' is 1; expected 'key', a string of hexadecimal bytes"},
      {header + "{\"ticks\": 1, \"ticks\": 2}",
       "f:3: 'ticks' stands there twice; expected every member once"},
      {header + std::string("{\"ticks\"\0: 1}", 13),
       "f:3: the line is damaged; expected one JSON object"},
      {header + "{\"ticks\": 1", "f:3: the line is damaged; expected one JSON object"},
      {header + "{\"ticks\": [[[1]]]}",
       "f:3: the line is nested; expected one JSON object of numbers and texts"},
      {"{\"format\": [\"pmnode-feed\"], \"version\": 1}",
       R"(f:1: the file is no feed; expected {"format": "pmnode-feed", "version": 1 to 3})"},
      {header + "{\"tick\": 1}",
       "f:3: the line says nothing known; expected spec, class, primitive, message or ticks"},
      {header + "{\"class\": 1, \"data\": \"00\"}",
       "f:3: the number is missing; expected 'key', a number or \"0x..\" of 32 bits"},
      {header + "{\"spec\": -1, \"data\": \"00\"}",
       "f:3: 'spec' is -1; expected 'spec', a number or \"0x..\" of 32 bits"},
      {header + "{\"spec\": 1, \"data\": \"0g\"}",
       "f:3: 'data' is \"0g\"; expected 'data', a string of hexadecimal bytes"},
      {header + "{\"spec\": 1, \"data\": \"00\", \"at\": 1}",
       "f:3: unknown member 'at'; expected spec, data"},
      {header + "{\"primitive\": \"00\"}", "f:3: the primitive has 1 bytes; expected 28"}};
  for (const auto &[text, complaint] : cases) {
    std::istringstream lines(text);
    try {
      node::feed_from(lines, "f");
      ADD_FAILURE() << "no complaint about " << text;
    } catch (const node::InputError &error) {
      EXPECT_EQ(error.what(), complaint);
    }
  }
}

}  // namespace
