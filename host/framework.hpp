// Component framework: instances, their PIDs, messages to them and the services they publish.
#ifndef HOST_FRAMEWORK_HPP
#define HOST_FRAMEWORK_HPP

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/fn.hpp"
#include "host/runtime.hpp"

namespace host {

struct Node;

// Head of every message of the stand-in, 20 bytes, little-endian. The interface identifier is the
// low 16 bits of the first word; the PID the message is for is the third word.
struct MessageHeader {
  u32 iid = 0;     // high 16 bits not read
  u32 type = 0;    // message_type_...
  u32 pid = 0;     // PID whose message function gets it
  u32 sender = 0;  // CID of the sender
  u32 length = 0;  // bytes that follow
};
PM_PIN_SIZE(MessageHeader, 20);

enum : u32 {
  iid_fid_pid = 4,                  // goes to the FID/PID dispatcher
  message_type_debug_window = 0x4C  // command, sub-command and two parameters follow, u32 each
};

struct PidInfo {
  u32 pid = 0;
  KvtPidInitFunc init = nullptr;
  KvtPidMsgFunc message = nullptr;
};

// One component instance. Its local data belongs to it and goes with it.
struct Instance {
  Instance(Node &node_, u32 cid, u32 comp_type_);

  Node &node;
  PmInstance record{};  // what ROOT_LibGetCurrentThis answers
  u32 comp_type;
  std::unique_ptr<u8[]> local_data;
  u32 local_size = 0;
  bool constructed = false;
  std::vector<Handle> handles;  // not yet finalised
  std::vector<PidInfo> pids;    // in order of registration
  std::set<u32> depends{407};   // PIDs for which ROOT_LibIsPidDepend answers 1
  bool active = true;           // role in active/standby

  u32 cid() const { return record.ulCid; }
  const PidInfo *pid(u32 number) const;
};

// Makes a node, or an instance of it, current on this thread until the scope ends. Scopes nest.
class Scope {
 public:
  explicit Scope(Node &node);
  explicit Scope(Instance &instance);
  ~Scope();
  Scope(const Scope &) = delete;
  Scope &operator=(const Scope &) = delete;

 private:
  Node *outer_node_;
  Instance *outer_instance_;
  Watchdog::Turn outer_turn_;  // of the node entered
};

[[nodiscard]] inline Scope enter(Node &node) {
  return Scope(node);
}
[[nodiscard]] inline Scope enter(Instance &instance) {
  return Scope(instance);
}
Node *current_node();
Instance *current_instance();

struct Publication {
  std::string name;
  u32 cid = 0;
};

class Framework {
 public:
  explicit Framework(Node &node) : node_(node) {}

  // Registrations
  const std::vector<RootCompRegisterInfo> &components() const { return components_; }
  const RootCompRegisterInfo *component(u32 comp_type) const;

  // Instances. add() makes the framework's record only; construct() also runs phases 0, 1 and 2 of
  // the construct entry of the component type, with the instance current. Null when the type is not
  // registered, the CID is taken or a phase fails; last_code() then has the code. An instance whose
  // phase failed is removed.
  Instance *add(u32 cid, u32 comp_type = 54);
  Instance *construct(u32 cid, u32 para = 0, u32 comp_type = 54);
  // Calls the destruct entry and removes the instance with its subscriptions, its registrations for
  // synchronisation and its publications, whatever the entry answers.
  u32 destruct(u32 cid);
  Instance *find(u32 cid) const;
  std::vector<Instance *> instances() const;
  u32 last_code() const { return last_code_; }

  // Start-up
  u32 start_fid(Instance &instance, u32 (*fid_init)(u32), u32 phase = 0);
  // Calls the init function of every PID of the instance in order of registration; the first
  // non-zero code is answered, and the PIDs after it are called all the same.
  u32 start_phase(Instance &instance, u32 phase);

  // Messages. Null goes through as it is; the component's message entry answers.
  u32 send_message(Instance &instance, void *message);
  u32 debug_command(Instance &instance, u32 command, u32 sub_command = 0, u32 para1 = 0,
                    u32 para2 = 0);
  static std::array<u8, 36> debug_message(u32 command, u32 sub_command, u32 para1, u32 para2,
                                          u32 pid = 54);
  // Priority of each message task that was registered, by FID, in order.
  struct MessageTask {
    u32 fid = 0;
    u32 prio = 0;
    u32 cid = 0;
  };
  const std::vector<MessageTask> &message_tasks() const { return message_tasks_; }

  // Services. A name leads to a function through the resolver: by default the symbol of that name
  // among those the process has loaded globally. An embedder that loads the library privately sets
  // its own.
  const std::vector<Publication> &publications() const { return publications_; }
  bool published(std::string_view name, u32 cid) const;
  void set_resolver(std::function<void *(const char *)> resolver) {
    resolver_ = std::move(resolver);
  }
  // Null when no instance of that CID published the name, or nothing carries it.
  void *service(const char *name, u32 cid) const;
  // Calls a published service with its instance current; code_unknown when there is none.
  template <class... A>
  u32 call_service(u32 cid, const char *name, A... arguments) {
    void *address = service(name, cid);
    if (address == nullptr) {
      return code_unknown;
    }
    Scope scope(*find(cid));
    return reinterpret_cast<u32 (*)(A...)>(address)(arguments...);
  }

  // For the host functions themselves.
  u32 register_component(const RootCompRegisterInfo &info);
  void *create_local(u32 cid, u32 comp_type, u32 size);
  u32 init_handle(u32 comp_type, u32 cid, Handle *handle);
  u32 finalize_handle(Handle handle);
  u32 register_pid(Instance &instance, const PidInfo &info);
  u32 register_message_task(Instance &instance, u32 fid, u32 prio);
  u32 dispatch(u32 cid, void *message);
  u32 publish(const char *name, u32 cid);
  u32 depends(u32 pid, const PmInstance *record) const;

 private:
  void remove(Instance &instance);

  Node &node_;
  std::vector<RootCompRegisterInfo> components_;
  std::vector<std::unique_ptr<Instance>> instances_;
  std::vector<Publication> publications_;
  std::vector<MessageTask> message_tasks_;
  std::function<void *(const char *)> resolver_;
  Handle next_handle_ = 0x1001;
  u32 last_code_ = 0;
};

}  // namespace host

#endif
