// Memory partitions.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "host/call.hpp"

#if defined(__SANITIZE_ADDRESS__)
#define HOST_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HOST_SANITIZED 1
#endif
#endif

namespace host {

namespace {

#if defined(HOST_SANITIZED)
constexpr std::size_t guard_size = 0;
#else
constexpr std::size_t guard_size = 16;  // keeps the alignment of the heap
#endif
constexpr u8 guard_byte = 0xFD;
constexpr u8 fresh_byte = 0xA5;
constexpr u8 dead_byte = 0xDD;
constexpr std::size_t most_released = 65'536;

bool all_are(const u8 *bytes, std::size_t size, u8 value) {
  return std::all_of(bytes, bytes + size, [&](u8 byte) { return byte == value; });
}

std::string describe(const Block &block) {
  return "block#" + std::to_string(block.number) + " of " + std::to_string(block.size) +
         " bytes (" + block.file + ":" + std::to_string(block.line) + ")";
}

u8 *heap_start(const void *address) {
  return static_cast<u8 *>(const_cast<void *>(address)) - guard_size;
}

}  // namespace

Memory::~Memory() {
  for (const auto &[address, entry] : live_) {
    std::free(heap_start(address));
  }
}

PartitionUse *Memory::partition(u32 number) {
  return number >= partition_static && number <= partition_dynamic
             ? &partitions_[number - partition_static]
             : nullptr;
}

const PartitionUse &Memory::use(u32 number) const {
  static const PartitionUse none;
  const PartitionUse *found = const_cast<Memory *>(this)->partition(number);
  return found == nullptr ? none : *found;
}

const char *Memory::partition_name(u32 number) {
  static const char *const names[] = {"static", "block", "dynamic"};
  return number >= partition_static && number <= partition_dynamic
             ? names[number - partition_static]
             : "unknown";
}

void Memory::limit_bytes(u32 number, std::size_t bytes) {
  if (PartitionUse *use = partition(number)) {
    use->limit_bytes = bytes;
  }
}

void Memory::limit_blocks(u32 number, std::size_t blocks) {
  if (PartitionUse *use = partition(number)) {
    use->limit_blocks = blocks;
  }
}

void Memory::fail_nth(u32 number, u32 n) {
  if (PartitionUse *use = partition(number)) {
    use->fail_at = use->requests + n;
  }
}

std::vector<Block> Memory::live_since(u32 mark) const {
  std::vector<Block> blocks;
  for (const auto &[address, entry] : live_) {
    if (entry.block.number > mark) {
      blocks.push_back(entry.block);
    }
  }
  std::sort(blocks.begin(), blocks.end(),
            [](const Block &a, const Block &b) { return a.number < b.number; });
  return blocks;
}

const Block *Memory::find(const void *address) const {
  const auto found = live_.find(address);
  return found == live_.end() ? nullptr : &found->second.block;
}

bool Memory::guarded() {
  return guard_size != 0;
}

bool Memory::intact(const Entry &entry) const {
  const u8 *start = heap_start(entry.block.address);
  return all_are(start, guard_size, guard_byte) &&
         all_are(start + guard_size + entry.block.size, guard_size, guard_byte);
}

std::size_t Memory::check() {
  std::size_t damaged = 0;
  for (const Block &block : live()) {
    Entry &entry = live_.at(block.address);
    if (!entry.damaged && !intact(entry)) {
      entry.damaged = true;
      node_.misuse(MisuseKind::guard_damaged, Fn::ZEL_MemAlloc_F, describe(block));
    }
    damaged += entry.damaged ? 1 : 0;
  }
  return damaged;
}

bool Memory::refuses(PartitionUse &use, u32 size) {
  ++use.requests;
  return size == 0 || use.requests == use.fail_at || use.blocks >= use.limit_blocks ||
         use.bytes > use.limit_bytes || size > use.limit_bytes - use.bytes;
}

void *Memory::allocate(u32 module, u32 number, u32 size, const char *file, u32 line) {
  PartitionUse *use = partition(number);
  if (use == nullptr) {
    return nullptr;
  }
  auto *start =
      refuses(*use, size) ? nullptr : static_cast<u8 *>(std::malloc(size + 2 * guard_size));
  if (start == nullptr) {
    ++use->failures;
    return nullptr;
  }
  u8 *address = start + guard_size;
  std::memset(start, guard_byte, guard_size);
  std::memset(address, fresh_byte, size);
  std::memset(address + size, guard_byte, guard_size);
  try {
    Entry entry;
    entry.block = {last_number_ + 1, module, number, size, line, file == nullptr ? "" : file,
                   address};
    live_.emplace(address, std::move(entry));
  } catch (...) {
    std::free(start);
    throw;
  }
  ++last_number_;
  released_.erase(address);
  ++use->allocations;
  ++use->blocks;
  use->bytes += size;
  use->peak_bytes = std::max(use->peak_bytes, use->bytes);
  return address;
}

u32 Memory::release(void *address, const u32 *module) {
  const Fn fn = module == nullptr ? Fn::ZEL_Free : Fn::ZEL_MemFree;
  if (address == nullptr) {
    return code_null;
  }
  const auto found = live_.find(address);
  if (found == live_.end()) {
    const auto before = released_.find(address);
    if (before != released_.end()) {
      node_.misuse(MisuseKind::double_free, fn, "block#" + std::to_string(before->second));
      return code_twice;
    }
    node_.misuse(MisuseKind::foreign_free, fn, "an address that the host did not hand out");
    return code_foreign;
  }
  const Block &block = found->second.block;
  if (module != nullptr && *module != block.module) {
    node_.misuse(MisuseKind::wrong_module, fn,
                 describe(block) + " of module " + std::to_string(block.module) +
                     ", given back for module " + std::to_string(*module));
    return code_refused;
  }
  if (node_.hash.linked(address, block.size)) {
    node_.misuse(MisuseKind::freed_while_linked, fn, describe(block));
    return code_refused;
  }
  if (!found->second.damaged && !intact(found->second)) {
    node_.misuse(MisuseKind::guard_damaged, fn, describe(block));
  }
  if (released_.size() >= most_released) {
    released_.clear();
  }
  released_[address] = block.number;
  PartitionUse *use = partition(block.partition);
  --use->blocks;
  use->bytes -= block.size;
  std::memset(address, dead_byte, block.size);
  live_.erase(found);
  std::free(heap_start(address));
  return 0;
}

}  // namespace host

