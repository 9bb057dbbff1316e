// Memory partitions, hash tables, ticks and watchdog, error ring and debug output, bounded copies.
#include <gtest/gtest.h>

#include <cstring>

#include "host/host.hpp"

namespace {

using host::Fn;
using host::MisuseKind;
using host::Node;

std::vector<MisuseKind> kinds(const Node &node) {
  std::vector<MisuseKind> all;
  for (const auto &misuse : node.misuses) {
    all.push_back(misuse.kind);
  }
  return all;
}

void *take(u32 partition, u32 size, u32 module = 54) {
  return ZEL_MemAlloc_F(module, partition, size, "file", 1);
}

TEST(HostMemory, accounts_blocks_bytes_and_peak_per_partition) {
  Node node;
  auto scope = host::enter(node);
  const u32 partitions[] = {ZEL_kvtStaticMemPtGet(), ZEL_kvtBlockMemPtGet(),
                            ZEL_kvtDynamicMemPtGet()};
  for (const u32 partition : partitions) {
    const u32 mark = node.memory.mark();
    u8 *first = static_cast<u8 *>(take(partition, 100));
    EXPECT_EQ(first[0], 0xA5);  // not cleared
    void *second = take(partition, 60);
    EXPECT_EQ(ZEL_MemFree(54, first), 0u);
    void *third = take(partition, 30);
    const auto &use = node.memory.use(partition);
    EXPECT_EQ(use.blocks, 2u);
    EXPECT_EQ(use.bytes, 90u);
    EXPECT_EQ(use.peak_bytes, 160u);
    EXPECT_EQ(use.allocations, 3u);
    const auto live = node.memory.live_since(mark);
    ASSERT_EQ(live.size(), 2u);
    EXPECT_EQ(live[0].size, 60u);
    EXPECT_EQ(live[1].file, "file");
    EXPECT_EQ(ZEL_Free(second), 0u);
    EXPECT_EQ(ZEL_Free(third), 0u);
    EXPECT_EQ(use.bytes, 0u);
  }
  EXPECT_EQ(take(99, 4), nullptr);
  EXPECT_EQ(take(partitions[0], 0), nullptr);
  EXPECT_TRUE(node.misuses.empty());
}

TEST(HostMemory, runs_out_where_told) {
  Node node;
  auto scope = host::enter(node);
  node.memory.limit_bytes(2, 100);
  void *first = take(2, 60);
  EXPECT_EQ(take(2, 41), nullptr);
  EXPECT_NE(take(2, 40), nullptr);
  EXPECT_NE(take(3, 1'000), nullptr);
  ZEL_Free(first);
  node.memory.limit_bytes(2, host::PartitionUse::unlimited);
  node.memory.limit_blocks(2, 2);
  EXPECT_NE(take(2, 1), nullptr);
  EXPECT_EQ(take(2, 1), nullptr);
  node.memory.limit_blocks(2, host::PartitionUse::unlimited);
  node.memory.fail_nth(2, 2);
  EXPECT_NE(take(2, 1), nullptr);
  EXPECT_EQ(take(2, 1), nullptr);
  EXPECT_NE(take(2, 1), nullptr);
  EXPECT_EQ(node.memory.use(2).failures, 3u);
}

TEST(HostMemory, notes_what_is_given_back_wrongly_and_goes_on) {
  Node node;
  auto scope = host::enter(node);
  int local = 0;
  void *block = take(2, 32);
  EXPECT_EQ(ZEL_MemFree(54, nullptr), u32{host::code_null});
  EXPECT_EQ(ZEL_MemFree(53, block), u32{host::code_refused});
  const Handle table = ZEL_HASH_Create_Table(1, 0);
  ASSERT_EQ(ZEL_HASH_Add_Node(table, block, 0, 0), 0u);
  EXPECT_EQ(ZEL_Free(block), u32{host::code_refused});
  ASSERT_EQ(ZEL_HASH_Delete_Node(table, block, 0), 0u);
  EXPECT_EQ(ZEL_MemFree(54, block), 0u);
  EXPECT_EQ(ZEL_MemFree(54, block), u32{host::code_twice});
  EXPECT_EQ(ZEL_Free(&local), u32{host::code_foreign});
  EXPECT_EQ(kinds(node),
            (std::vector<MisuseKind>{MisuseKind::wrong_module, MisuseKind::freed_while_linked,
                                     MisuseKind::double_free, MisuseKind::foreign_free}));
  EXPECT_EQ(node.misuses[2].text, "block#1");
}

TEST(HostMemory, sees_a_write_past_the_end) {
  if (!host::Memory::guarded()) {
    GTEST_SKIP() << "the address sanitizer stands in for the guard bytes";
  }
  Node node;
  auto scope = host::enter(node);
  volatile u8 *block = static_cast<u8 *>(take(2, 5));
  u8 *before = static_cast<u8 *>(take(2, 5));
  EXPECT_EQ(node.memory.check(), 0u);
  block[5] = 0;
  EXPECT_EQ(node.memory.check(), 1u);
  EXPECT_EQ(node.memory.check(), 1u);
  *(before - 1) = 0;
  EXPECT_EQ(ZEL_Free(before), 0u);
  EXPECT_EQ(kinds(node),
            (std::vector<MisuseKind>{MisuseKind::guard_damaged, MisuseKind::guard_damaged}));
}

struct HashNode {
  PmWord links[3];
  u32 key;
};

u32 compare_key(const void *key, const void *node) {
  u32 wanted;
  std::memcpy(&wanted, key, sizeof wanted);
  return wanted == static_cast<const HashNode *>(node)->key ? 0 : 1;
}

TEST(HostHash, finds_and_removes_nodes_of_one_bucket_in_any_order) {
  Node node;
  auto scope = host::enter(node);
  const Handle table = ZEL_HASH_Create_Table(4, 0);
  HashNode nodes[5] = {};
  for (u32 i = 0; i < 5; ++i) {
    nodes[i].key = i;
    ASSERT_EQ(ZEL_HASH_Add_Node(table, &nodes[i], 2, 0), 0u);
  }
  const u32 order[] = {2, 0, 4, 3, 1};  // middle, tail, head, and the rest
  for (std::size_t gone = 0; gone < 5; ++gone) {
    for (std::size_t i = 0; i < 5; ++i) {
      const u32 key = order[i];
      EXPECT_EQ(ZEL_HASH_Find_Node(table, 2, &key, compare_key), i < gone ? nullptr : &nodes[key]);
      EXPECT_EQ(ZEL_HASH_Find_Node(table, 1, &key, compare_key), nullptr);
    }
    EXPECT_EQ(ZEL_HASH_Delete_Node(table, &nodes[order[gone]], 2), 0u);
    EXPECT_EQ(node.hash.nodes(table), 4 - gone);
    EXPECT_EQ(node.hash.bucket(table, 2).size(), 4 - gone);
  }
  EXPECT_TRUE(node.misuses.empty());
}

TEST(HostHash, refuses_what_does_not_fit) {
  Node node;
  auto scope = host::enter(node);
  const Handle table = ZEL_HASH_Create_Table(4, 0);
  const Handle other = ZEL_HASH_Create_Table(4, 0);
  HashNode first{};
  HashNode second{};
  const struct {
    u32 answer;
    u32 code;
  } cases[] = {
      {ZEL_HASH_Create_Table(0, 0), 0},
      {ZEL_HASH_Add_Node(table, nullptr, 0, 0), host::code_null},
      {ZEL_HASH_Add_Node(9, &first, 0, 0), host::code_unknown},
      {ZEL_HASH_Add_Node(table, &first, 4, 0), host::code_range},
      {ZEL_HASH_Add_Node(table, &first, 3, 0), 0},
      {ZEL_HASH_Add_Node(table, &first, 3, 0), host::code_exists},
      {ZEL_HASH_Delete_Node(table, &first, 2), host::code_not_linked},
      {ZEL_HASH_Delete_Node(other, &first, 3), host::code_not_linked},
      {ZEL_HASH_Delete_Node(table, &second, 3), host::code_not_linked},
      {ZEL_HASH_Delete_Node(table, &first, 3), 0},
      {ZEL_HASH_Delete_Node(table, &first, 3), host::code_not_linked},
  };
  for (const auto &entry : cases) {
    EXPECT_EQ(entry.answer, entry.code) << (&entry - cases);
  }
  EXPECT_EQ(node.misuses.size(), 7u);
}

TEST(HostWatchdog, barks_for_starving_walks_only) {
  Node node;
  node.watchdog.limit_calls = 100;
  node.watchdog.limit_ticks = 50;
  const auto walk = [&](int steps, int stride) {
    auto scope = host::enter(node);
    for (int i = 1; i <= steps; ++i) {
      DEV_LibIfFrameExist(0);
      if (stride != 0 && i % stride == 0) {
        ZEL_ClearWatchDog();
      }
    }
    const auto barks = node.watchdog.barks();
    node.watchdog.clear();
    return barks;
  };
  EXPECT_EQ(walk(99, 0), 0u);
  EXPECT_EQ(walk(100, 0), 1u);
  EXPECT_EQ(walk(250, 0), 2u);
  EXPECT_EQ(walk(1'000, 99), 0u);
  node.faults.delay(Fn::DEV_LibIfFrameExist, 10);
  EXPECT_EQ(walk(20, 4), 0u);
  EXPECT_EQ(walk(20, 5), 4u);  // fed too late
  EXPECT_EQ(walk(20, 0), 3u);
}

TEST(HostWatchdog, another_tasks_turn_does_not_feed_the_outer_one) {
  Node node;
  node.watchdog.limit_calls = 10;
  auto scope = host::enter(node);
  for (int i = 0; i < 9; ++i) {
    ZEL_GetTick();
  }
  {
    auto inner = host::enter(node);
    for (int i = 0; i < 9; ++i) {
      ZEL_GetTick();
    }
  }
  EXPECT_EQ(node.watchdog.barks(), 0u);
  ZEL_GetTick();
  ASSERT_EQ(node.watchdog.barks(), 1u);
  EXPECT_EQ(node.watchdog.list()[0].fn, Fn::ZEL_GetTick);
  EXPECT_FALSE(node.watchdog.list()[0].by_ticks);
}

TEST(HostErrors, keeps_the_last_records) {
  Node node;
  node.errors.set_capacity(3);
  auto scope = host::enter(node);
  node.clock.advance(5);
  for (u32 i = 1; i <= 5; ++i) {
    ERR_InnerRecErr("file", 100 + i, i);
  }
  EXPECT_EQ(node.errors.total(), 5u);
  EXPECT_EQ(node.errors.values_since(), (std::vector<u32>{3, 4, 5}));
  const auto last = node.errors.since(4);
  ASSERT_EQ(last.size(), 1u);
  EXPECT_EQ(last[0].file, "file");
  EXPECT_EQ(last[0].line, 105u);
  EXPECT_EQ(last[0].tick, 5u);
}

TEST(HostDebug, captures_lines_with_their_print_position) {
  Node node;
  auto scope = host::enter(node);
  g_stDbgPrintInfo = {"source", 12};
  DBG_InnerPrintInfo(0x7C, "\r\n %u", 5u);
  xPrintf(54, "%s", std::string(2'000, 'x').c_str());
  DBG_PrintHelpInfo(54, 1, 2, 3, 4, "help", 5, 6);
  ASSERT_EQ(node.debug.lines().size(), 3u);
  EXPECT_EQ(node.debug.lines()[0].text, "\r\n 5");
  EXPECT_EQ(node.debug.lines()[0].file, "source");
  EXPECT_EQ(node.debug.lines()[0].selector, 0x7Cu);
  EXPECT_EQ(node.debug.lines()[1].text.size(), 2'000u);
  EXPECT_EQ(node.debug.lines()[1].file, "");
  EXPECT_EQ(node.debug.lines()[2].numbers, (std::vector<u32>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(node.debug.text({Fn::DBG_InnerPrintInfo, Fn::DBG_PrintHelpInfo}), "\r\n 5help");
  node.debug.set_capacity(1);
  DBG_PrintHelpInfoLevel0(54, 7, "last");
  EXPECT_EQ(node.debug.since(0).back(), "last");
}

TEST(HostBounded, copies_keep_to_their_contract) {
  char room[9];
  const char source[] = "abcdefgh";
  const auto none = static_cast<const char *>(nullptr);
  // What the first eight bytes hold afterwards; before, all are '-'.
  const struct {
    const char *what;
    std::function<int()> call;
    bool fails;
    std::string after;
  } cases[] = {
      {"set", [&] { return memset_s(room, 8, 'x', 3); }, false, "xxx-----"},
      {"set all", [&] { return memset_s(room, 8, 'x', 8); }, false, "xxxxxxxx"},
      {"set none", [&] { return memset_s(room, 8, 'x', 0); }, false, "--------"},
      {"set too much", [&] { return memset_s(room, 8, 'x', 9); }, true, "--------"},
      {"set no room", [&] { return memset_s(room, 0, 'x', 0); }, true, "--------"},
      {"set null", [&] { return memset_s(nullptr, 8, 'x', 1); }, true, "--------"},
      {"copy", [&] { return memcpy_s(room, 8, source, 3); }, false, "abc-----"},
      {"copy all", [&] { return memcpy_s(room, 8, source, 8); }, false, "abcdefgh"},
      {"copy too much", [&] { return memcpy_s(room, 2, source, 3); }, true, "--------"},
      {"copy no room", [&] { return memcpy_s(room, 0, source, 0); }, true, "--------"},
      {"copy from null", [&] { return memcpy_s(room, 8, none, 0); }, true, "--------"},
      {"copy to null", [&] { return memcpy_s(nullptr, 8, source, 1); }, true, "--------"},
      {"copy overlap", [&] { return memcpy_s(room + 1, 4, room, 2); }, true, "--------"},
      {"copy beside", [&] { return memcpy_s(room + 2, 4, room, 2); }, false, "--------"},
      {"copy huge", [&] { return memcpy_s(room, SIZE_MAX, source, 1); }, true, "--------"},
      {"text", [&] { return strncpy_s(room, 8, "abc", 5); }, false, std::string("abc\0----", 8)},
      {"text part", [&] { return strncpy_s(room, 8, source, 2); }, false,
       std::string("ab\0-----", 8)},
      {"text fits", [&] { return strncpy_s(room, 3, "ab", 9); }, false,
       std::string("ab\0-----", 8)},
      {"text too long", [&] { return strncpy_s(room, 3, "abc", 9); }, true,
       std::string("\0-------", 8)},
      {"text no room", [&] { return strncpy_s(room, 0, "a", 1); }, true, "--------"},
      {"text null", [&] { return strncpy_s(room, 8, none, 1); }, true, std::string("\0-------", 8)},
      {"print", [&] { return snprintf_truncated_s(room, 8, "%d", 42) == 2 ? 0 : 1; }, false,
       std::string("42\0-----", 8)},
      {"print cut", [&] { return snprintf_truncated_s(room, 3, "%d", 4242) == 2 ? 0 : 1; }, false,
       std::string("42\0-----", 8)},
      {"print exact", [&] { return snprintf_truncated_s(room, 3, "%d", 42) == 2 ? 0 : 1; }, false,
       std::string("42\0-----", 8)},
      {"print no room", [&] { return snprintf_truncated_s(room, 0, "%d", 1) + 1; }, false,
       "--------"},
      {"print null", [&] { return snprintf_truncated_s(nullptr, 8, "%d", 1) + 1; }, false,
       "--------"},
  };
  for (const auto &entry : cases) {
    std::memset(room, '-', sizeof room);
    EXPECT_EQ(entry.call() != 0, entry.fails) << entry.what;
    EXPECT_EQ(std::string(room, 8), entry.after) << entry.what;
  }
}

}  // namespace
