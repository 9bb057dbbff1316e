// The chassis file: what is read from it, and the one line that each fault in it is worth.
#include <gtest/gtest.h>

#include <string>

#include "node/chassis.hpp"
#include "node/document.hpp"

namespace {

// A complete small file; the cases append to it or replace a line of it.
const std::string kBase = R"([node]
name = "n"
active = 1
[specification]
max_ptp = 30
description_length = 16
[[port_type]]
name = "ge"
value = 20
[[frame]]
id = 0
slots = 4
[[board_kind]]
name = "ETH4"
outer = 4
ports = [{ ports = "0-3", type = "ge" }]
[[board]]
kind = "ETH4"
frame = 0
slots = "0-1"
)";

std::string with(const std::string &old_line, const std::string &new_line) {
  std::string text = kBase;
  text.replace(text.find(old_line), old_line.size(), new_line);
  return text;
}

std::string complaint_about(const std::string &text) {
  try {
    node::chassis_from(text, "c.toml");
  } catch (const node::InputError &error) {
    return error.what();
  }
  return "no complaint";
}

TEST(NodeChassis, NamesThePlaceOfEachFaultAndWhatWasExpected) {
  const struct {
    std::string text;
    std::string complaint;
  } cases[] = {
      {with("slots = 4", "slot = 4"),
       "c.toml:12:1: unknown key 'slot' in [[frame]]; expected id, slots"},
      {kBase + "[boards]\n",
       "c.toml:21:2: unknown key 'boards' in the file; expected node, specification, "
       "virtual_ptps, description, port_type, frame, board_kind, board, ptp, ont, virtual_system, "
       "invisible"},
      {with("slots = 4\n", ""),
       "c.toml:10:1: [[frame]] lacks 'slots'; expected an integer 1 to 255"},
      {with("max_ptp = 30", "max_ptp = \"30\""),
       "c.toml:5:11: 'max_ptp' is a string; expected an integer 1 to 65534"},
      {with("max_ptp = 30", "max_ptp = 65535"),
       "c.toml:5:11: 'max_ptp' is 65535; expected an integer 1 to 65534"},
      {with("max_ptp = 30", "max_ptp = -1"),
       "c.toml:5:11: 'max_ptp' is -1; expected an integer 1 to 65534"},
      {with("name = \"n\"", "name = 3"), "c.toml:2:8: 'name' is an integer; expected a string"},
      {with("slots = \"0-1\"", "slots = \"1-0\""),
       "c.toml:20:9: 'slots' is \"1-0\"; expected a list such as \"1-7,9\" of 0 to 3"},
      {with("slots = \"0-1\"", "slots = \"0-4\""),
       "c.toml:20:9: 'slots' is \"0-4\"; expected a list such as \"1-7,9\" of 0 to 3"},
      {with("slots = \"0-1\"", "slots = \"0,0\""),
       "c.toml:20:9: slot 0 of frame 0 holds a board already (ETH4); expected each slot once"},
      {kBase + "[[board]]\nkind = \"ETH4\"\nframe = 0\nslots = \"1\"\n",
       "c.toml:24:9: slot 1 of frame 0 holds a board already (ETH4); expected each slot once"},
      {with("kind = \"ETH4\"", "kind = \"ETH8\""),
       "c.toml:18:8: board kind 'ETH8' is not defined; expected ETH4"},
      {with("type = \"ge\"", "type = \"xe\""),
       "c.toml:16:34: port type 'xe' is not defined; expected ge"},
      {with("frame = 0", "frame = 1"), "c.toml:19:9: frame 1 is not defined; expected a [[frame]]"},
      {with("ports = \"0-3\"", "ports = \"0-3,2\""),
       "c.toml:16:20: two PTPs on port 2 of board kind 'ETH4'; expected each port once"},
      {kBase + "ptp = 26\n",
       "c.toml:21:7: PTP 31 at 0/1/1 is beyond the maximum PTP ID; expected 0 to 30"},
      {kBase + "ptp = 2\nptp_step = 1\n",
       "c.toml:22:12: 'ptp_step' is 1; expected an integer 4 to 65535"},
      {kBase + "[[ptp]]\nid = 9\nframe = 0\nslot = 1\nport = 3\ntype = \"ge\"\n",
       "c.toml:22:6: two PTPs on port 0/1/3, 7 and 9; expected one"},
      {kBase + "[[ont]]\nframe = 0\nslots = 1\nports = 3\ncount = 2\ntype = \"ge\"\nptp = 7\n",
       "c.toml:27:7: PTP 7 is at 0/1/3 and at 0/1/3 ONT 0; expected each ID once"},
      {kBase + "[[ont]]\nframe = 0\nslots = 2\nports = 0\ncount = 1\ntype = \"ge\"\n",
       "c.toml:23:9: slot 2 of frame 0 is empty; expected a slot with a board"},
      {kBase + "[virtual_ptps]\nfirst = 4\ncount = 1\n",
       "c.toml:17:1: PTP 4 at 0/1/0 lies among the virtual PTPs; expected an ID outside "
       "[virtual_ptps]"},
      {kBase + "[[virtual_system]]\nid = 9\n",
       "c.toml:22:6: 'id' is 9; expected an integer 0 to 8"},
      {kBase + "[description]\nport = \"{board}\"\n",
       "c.toml:22:8: '{board' in a description names nothing; expected {kind}, {type}, {frame}, "
       "{slot}, {port} or {ont}"},
      {kBase + "[description]\nport = \"a port of an {kind}\"\n",
       "c.toml:22:8: the description \"a port of an ETH4\" has 17 characters; expected 1 to 16"},
  };
  for (const auto &[text, complaint] : cases) EXPECT_EQ(complaint_about(text), complaint);
}