using namespace host;

u32 ZEL_kvtStaticMemPtGet(void) {
  return call<Fn::ZEL_kvtStaticMemPtGet>([](Node &) -> u32 { return partition_static; });
}

u32 ZEL_kvtBlockMemPtGet(void) {
  return call<Fn::ZEL_kvtBlockMemPtGet>([](Node &) -> u32 { return partition_block; });
}

u32 ZEL_kvtDynamicMemPtGet(void) {
  return call<Fn::ZEL_kvtDynamicMemPtGet>([](Node &) -> u32 { return partition_dynamic; });
}

void *ZEL_MemAlloc_F(u32 ulModule, u32 ulPartition, u32 ulSize, const char *pcFile, u32 ulLine) {
  return call<Fn::ZEL_MemAlloc_F>(
      [&](Node &node) {
        return node.memory.allocate(ulModule, ulPartition, ulSize, pcFile, ulLine);
      },
      ulModule, ulPartition, ulSize, pcFile, ulLine);
}

u32 ZEL_MemFree(u32 ulModule, void *pMem) {
  return call<Fn::ZEL_MemFree>([&](Node &node) { return node.memory.release(pMem, &ulModule); },
                               ulModule, pMem);
}

u32 ZEL_Free(void *pMem) {
  return call<Fn::ZEL_Free>([&](Node &node) { return node.memory.release(pMem, nullptr); }, pMem);
}
