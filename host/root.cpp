// Component framework.
#include <dlfcn.h>

#include <algorithm>
#include <cstring>

#include "host/call.hpp"

namespace host {

namespace {

MessageHeader header_of(const void *message) {
  MessageHeader header;
  std::memcpy(&header, message, sizeof header);
  return header;
}

// Reads the first word only: a message need not have more for its identifier to be asked.
u32 iid_of(const void *message) {
  u32 word;
  std::memcpy(&word, message, sizeof word);
  return word & 0xFFFF;
}

constexpr u8 fresh_byte = 0xA5;

}  // namespace

Instance::Instance(Node &node_, u32 cid, u32 comp_type_) : node(node_), comp_type(comp_type_) {
  record.ulCid = cid;
}

const PidInfo *Instance::pid(u32 number) const {
  const auto found = std::find_if(pids.begin(), pids.end(),
                                  [&](const PidInfo &info) { return info.pid == number; });
  return found == pids.end() ? nullptr : &*found;
}

const RootCompRegisterInfo *Framework::component(u32 comp_type) const {
  for (const RootCompRegisterInfo &info : components_) {
    if (info.ulCompType == comp_type) {
      return &info;
    }
  }
  return nullptr;
}

Instance *Framework::find(u32 cid) const {
  for (const auto &instance : instances_) {
    if (instance->cid() == cid) {
      return instance.get();
    }
  }
  return nullptr;
}

std::vector<Instance *> Framework::instances() const {
  std::vector<Instance *> all;
  for (const auto &instance : instances_) {
    all.push_back(instance.get());
  }
  return all;
}

Instance *Framework::add(u32 cid, u32 comp_type) {
  if (find(cid) != nullptr) {
    last_code_ = code_exists;
    return nullptr;
  }
  instances_.push_back(std::make_unique<Instance>(node_, cid, comp_type));
  return instances_.back().get();
}

Instance *Framework::construct(u32 cid, u32 para, u32 comp_type) {
  const RootCompRegisterInfo *info = component(comp_type);
  if (info == nullptr || info->pfnConstruct == nullptr) {
    last_code_ = code_unknown;
    return nullptr;
  }
  Instance *instance = add(cid, comp_type);
  if (instance == nullptr) {
    return nullptr;
  }
  for (u32 phase = 0; phase <= 2; ++phase) {
    Scope scope(*instance);
    last_code_ = info->pfnConstruct(phase, para, cid, 0);
    if (last_code_ != 0) {
      break;
    }
  }
  if (last_code_ != 0) {
    remove(*instance);
    return nullptr;
  }
  instance->constructed = true;
  return instance;
}

u32 Framework::destruct(u32 cid) {
  Instance *instance = find(cid);
  if (instance == nullptr) {
    return code_no_instance;
  }
  u32 code = 0;
  const RootCompRegisterInfo *info = component(instance->comp_type);
  if (info != nullptr && info->pfnDestruct != nullptr) {
    Scope scope(*instance);
    code = info->pfnDestruct(instance->record.pLocalData);
  }
  remove(*instance);
  return code;
}

void Framework::remove(Instance &instance) {
  const u32 cid = instance.cid();
  node_.ddm.forget(cid);
  node_.syn.forget(instance);
  std::erase_if(publications_, [&](const Publication &entry) { return entry.cid == cid; });
  std::erase_if(message_tasks_, [&](const MessageTask &entry) { return entry.cid == cid; });
  std::erase_if(instances_, [&](const auto &entry) { return entry.get() == &instance; });
}

u32 Framework::start_fid(Instance &instance, u32 (*fid_init)(u32), u32 phase) {
  if (fid_init == nullptr) {
    return code_null;
  }
  Scope scope(instance);
  const u32 code = fid_init(phase);
  node_.tell({Inbound::Kind::fid, instance.cid(), phase, {}, {}, {}, code});
  return code;
}

u32 Framework::start_phase(Instance &instance, u32 phase) {
  u32 first_code = 0;
  // A start-up function may register further PIDs: they take part in the phase too.
  for (std::size_t i = 0; i < instance.pids.size(); ++i) {
    const PidInfo info = instance.pids[i];
    if (info.init == nullptr) {
      continue;
    }
    Scope scope(instance);
    const u32 code = info.init(phase);
    first_code = first_code == 0 ? code : first_code;
  }
  node_.tell({Inbound::Kind::phase, instance.cid(), phase, {}, {}, {}, first_code});
  return first_code;
}

u32 Framework::send_message(Instance &instance, void *message) {
  const RootCompRegisterInfo *info = component(instance.comp_type);
  if (info == nullptr || info->pfnMsgProc == nullptr) {
    return code_unknown;
  }
  Scope scope(instance);
  const u32 code = info->pfnMsgProc(message, instance.record.pLocalData);
  if (message != nullptr && node_.inbound) {
    const MessageHeader header = header_of(message);
    const ByteView bytes{static_cast<const u8 *>(message), sizeof header + header.length};
    node_.tell({Inbound::Kind::message, instance.cid(), header.iid, {}, {}, bytes, code});
  }
  return code;
}

std::array<u8, 36> Framework::debug_message(u32 command, u32 sub_command, u32 para1, u32 para2,
                                            u32 pid) {
  const u32 words[] = {command, sub_command, para1, para2};
  const MessageHeader header{iid_fid_pid, message_type_debug_window, pid, 0, sizeof words};
  std::array<u8, 36> message{};
  std::memcpy(message.data(), &header, sizeof header);
  std::memcpy(message.data() + sizeof header, words, sizeof words);
  return message;
}

u32 Framework::debug_command(Instance &instance, u32 command, u32 sub_command, u32 para1,
                             u32 para2) {
  auto message = debug_message(command, sub_command, para1, para2, instance.comp_type);
  return send_message(instance, message.data());
}

bool Framework::published(std::string_view name, u32 cid) const {
  return std::any_of(publications_.begin(), publications_.end(), [&](const Publication &entry) {
    return entry.name == name && entry.cid == cid;
  });
}

void *Framework::service(const char *name, u32 cid) const {
  if (!published(name, cid) || find(cid) == nullptr) {
    return nullptr;
  }
  return resolver_ ? resolver_(name) : dlsym(RTLD_DEFAULT, name);
}

u32 Framework::register_component(const RootCompRegisterInfo &info) {
  std::erase_if(components_, [&](const RootCompRegisterInfo &known) {
    return known.ulCompType == info.ulCompType;
  });
  components_.push_back(info);
  return 0;
}

void *Framework::create_local(u32 cid, u32 comp_type, u32 size) {
  Instance *instance = find(cid);
  if (instance == nullptr || instance->comp_type != comp_type || instance->local_data ||
      size == 0) {
    return nullptr;
  }
  instance->local_data = std::make_unique<u8[]>(size);
  instance->local_size = size;
  std::memset(instance->local_data.get(), fresh_byte, size);
  instance->record.pLocalData = instance->local_data.get();
  return instance->record.pLocalData;
}

u32 Framework::init_handle(u32 comp_type, u32 cid, Handle *handle) {
  Instance *instance = find(cid);
  if (handle == nullptr) {
    return code_null;
  }
  if (instance == nullptr || instance->comp_type != comp_type) {
    return code_no_instance;
  }
  instance->handles.push_back(next_handle_);
  // The caller's variable may be a field of a packed record.
  std::memcpy(static_cast<void *>(handle), &next_handle_, sizeof next_handle_);
  ++next_handle_;
  return 0;
}

u32 Framework::finalize_handle(Handle handle) {
  for (const auto &instance : instances_) {
    if (std::erase(instance->handles, handle) != 0) {
      return 0;
    }
  }
  node_.misuse(MisuseKind::bad_handle, Fn::ZEL_HandleFinalize, std::to_string(handle));
  return code_unknown;
}

u32 Framework::register_pid(Instance &instance, const PidInfo &info) {
  for (PidInfo &known : instance.pids) {
    if (known.pid == info.pid) {
      known = info;
      return 0;
    }
  }
  instance.pids.push_back(info);
  return 0;
}

u32 Framework::register_message_task(Instance &instance, u32 fid, u32 prio) {
  message_tasks_.push_back({fid, prio, instance.cid()});
  return 0;
}

u32 Framework::dispatch(u32 cid, void *message) {
  if (message == nullptr) {
    return code_null;
  }
  Instance *instance = find(cid);
  if (instance == nullptr) {
    return code_no_instance;
  }
  const PidInfo *info = instance->pid(header_of(message).pid);
  if (info == nullptr || info->message == nullptr) {
    return code_unknown;
  }
  const KvtPidMsgFunc deliver = info->message;
  Scope scope(*instance);
  deliver(message);
  return 0;
}

u32 Framework::publish(const char *name, u32 cid) {
  if (name == nullptr) {
    return code_null;
  }
  if (find(cid) == nullptr) {
    return code_no_instance;
  }
  if (!published(name, cid)) {
    publications_.push_back({name, cid});
  }
  return 0;
}

u32 Framework::depends(u32 pid, const PmInstance *record) const {
  for (const auto &instance : instances_) {
    if (&instance->record == record) {
      return instance->depends.count(pid) != 0 ? 1 : 0;
    }
  }
  return 0;
}

}  // namespace host

