// Every kind of message with the numbers at the edges of what its command takes. The window only
// reads; the one thing it sets is a trace switch.
#include "scenarios.hpp"

namespace {

using Bytes = std::vector<u8>;

constexpr u32 edges[] = {0,      1,       2,       3,          4,          7,         8,   14,
                         15,     31,      32,      40,         41,         255,       256, 0x7FFF,
                         0xFFFF, 0x10000, 0x10006, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

class DebugWindowSweep : public testing::Test {
 protected:
  void SetUp() override {
    stage.full();
    PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_UP, 7, [](u16, u16, void *) { return PM_OK; });
    stage.node.debug.set_capacity(0);
    before = stage.picture();
  }
  // On the heap and no longer than it is, so that a read behind it is seen.
  void send(u32 iid, u32 type, u32 command, u32 sub, u32 para1, u32 para2, std::size_t size = 36) {
    const auto whole = host::Framework::debug_message(command, sub, para1, para2);
    Bytes message(whole.begin(), whole.end());
    std::memcpy(&message[0], &iid, sizeof iid);
    std::memcpy(&message[4], &type, sizeof type);
    message.resize(size);
    message.shrink_to_fit();
    stage.node.root.send_message(*stage.instance, message.data());
    ++sent;
  }
  void command(u32 number, u32 sub, u32 para1, u32 para2) {
    send(host::iid_fid_pid, PM_DBWIN_MSG_TYPE, number, sub, para1, para2);
    const bool sets = number == 1 && sub == 1 && para1 < PM_SWITCH_NUM;
    if (sets) {
      EXPECT_EQ(pm::load<u32>(&pm::current_data()->astDbgSwitch[para1]), para2);
      PM_LibInitPMDbgSwitches();
    }
    EXPECT_EQ(stage.picture(), before) << number << " " << sub << " " << para1 << " " << para2;
  }
  void send_all() {
    for (const u32 number : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 0x4CU, 0xFFFFFFFFU}) {
      for (const u32 sub : edges) {
        command(number, sub, 0, 0);
        for (const u32 para : edges) {
          if (number == 1) {
            command(number, sub, para, para);
          } else if (number == 4 && sub < 8) {
            command(number, sub, para, 3);
            command(number, sub, 1, para);
          }
        }
      }
    }
  }
  scenes::Stage stage;
  std::string before;
  u32 sent = 0;
};

TEST_F(DebugWindowSweep, OnlyTheSwitchesAreEverSet) {
  send_all();
  // What the reverse lookup has cached stays; the same again takes nothing more.
  const u32 mark = stage.node.memory.mark();
  send_all();
  for (const u32 iid : edges) {
    for (const u32 type : {0U, 0x4BU, 0x4DU, 0x14CU, 0x4C4C4C4CU, 0xFFFFFFFFU}) {
      send(iid, type, 1, 1, 0, 1, sizeof(host::MessageHeader));
    }
    if ((iid & 0xFFFF) != host::iid_fid_pid) {
      send(iid, PM_DBWIN_MSG_TYPE, 1, 1, 0, 1);
    }
  }
  EXPECT_EQ(stage.picture(), before);
  EXPECT_EQ(stage.node.memory.mark(), mark);
  EXPECT_TRUE(stage.node.misuses.empty());
  EXPECT_EQ(stage.node.memory.check() + stage.node.watchdog.barks(), 0U);
  RecordProperty("messages", static_cast<int>(sent));
  std::cout << sent << " messages\n";
}

}  // namespace