TEST(NodeChassis, PassesASyntaxErrorOnWithItsPlace) {
  const std::string complaint = complaint_about("[node]\nname = \n");
  EXPECT_EQ(complaint.rfind("c.toml:2:", 0), 0u) << complaint;
}

TEST(NodeChassis, NumbersDescribesHidesAndGroupsPtps) {
  const node::Chassis chassis =
      node::chassis_from(kBase +
                             "ptp = 10\nptp_step = 8\n"
                             "[[ont]]\nframe = 0\nslots = 1\nports = 2\ncount = 3\ntype = \"ge\"\n"
                             "[[invisible]]\nframe = 0\nslots = 0\nports = \"0,3\"\n"
                             "[[virtual_system]]\nid = 1\nmembers = [{ frame = 0, slots = 1 }]\n"
                             "[[virtual_system]]\nid = 2\nmembers = [{ frame = 0, ports = 2 }]\n",
                         "c.toml");
  std::string told;
  for (const node::Ptp &ptp : chassis.ptps) {
    told += std::to_string(ptp.id) + (ptp.invisible ? "i" : "") + ":" +
            std::to_string(ptp.vs_mask) + ":" + ptp.description + " | ";
  }
  EXPECT_EQ(told,
            "10i:1:ETH4 0/0/0 | 11:1:ETH4 0/0/1 | 12:4:ETH4 0/0/2 | 13i:1:ETH4 0/0/3 | "
            "18:2:ETH4 0/1/0 | 19:2:ETH4 0/1/1 | 20:6:ETH4 0/1/2 | 21:2:ETH4 0/1/3 | "
            "22:6:ge 0/1/2/0 | 23:6:ge 0/1/2/1 | 24:6:ge 0/1/2/2 | ");
  // Behind a port, the second index tells port and ONT.
  const PtpDynPubData behind = node::dynamic_record_of(chassis, chassis.ptps.back());
  EXPECT_EQ(behind.usIndex2, 0x0202);
  EXPECT_EQ(behind.ucPtpClass, PM_PTP_CLASS_OTHER);
  const PmAttrCB numbers = node::ptp_numbers_of(chassis);
  EXPECT_EQ(numbers.usVisiblePtpNum, 9);
  EXPECT_EQ(numbers.usOtherPtpNum, 2);
}

}  // namespace
