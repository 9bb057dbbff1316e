// Runtime layer: virtual time, the task watchdog and hash tables.
#ifndef HOST_RUNTIME_HPP
#define HOST_RUNTIME_HPP

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct Node;

// Virtual time in ticks. It moves only by advance(), by the library's task delays and by delays set
// as faults; what falls due is done by Node::run(), never from inside advance().
class Clock {
 public:
  u32 now() const { return now_; }
  void advance(u32 ticks) {
    now_ += ticks;
    elapsed_ += ticks;
  }
  void set(u32 tick) { now_ = tick; }                 // to try the wrap of the tick counter
  std::uint64_t elapsed() const { return elapsed_; }  // never wraps, not moved by set()

 private:
  u32 now_ = 0;
  std::uint64_t elapsed_ = 0;
};

struct Bark {
  Fn fn{};  // host call during which the budget ran out
  u32 cid = 0;
  u32 tick = 0;
  bool by_ticks = false;  // the task ran too long in ticks; otherwise it made too many calls
};

// Barks when a task runs too long without feeding it. A task's turn begins when the host hands it
// control (a scope is entered, a record, message or phase is delivered); ZEL_ClearWatchDog,
// ZEL_TaskRunClearDog and ZEL_TaskDelay feed. Two budgets, whichever is used up first:
//  - calls: every other host call is one unit of work. The longest stretch that a correct walk
//    makes between two feeds is a chassis of empty slots (32 frames x 256 slots x about 3 calls,
//    25,000); 65,536 leaves room for it and still shows a walk over all PTPs that never feeds.
//  - ticks: a booked function is slow from 100 ticks on and eight may pass between two feeds;
//    3,000 leaves room for that.
// After a bark the count starts anew, so a starving loop barks again and again.
class Watchdog {
 public:
  u32 limit_calls = 65'536;
  u32 limit_ticks = 3'000;

  std::uint64_t barks() const { return barks_; }
  // The first barks, at most 64.
  const std::vector<Bark> &list() const { return list_; }
  std::uint64_t feeds() const { return feeds_; }
  void clear() {
    barks_ = 0;
    list_.clear();
  }

  // For the host functions themselves.
  bool late(std::uint64_t now) const { return now - turn_.fed_at >= limit_ticks; }
  bool spend(std::uint64_t now) { return ++turn_.calls >= limit_calls || late(now); }
  void bark(Fn fn, u32 cid, u32 tick, std::uint64_t now);
  void feed(std::uint64_t now) {
    ++feeds_;
    turn_ = {0, now};
  }
  // A task's use of its budgets since it was last fed; kept aside while another task has its turn.
  struct Turn {
    u32 calls = 0;
    std::uint64_t fed_at = 0;
  };
  Turn begin_turn(std::uint64_t now) { return std::exchange(turn_, {0, now}); }
  void end_turn(const Turn &outer) { turn_ = outer; }

 private:
  Turn turn_;
  std::uint64_t barks_ = 0;
  std::uint64_t feeds_ = 0;
  std::vector<Bark> list_;
};

// Hash tables. A node's first three pointer-sized words are the table's: bucket, one unused, and a
// mark that tells a linked node from any other; they are cleared when the node leaves. A bucket is
// searched from its newest node to its oldest, and what the caller compares with is called for each
// until it matches. Misuse is answered with a code and noted in Node::misuses.
class HashTables {
 public:
  explicit HashTables(Node &node) : node_(node) {}

  std::size_t tables() const { return tables_.size(); }
  std::size_t buckets(Handle handle) const;
  std::size_t nodes(Handle handle) const;  // linked nodes
  // Nodes of the bucket of that number, the newest first.
  std::vector<const void *> bucket(Handle handle, u32 number) const;

  // For the host functions themselves.
  Handle create(u32 bucket_count);
  u32 add(Handle handle, void *node, u32 number);
  void *find(Handle handle, u32 number, const void *key,
             u32 (*compare)(const void *, const void *));
  u32 remove(Handle handle, void *node, u32 number);
  // The block of that size is linked in a table.
  bool linked(const void *block, std::size_t size) const;

 private:
  struct Links {
    PmWord bucket;
    PmWord unused;
    PmWord mark;
  };
  // The nodes of a bucket, the newest last. Beside the nodes, not in them: so the nodes ahead can
  // be fetched before their turn. A bucket of 178 nodes in cold memory is searched fifteen times as
  // fast as by pointers from node to node.
  using Bucket = std::vector<void *>;
  struct Table {
    std::vector<Bucket> buckets;
    std::size_t nodes = 0;
  };
  Table *table(Handle handle);
  const Table *table(Handle handle) const;

  Node &node_;
  std::vector<Table> tables_;
};

}  // namespace host

#endif
