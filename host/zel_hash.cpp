// Hash tables.
#include <algorithm>
#include <cstring>

#include "host/call.hpp"

namespace host {

namespace {

constexpr PmWord mark_base = 0x5A170000;  // + handle: what a linked node carries as its mark
constexpr u32 most_buckets = 1'000'000;
constexpr std::size_t fetched_ahead = 8;  // nodes

std::string describe(Handle table, u32 bucket) {
  return "table " + std::to_string(table) + ", bucket " + std::to_string(bucket);
}

// Nodes may be packed records at any address: their words are copied.
template <class Links>
Links load(const void *node) {
  Links links;
  std::memcpy(&links, node, sizeof links);
  return links;
}

template <class Links>
void store(void *node, const Links &links) {
  std::memcpy(node, &links, sizeof links);
}

}  // namespace

HashTables::Table *HashTables::table(Handle handle) {
  return handle == 0 || handle > tables_.size() ? nullptr : &tables_[handle - 1];
}

const HashTables::Table *HashTables::table(Handle handle) const {
  return handle == 0 || handle > tables_.size() ? nullptr : &tables_[handle - 1];
}

std::size_t HashTables::buckets(Handle handle) const {
  const Table *found = table(handle);
  return found == nullptr ? 0 : found->buckets.size();
}

std::size_t HashTables::nodes(Handle handle) const {
  const Table *found = table(handle);
  return found == nullptr ? 0 : found->nodes;
}

std::vector<const void *> HashTables::bucket(Handle handle, u32 number) const {
  const Table *found = table(handle);
  if (found == nullptr || number >= found->buckets.size()) {
    return {};
  }
  const Bucket &nodes = found->buckets[number];
  return {nodes.rbegin(), nodes.rend()};
}

Handle HashTables::create(u32 bucket_count) {
  if (bucket_count == 0 || bucket_count > most_buckets) {
    return 0;
  }
  tables_.push_back({std::vector<Bucket>(bucket_count), 0});
  return static_cast<Handle>(tables_.size());
}

u32 HashTables::add(Handle handle, void *node, u32 number) {
  Table *found = table(handle);
  if (node == nullptr) {
    return code_null;
  }
  if (found == nullptr) {
    node_.misuse(MisuseKind::bad_handle, Fn::ZEL_HASH_Add_Node, describe(handle, number));
    return code_unknown;
  }
  if (number >= found->buckets.size()) {
    node_.misuse(MisuseKind::bad_bucket, Fn::ZEL_HASH_Add_Node, describe(handle, number));
    return code_range;
  }
  if (linked(node, sizeof(Links))) {
    node_.misuse(MisuseKind::linked_twice, Fn::ZEL_HASH_Add_Node, describe(handle, number));
    return code_exists;
  }
  found->buckets[number].push_back(node);
  store(node, Links{number, 0, mark_base + handle});
  ++found->nodes;
  return 0;
}

void *HashTables::find(Handle handle, u32 number, const void *key,
                       u32 (*compare)(const void *, const void *)) {
  const Table *found = table(handle);
  if (found == nullptr || number >= found->buckets.size() || compare == nullptr) {
    node_.misuse(found == nullptr ? MisuseKind::bad_handle : MisuseKind::bad_bucket,
                 Fn::ZEL_HASH_Find_Node, describe(handle, number));
    return nullptr;
  }
  const Bucket &nodes = found->buckets[number];
  for (std::size_t left = nodes.size(); left != 0; --left) {
    if (left > fetched_ahead) {
      __builtin_prefetch(static_cast<const u8 *>(nodes[left - 1 - fetched_ahead]) + sizeof(Links));
    }
    void *node = nodes[left - 1];
    if (compare(key, node) == 0) {
      return node;
    }
  }
  return nullptr;
}

u32 HashTables::remove(Handle handle, void *node, u32 number) {
  Table *found = table(handle);
  if (node == nullptr) {
    return code_null;
  }
  if (found == nullptr) {
    node_.misuse(MisuseKind::bad_handle, Fn::ZEL_HASH_Delete_Node, describe(handle, number));
    return code_unknown;
  }
  const Links links = load<Links>(node);
  const bool in_place =
      number < found->buckets.size() && links.mark == mark_base + handle && links.bucket == number;
  Bucket *nodes = in_place ? &found->buckets[number] : nullptr;
  const auto place =
      in_place ? std::find(nodes->rbegin(), nodes->rend(), node) : Bucket::reverse_iterator{};
  if (!in_place || place == nodes->rend()) {
    node_.misuse(MisuseKind::not_linked, Fn::ZEL_HASH_Delete_Node, describe(handle, number));
    return code_not_linked;
  }
  nodes->erase(std::next(place).base());
  store(node, Links{0, 0, 0});
  --found->nodes;
  return 0;
}

bool HashTables::linked(const void *block, std::size_t size) const {
  if (size < sizeof(Links)) {
    return false;
  }
  const PmWord mark = load<Links>(block).mark;
  return mark > mark_base && mark <= mark_base + tables_.size();
}

}  // namespace host

using namespace host;

Handle ZEL_HASH_Create_Table(u32 ulBuckets, u32 ulReserved) {
  return call<Fn::ZEL_HASH_Create_Table>([&](Node &node) { return node.hash.create(ulBuckets); },
                                         ulBuckets, ulReserved);
}

u32 ZEL_HASH_Add_Node(Handle ulTable, void *pNode, u32 ulBucket, u32 ulReserved) {
  return call<Fn::ZEL_HASH_Add_Node>(
      [&](Node &node) { return node.hash.add(ulTable, pNode, ulBucket); }, ulTable, pNode, ulBucket,
      ulReserved);
}

void *ZEL_HASH_Find_Node(Handle ulTable, u32 ulBucket, const void *pKey,
                         u32 (*pfnCompare)(const void *pKey, const void *pNode)) {
  return call<Fn::ZEL_HASH_Find_Node>(
      [&](Node &node) { return node.hash.find(ulTable, ulBucket, pKey, pfnCompare); }, ulTable,
      ulBucket, pfnCompare);
}

u32 ZEL_HASH_Delete_Node(Handle ulTable, void *pNode, u32 ulBucket) {
  return call<Fn::ZEL_HASH_Delete_Node>(
      [&](Node &node) { return node.hash.remove(ulTable, pNode, ulBucket); }, ulTable, pNode,
      ulBucket);
}
