// Active/standby synchronisation.
#include <algorithm>

#include "host/call.hpp"

namespace host {

void Synchronisation::pair(Instance &active, Instance &standby) {
  active_ = &active;
  standby_ = &standby;
  active.active = true;
  standby.active = false;
  attached_ = true;
}

bool Synchronisation::attach(CatchUp catch_up) {
  if (active_ == nullptr || standby_ == nullptr) {
    return false;
  }
  Modules *modules = registered(*active_);
  if (catch_up == CatchUp::full && modules != nullptr) {
    for (auto &[number, module] : *modules) {
      if (module.reset != nullptr) {
        Scope scope(*active_);
        module.reset();
      }
      for (auto &[block_number, block] : module.blocks) {
        block.marked.assign(block.unit_count, true);
        block.marks = block.unit_count;
      }
    }
  }
  attached_ = true;
  return true;
}

bool Synchronisation::failover() {
  if (active_ == nullptr || standby_ == nullptr) {
    return false;
  }
  std::swap(active_, standby_);
  active_->active = true;
  standby_->active = false;
  return true;
}

std::size_t Synchronisation::run(std::size_t max_units) {
  Modules *modules = active_ == nullptr ? nullptr : registered(*active_);
  std::size_t count = 0;
  if (!attached_ || standby_ == nullptr || modules == nullptr) {
    return 0;
  }
  for (auto &[number, module] : *modules) {
    for (auto &[block_number, block] : module.blocks) {
      for (u32 unit = 0; unit < block.unit_count && block.marks != 0 && count < max_units; ++unit) {
        if (!block.marked[unit]) {
          continue;
        }
        // Unmarked before it is read: a change during the transfer marks it again.
        block.marked[unit] = false;
        --block.marks;
        if (ship(number, block_number, unit, block)) {
          ++count;
        } else if (!block.marked[unit]) {
          block.marked[unit] = true;
          ++block.marks;
        }
      }
    }
  }
  return count;
}

bool Synchronisation::ship(u32 module, u32 block, u32 unit, const SyncBlock &from) {
  u32 code = 0;
  Bytes bytes(from.unit_size);
  u32 length = 0;
  {
    Scope scope(*active_);
    code = from.extract(unit, bytes.data(), from.unit_size, &length);
  }
  if (code != 0 || length > from.unit_size) {
    ++extract_failures_;
    return false;
  }
  bytes.resize(length);
  Modules *modules = registered(*standby_);
  const auto found = modules == nullptr ? Modules::iterator{} : modules->find(module);
  const SyncBlock *to = nullptr;
  if (modules != nullptr && found != modules->end()) {
    const auto place = found->second.blocks.find(block);
    to = place == found->second.blocks.end() ? nullptr : &place->second;
  }
  if (to == nullptr) {
    ++restore_failures_;
    return false;
  }
  {
    Scope scope(*standby_);
    code = to->restore(unit, bytes.data(), length, 0);
  }
  standby_->node.tell(
      {Inbound::Kind::unit, standby_->cid(), unit, {}, view_of(module), bytes, code});
  if (code != 0) {
    ++restore_failures_;
    return false;
  }
  ++shipped_;
  return true;
}

std::size_t Synchronisation::marked(const Instance &instance) const {
  std::size_t marks = 0;
  if (const auto *all_modules = modules(instance)) {
    for (const auto &[number, module] : *all_modules) {
      for (const auto &[block_number, block] : module.blocks) {
        marks += block.marks;
      }
    }
  }
  return marks;
}

const std::map<u32, SyncModule> *Synchronisation::modules(const Instance &instance) const {
  const auto &of_node = instance.node.syn.modules_;
  const auto found = of_node.find(&instance);
  return found == of_node.end() ? nullptr : &found->second;
}

Synchronisation::Modules *Synchronisation::registered(const Instance &instance) {
  auto &of_node = instance.node.syn.modules_;
  const auto found = of_node.find(&instance);
  return found == of_node.end() ? nullptr : &found->second;
}

Bytes Synchronisation::extract(Instance &instance, u32 module, u32 block, u32 unit, u32 *code) {
  const auto *all_modules = modules(instance);
  u32 result = code_unknown;
  Bytes bytes;
  if (all_modules != nullptr && all_modules->count(module) != 0 &&
      all_modules->at(module).blocks.count(block) != 0) {
    const SyncBlock &from = all_modules->at(module).blocks.at(block);
    u32 length = 0;
    bytes.resize(from.unit_size);
    const bool role = std::exchange(instance.active, true);
    {
      Scope scope(instance);
      result = from.extract(unit, bytes.data(), from.unit_size, &length);
    }
    instance.active = role;
    bytes.resize(result == 0 ? std::min(length, from.unit_size) : 0);
  }
  if (code != nullptr) {
    *code = result;
  }
  return bytes;
}

std::vector<SyncDifference> Synchronisation::compare() {
  std::vector<SyncDifference> differences;
  const auto *all_modules = active_ == nullptr ? nullptr : modules(*active_);
  if (all_modules == nullptr || standby_ == nullptr) {
    return differences;
  }
  for (const auto &[number, module] : *all_modules) {
    for (const auto &[block_number, block] : module.blocks) {
      for (u32 unit = 0; unit < block.unit_count; ++unit) {
        u32 active_code = 0;
        u32 standby_code = 0;
        const Bytes here = extract(*active_, number, block_number, unit, &active_code);
        const Bytes there = extract(*standby_, number, block_number, unit, &standby_code);
        if (active_code != 0 || standby_code != 0 || here != there) {
          differences.push_back({number, block_number, unit});
        }
      }
    }
  }
  return differences;
}

u32 Synchronisation::register_module(Instance &instance, u32 module) {
  modules_[&instance][module];
  return 0;
}

u32 Synchronisation::register_block(Instance &instance, u32 module, u32 block, SyncBlock info) {
  Modules *modules = registered(instance);
  if (modules == nullptr || modules->count(module) == 0) {
    return code_unknown;
  }
  if (info.extract == nullptr || info.restore == nullptr) {
    return code_null;
  }
  if (info.unit_size == 0 || info.unit_count == 0) {
    return code_length;
  }
  info.marked.assign(info.unit_count, false);
  modules->at(module).blocks[block] = std::move(info);
  return 0;
}

u32 Synchronisation::register_mode(Instance &instance, u32 module) {
  Modules *modules = registered(instance);
  if (modules == nullptr || modules->count(module) == 0) {
    return code_unknown;
  }
  modules->at(module).mode = true;
  return 0;
}

u32 Synchronisation::register_reset(Instance &instance, u32 module, void (*reset)()) {
  Modules *modules = registered(instance);
  if (modules == nullptr || modules->count(module) == 0) {
    return code_unknown;
  }
  modules->at(module).reset = reset;
  return 0;
}

u32 Synchronisation::mark(Instance &instance, u32 module, u32 block, u32 unit) {
  Modules *modules = registered(instance);
  if (modules == nullptr || modules->count(module) == 0 ||
      modules->at(module).blocks.count(block) == 0) {
    return code_unknown;
  }
  SyncBlock &at = modules->at(module).blocks.at(block);
  if (unit >= at.unit_count) {
    return code_range;
  }
  if (!at.marked[unit]) {
    at.marked[unit] = true;
    ++at.marks;
  }
  return 0;
}

void Synchronisation::forget(Instance &instance) {
  modules_.erase(&instance);
  if (active_ == &instance || standby_ == &instance) {
    active_ = standby_ = nullptr;
    attached_ = false;
  }
}

}  // namespace host