using namespace host;

u32 ROOT_LibCompRegisterInfo(const void *pstRegisterRecord) {
  return call<Fn::ROOT_LibCompRegisterInfo>([&](Node &node) -> u32 {
    if (pstRegisterRecord == nullptr) {
      return code_null;
    }
    RootCompRegisterInfo info;
    std::memcpy(&info, pstRegisterRecord, sizeof info);
    return node.root.register_component(info);
  });
}

void *ROOT_LibCompLocalCreate(u32 ulCid, u32 ulCompType, u32 ulSize) {
  // The size is the size of a record with pointers in it: not shown, as it depends on the build.
  return call<Fn::ROOT_LibCompLocalCreate>(
      [&](Node &node) { return node.root.create_local(ulCid, ulCompType, ulSize); }, ulCid,
      ulCompType);
}

u32 ROOT_LibCompHandleInit(u32 ulCompType, u32 ulCid, Handle *pulHandle) {
  return call<Fn::ROOT_LibCompHandleInit>(
      [&](Node &node) { return node.root.init_handle(ulCompType, ulCid, pulHandle); }, ulCompType,
      ulCid);
}

u32 ZEL_HandleFinalize(Handle ulHandle) {
  return call<Fn::ZEL_HandleFinalize>(
      [&](Node &node) { return node.root.finalize_handle(ulHandle); }, ulHandle);
}

