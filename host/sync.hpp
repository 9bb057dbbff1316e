// Active/standby synchronisation of instances, of one node or of two.
//
// Each instance registers its modules; a unit marked as changed is kept in the instance's bit set.
// run() extracts every marked unit on the active side, lowest unit first, and restores it on the
// standby side. A unit whose extract or restore fails stays marked. Marks made while no standby is
// attached, or by a standby, are kept, so a later attach or failover ships them.
#ifndef HOST_SYNC_HPP
#define HOST_SYNC_HPP

#include <cstdint>
#include <map>
#include <vector>

#include "host/distribution.hpp"

namespace host {

struct SyncBlock {
  u32 unit_size = 0;
  u32 unit_count = 0;
  SynExtractFunc extract = nullptr;
  SynRestoreFunc restore = nullptr;
  std::vector<bool> marked;
  std::size_t marks = 0;
};

struct SyncModule {
  bool mode = false;  // the registration of the data mode was made
  void (*reset)() = nullptr;
  std::map<u32, SyncBlock> blocks;
};

enum class CatchUp {
  full,   // every unit is marked first, and the module's reset function is called
  marked  // only what was missed while detached
};

struct SyncDifference {
  u32 module = 0;
  u32 block = 0;
  u32 unit = 0;
};

class Synchronisation {
 public:
  // Makes a pair: the roles of both instances are set. The standby may belong to another node.
  void pair(Instance &active, Instance &standby);
  void detach() { attached_ = false; }  // the standby misses units from now on
  bool attach(CatchUp catch_up = CatchUp::marked);
  bool attached() const { return attached_; }
  // The roles change sides; marks stay with their instances.
  bool failover();
  Instance *active() const { return active_; }
  Instance *standby() const { return standby_; }

  // Ships what is marked; returns the number of units shipped.
  std::size_t run(std::size_t max_units = Distribution::all);
  // Units that wait on an instance.
  std::size_t marked(const Instance &instance) const;
  const std::map<u32, SyncModule> *modules(const Instance &instance) const;

  // Extracts every unit on both sides and compares the bytes; each side is made active for its own
  // extraction. Units that fail on either side count as different.
  std::vector<SyncDifference> compare();
  // One unit's bytes as the instance extracts them; empty when it fails.
  Bytes extract(Instance &instance, u32 module, u32 block, u32 unit, u32 *code = nullptr);

  std::uint64_t shipped() const { return shipped_; }
  std::uint64_t extract_failures() const { return extract_failures_; }
  std::uint64_t restore_failures() const { return restore_failures_; }

  // For the host functions themselves.
  u32 register_module(Instance &instance, u32 module);
  u32 register_block(Instance &instance, u32 module, u32 block, SyncBlock info);
  u32 register_mode(Instance &instance, u32 module);
  u32 register_reset(Instance &instance, u32 module, void (*reset)());
  u32 mark(Instance &instance, u32 module, u32 block, u32 unit);
  void forget(Instance &instance);

 private:
  using Modules = std::map<u32, SyncModule>;
  Modules *registered(const Instance &instance);
  bool ship(u32 module, u32 block, u32 unit, const SyncBlock &from);

  Instance *active_ = nullptr;
  Instance *standby_ = nullptr;
  bool attached_ = false;
  std::map<const Instance *, Modules> modules_;  // of this node's instances; never walked
  std::uint64_t shipped_ = 0;
  std::uint64_t extract_failures_ = 0;
  std::uint64_t restore_failures_ = 0;
};

}  // namespace host

#endif
