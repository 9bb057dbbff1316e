// Stand-in host: one process of a network element, in memory, deterministic.
//
// A Node offers every host function of platform/ to the library. The library finds it through the
// current scope of the thread:
//
//   host::Node node;
//   node.chassis.add_frame(0, 16);
//   { auto scope = host::enter(node); PM_LibRegisterInfo(); }
//   node.ddm.publish_spec(0x6C00000, host::view_of(spec));
//   host::Instance *instance = node.root.construct(1);
//   node.root.start_fid(*instance, PM_FidInitProc);
//   for (u32 phase : {1u, 2u, 8u}) node.root.start_phase(*instance, phase);
//   node.run();                                    // batches, waiting calls, units, what is due
//   { auto scope = host::enter(*instance); PM_LibIfPtpExist(17); }
//
// Nothing is global but the current scope of each thread and g_stDbgPrintInfo. A node and its
// instances are used by one thread at a time; several nodes may run on several threads. Time is
// virtual. Nothing the node answers, prints or lists depends on addresses or on the wall clock.
//
// Host functions called outside any scope change nothing: those with a result code answer
// code_no_node, pointers are null, handles and values 0. Bounded copies and the pure comparisons
// work everywhere. Exceptions never leave a host function: where memory of the process runs out the
// call fails like one with a fault.
#ifndef HOST_HOST_HPP
#define HOST_HOST_HPP

#include <functional>
#include <string>
#include <vector>

#include "host/chassis.hpp"
#include "host/debug.hpp"
#include "host/distribution.hpp"
#include "host/fault.hpp"
#include "host/fn.hpp"
#include "host/framework.hpp"
#include "host/journal.hpp"
#include "host/memory.hpp"
#include "host/objects.hpp"
#include "host/remote.hpp"
#include "host/runtime.hpp"
#include "host/sweep.hpp"
#include "host/sync.hpp"

namespace host {

// A wrong use of the host by its caller: always a mistake in the caller, never a fault.
enum class MisuseKind {
  double_free,
  foreign_free,        // an address the host did not hand out
  wrong_module,        // given back for another module than it was taken for
  freed_while_linked,  // the block is still in a hash table
  guard_damaged,       // written before or behind a block
  linked_twice,        // a hash node added while in a table
  not_linked,          // a hash node removed that is not in that table or bucket
  bad_handle,          // table or component handle
  bad_bucket
};
const char *name_of(MisuseKind kind);

struct Misuse {
  MisuseKind kind{};
  Fn fn{};
  std::string text;  // "block#7 of 226 bytes (file:line)"
};

// Something that entered the library from outside, told when it has been answered: what a recording
// of a node's life has to keep.
struct Inbound {
  enum class Kind { spec, record, message, phase, fid, service, remote_answer, unit };
  Kind kind{};
  u32 cid = 0;
  u32 id = 0;             // identifier, class, phase, unit
  std::string_view name;  // of a service
  ByteView key;           // of a record
  ByteView data;
  u32 answer = 0;
};

struct Node {
  Node();
  ~Node();
  Node(const Node &) = delete;
  Node &operator=(const Node &) = delete;

  Faults faults;
  Journal journal;
  Clock clock;
  Watchdog watchdog;
  std::vector<Misuse> misuses;  // at most 1,000
  Memory memory;
  HashTables hash;
  ErrorRing errors;
  Debug debug;
  Chassis chassis;
  ObjectCfg objects;
  ClassServices classes;
  Framework root;
  Distribution ddm;
  Synchronisation syn;
  Rpc rpc;
  Owner owner;
  std::function<void(const Inbound &)> inbound;

  // Does everything that waits or is due, until nothing is left: remote calls, deletions, records,
  // units. Returns the number of things done.
  std::size_t run();

  // For the host's own parts.
  void misuse(MisuseKind kind, Fn fn, std::string text);
  void tell(const Inbound &entry) const {
    if (inbound) {
      inbound(entry);
    }
  }
  u32 serving = 0;  // remote calls being served: deliveries wait
};

}  // namespace host

#endif
