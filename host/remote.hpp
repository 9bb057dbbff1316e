// Remote calls by service name, and the owner of the PTP database that serves them.
#ifndef HOST_REMOTE_HPP
#define HOST_REMOTE_HPP

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/distribution.hpp"

namespace host {

// A service reads and fills the parameters; its answer goes back in the result area.
using Service = std::function<u32(RpcPara &)>;

// Readers of parameters. An index or a kind that does not fit gives 0, an empty view or false.
PmWord rpc_value(const RpcPara &para, u32 index);
ByteView rpc_input(const RpcPara &para, u32 index);
bool rpc_output(RpcPara &para, u32 index, ByteView bytes);

// A call as it was sent: values and inputs with their bytes, outputs with their length only. A
// value of more bytes than it has (a pointer in a word) stands as the machine's word.
struct SentParameter {
  u32 kind = 0;
  u32 length = 0;
  bool null = false;  // a buffer's pointer was null
  Bytes bytes;
};
struct SentCall {
  bool synchronous = false;
  u32 destination = 0;
  u32 cid = 0;
  std::string service;
  std::vector<SentParameter> parameters;
  u32 code = 0;    // of the transport
  u32 answer = 0;  // of the service, when the transport succeeded and the call was synchronous
};

class Rpc {
 public:
  explicit Rpc(Node &node) : node_(node) {}

  // Sets, replaces or (with an empty function) takes away a service. The owner's are set at birth.
  // While `online` points to false, calls of the service fail with code_unreachable.
  void serve(const std::string &name, Service service, const bool *online = nullptr);
  // False: every call fails with code_unreachable.
  bool reachable = true;

  // Performs asynchronous calls that wait, in order; returns their number.
  std::size_t run();
  std::size_t waiting() const { return queue_.size(); }
  // Calls sent, in the order in which they were answered or queued; at most 1,024 are kept.
  const std::deque<SentCall> &sent() const { return sent_; }
  void clear_sent() { sent_.clear(); }

  // For the host functions themselves.
  u32 call(u32 destination, const char *name, RpcPara *para, void *result);
  u32 post(u32 destination, const char *name, RpcPara *para);

 private:
  struct Served {
    Service service;
    const bool *online = nullptr;
  };
  const Served *find(std::string_view name, u32 &code) const;
  SentCall describe(u32 destination, const char *name, const RpcPara &para, bool synchronous) const;
  void keep(SentCall call);

  Node &node_;
  std::map<std::string, Served, std::less<>> services_;
  std::deque<SentCall> queue_;
  std::deque<SentCall> sent_;
};

// An object whose configuration can be deleted: PmFspOntid as it travels.
struct ObjectKey {
  u16 frame = 0;
  u8 slot = 0;
  u8 port = 0;
  u32 ont = 0;
  bool operator==(const ObjectKey &) const = default;
};
PM_PIN_SIZE(ObjectKey, 8);

struct Deletion {
  ObjectKey key;
  std::string text;
  u32 cid = 0;            // requester
  PmWord completion = 0;  // handed back to it
  std::uint64_t due = 0;  // Clock::elapsed
};

struct LinkEvent {
  u16 ptp = 0;
  u8 event = 0;
};

// The process that owns the PTP database: it keeps no data of its own but what it publishes
// through the node's data distribution (classes 0x360011 and 0x360030, key = PTP ID as u32).
//
// Boards that are nodes of their own share one owner: it serves() each of them and publishes
// through the active one.
class Owner {
 public:
  explicit Owner(Node &node) : node_(node), source_(&node) {}

  bool online = true;  // false: calls of the owner's services fail with code_unreachable

  // PTP IDs handed out for virtual PTPs, lowest free one first.
  void set_virtual_range(u16 first, u16 last);
  const std::set<u16> &virtual_ptps() const { return virtual_ptps_; }

  // Deletion of object configuration. A request is accepted at once; the result follows after
  // that many ticks with Node::run(), or by finish_deletion(). By default it waits for the latter.
  static constexpr u32 by_hand = 0xFFFFFFFF;
  u32 deletion_ticks = by_hand;
  u32 deletion_result = 0;  // what is reported
  // Finishes the oldest; false when none is under way. Answers of the requester's service are kept.
  bool finish_deletion(u32 result = 0);
  const std::deque<Deletion> &deletions() const { return deletions_; }
  std::size_t finished_deletions() const { return finished_; }

  // PTPs whose deletion PM_SapiOperCheckCanDelPTP refuses, with the answer.
  std::map<u16, u32> undeletable;
  // Link events as they came, oldest first. Event 0 is sent on as primitive type 7 (link down), any
  // other as 6 (link up), in a record of class 0x360040.
  const std::vector<LinkEvent> &link_events() const { return link_events_; }

  // Finishes what is due; returns the number of deletions finished.
  std::size_t run();
  // Answers that node's calls. Its own node's are answered from birth on.
  void serve(Node &board);
  // The node whose distribution holds the records from now on; at first the owner's own.
  void publish_through(Node &board) { source_ = &board; }

 private:
  u32 link_event(RpcPara &para);
  u32 add_virtual(RpcPara &para);
  u32 delete_virtual(RpcPara &para);
  u32 set_description(RpcPara &para);
  u32 supports_configuration(RpcPara &para);
  u32 can_delete(RpcPara &para);
  u32 delete_configuration(RpcPara &para);
  void publish_count();
  void finish(const Deletion &deletion, u32 result);
  Node &board_of(u32 cid) const;

  Node &node_;
  Node *source_;
  std::vector<Node *> boards_;
  u16 first_ = 0xF000;
  u16 last_ = 0xF0FF;
  std::set<u16> virtual_ptps_;
  std::deque<Deletion> deletions_;
  std::size_t finished_ = 0;
  std::vector<LinkEvent> link_events_;
};

}  // namespace host

#endif