PmInstance *ROOT_LibGetCurrentThis(void) {
  return call<Fn::ROOT_LibGetCurrentThis>([](Node &) -> PmInstance * {
    return current.instance == nullptr ? nullptr : &current.instance->record;
  });
}

u32 ROOT_LibGetCurrentCID(void) {
  return call<Fn::ROOT_LibGetCurrentCID>([](Node &) { return current_cid(); });
}

u32 ROOT_LibProcFidPidMsg(u32 ulCid, void *pMsg, void *pLocalData) {
  static_cast<void>(pLocalData);
  return call<Fn::ROOT_LibProcFidPidMsg>(
      [&](Node &node) { return node.root.dispatch(ulCid, pMsg); }, ulCid);
}

u32 ROOT_LibIsPidDepend(u32 ulPid, PmInstance *pstThis) {
  return call<Fn::ROOT_LibIsPidDepend>(
      [&](Node &node) { return node.root.depends(ulPid, pstThis); }, ulPid, pstThis);
}

u32 ROOT_LibSrvmPubishSapi(const char *pcServiceName, u32 ulCid) {
  return call<Fn::ROOT_LibSrvmPubishSapi>(
      [&](Node &node) { return node.root.publish(pcServiceName, ulCid); }, pcServiceName, ulCid);
}

u32 DMS_MsgRecvIidGet(const void *pMsg) {
  return call<Fn::DMS_MsgRecvIidGet>([&](Node &) -> u32 {
    return pMsg == nullptr ? info_of(Fn::DMS_MsgRecvIidGet).fault : iid_of(pMsg);
  });
}