using namespace host;

u32 SYN_LibRegisterModuleDataSynInfo(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                     u32 ulPara4) {
  return call_instance<Fn::SYN_LibRegisterModuleDataSynInfo>(
      [&](Node &node, Instance &instance) { return node.syn.register_module(instance, ulModule); },
      ulModule, ulPara1, ulPara2, ulPara3, ulPara4);
}

// The block is the number in the third word behind the module: the one that units are marked under.
u32 SYN_LibRegisterSynDataBlockFix(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                   u32 ulUnitSize, u32 ulUnitCount, u32 ulPara6, u32 ulPara7,
                                   SynExtractFunc pfnExtract, SynRestoreFunc pfnRestore,
                                   u32 ulPara10, u32 ulPara11) {
  return call_instance<Fn::SYN_LibRegisterSynDataBlockFix>(
      [&](Node &node, Instance &instance) {
        SyncBlock block;
        block.unit_size = ulUnitSize;
        block.unit_count = ulUnitCount;
        block.extract = pfnExtract;
        block.restore = pfnRestore;
        return node.syn.register_block(instance, ulModule, ulPara3, std::move(block));
      },
      ulModule, ulPara1, ulPara2, ulPara3, ulUnitSize, ulUnitCount, ulPara6, ulPara7, pfnExtract,
      pfnRestore, ulPara10, ulPara11);
}

u32 SYN_LibRegisterModuleDataMode(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3) {
  return call_instance<Fn::SYN_LibRegisterModuleDataMode>(
      [&](Node &node, Instance &instance) { return node.syn.register_mode(instance, ulModule); },
      ulModule, ulPara1, ulPara2, ulPara3);
}

u32 SYN_LibRegisterSetBitTableFun(u32 ulModule, void (*pfnReset)(void)) {
  return call_instance<Fn::SYN_LibRegisterSetBitTableFun>(
      [&](Node &node, Instance &instance) {
        return node.syn.register_reset(instance, ulModule, pfnReset);
      },
      ulModule, pfnReset);
}

u32 SYN_LibIsCpuActive(void) {
  return call<Fn::SYN_LibIsCpuActive>([](Node &) -> u32 {
    return current.instance != nullptr && current.instance->active ? 1 : 0;
  });
}

u32 SYN_LibModuleDataUnitModifyRecord(u32 ulModule, u32 ulBlock, u32 ulUnit) {
  return call_instance<Fn::SYN_LibModuleDataUnitModifyRecord>(
      [&](Node &node, Instance &instance) {
        return node.syn.mark(instance, ulModule, ulBlock, ulUnit);
      },
      ulModule, ulBlock, ulUnit);
}
