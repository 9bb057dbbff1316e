// Memory: three partitions with accounting, exhaustion on demand and detection of misuse.
//
// Each block is a block of the process's own heap, so that the address sanitizer sees accesses past
// its end; without the sanitizer guard bytes stand before and behind it. A fresh block is filled
// with 0xA5, so that a use before clearing shows. Giving a block back wrongly is answered with a
// code and noted in Node::misuses; nothing happens to the heap then.
#ifndef HOST_MEMORY_HPP
#define HOST_MEMORY_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/base.h"

namespace host {

struct Node;

enum Partition : u32 { partition_static = 1, partition_block = 2, partition_dynamic = 3 };

struct PartitionUse {
  static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

  std::size_t blocks = 0;  // live now
  std::size_t bytes = 0;
  std::size_t peak_bytes = 0;
  std::uint64_t allocations = 0;  // ever made
  std::uint64_t failures = 0;     // refused: limit, fault or the process's heap
  std::size_t limit_blocks = unlimited;
  std::size_t limit_bytes = unlimited;
  std::uint64_t fail_at = 0;  // this request of the partition fails (requests = all ever asked)
  std::uint64_t requests = 0;
};

struct Block {
  u32 number = 0;  // 1, 2, .. in order of allocation
  u32 module = 0;
  u32 partition = 0;
  u32 size = 0;
  u32 line = 0;
  std::string file;
  const void *address = nullptr;
};

class Memory {
 public:
  explicit Memory(Node &node) : node_(node) {}
  ~Memory();
  Memory(const Memory &) = delete;
  Memory &operator=(const Memory &) = delete;

  // Use of the partition of that number; an unknown one gives an empty record.
  const PartitionUse &use(u32 number) const;
  static const char *partition_name(u32 number);

  // Nothing beyond these is handed out; unlimited lifts a limit.
  void limit_bytes(u32 number, std::size_t bytes);
  void limit_blocks(u32 number, std::size_t blocks);
  // The n-th request of the partition from now fails.
  void fail_nth(u32 number, u32 n);

  // Blocks that are live, in order of allocation; the second form only those after `mark`.
  std::vector<Block> live() const { return live_since(0); }
  std::vector<Block> live_since(u32 mark) const;
  u32 mark() const { return last_number_; }
  // The live block that starts at that address; null when none does.
  const Block *find(const void *address) const;

  // Looks at the guard bytes of every live block; damage is noted in Node::misuses, once per block.
  // Returns the number of damaged blocks. 0 when the sanitizer guards instead.
  std::size_t check();
  static bool guarded();

  // For the host functions themselves.
  void *allocate(u32 module, u32 number, u32 size, const char *file, u32 line);
  u32 release(void *address, const u32 *module);

 private:
  struct Entry {
    Block block;
    bool damaged = false;
  };
  PartitionUse *partition(u32 number);
  bool intact(const Entry &entry) const;
  bool refuses(PartitionUse &use, u32 size);

  Node &node_;
  std::array<PartitionUse, 3> partitions_{};
  std::unordered_map<const void *, Entry> live_;
  std::unordered_map<const void *, u32> released_;  // address -> number of the last block there
  u32 last_number_ = 0;
};

}  // namespace host

#endif
