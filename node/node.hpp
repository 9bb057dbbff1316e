// A node: the host's side and the library's instances of one chassis, brought up in the order a
// real node keeps, and the things that can happen to it afterwards.
//
// The active and the standby control board are a host each. Both take every data class from the
// system except the static records: those reach the standby only by synchronisation, so that
// comparing both sides tells whether synchronisation works.
#ifndef NODE_NODE_HPP
#define NODE_NODE_HPP

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/host.hpp"
#include "node/chassis.hpp"
#include "node/product.hpp"

namespace node {

// A node that could not come up.
struct StartError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Progress of one data class's batch on one side.
struct Restore {
  u32 cid = 0;
  u32 class_id = 0;
  const char *class_name = "";
  std::size_t delivered = 0;
  std::size_t total = 0;
  std::size_t refused = 0;
  bool finished = false;
};

// Who wants to watch the start-up. Both may be empty.
struct StartReport {
  std::function<void(const std::string &step, const std::string &outcome)> step;
  std::function<void(const Restore &)> restore;
};

// What a product printed: see pm_product.h.
struct Event {
  u32 cid = 0;
  u32 tick = 0;
  std::string text;
};

// Error records of one place in the source, since the start of the node.
struct ErrorPlace {
  std::uint64_t count = 0;
  u32 first_value = 0;
  u32 last_value = 0;
};

struct Side {
  u32 cid = 0;
  host::Node host;
  host::Instance *instance = nullptr;
  std::map<std::pair<std::string, u32>, ErrorPlace> error_places;  // by file and line
};

const char *class_name_of(u32 class_id);

class Node {
 public:
  Node(Chassis chassis, std::vector<Product> products);
  Node(const Node &) = delete;
  Node &operator=(const Node &) = delete;

  // Throws a StartError at the first step that fails.
  void start(const StartReport &report = {});

  const Chassis &chassis() const { return chassis_; }
  Chassis &chassis() { return chassis_; }
  const std::vector<Product> &products() const { return products_; }
  // The active board's side first, as the chassis names them, whatever their roles are now.
  const std::vector<std::unique_ptr<Side>> &sides() const { return sides_; }
  bool has_standby() const { return sides_.size() > 1; }
  // The side whose instance has the active role.
  Side &active();
  // The owner of the PTP database, one for both boards.
  host::Owner &owner() { return sides_.front()->host.owner; }

  // A record from the system: to every board, static records to the active one only. Answers the
  // active side's code.
  u32 publish(u32 class_id, const host::Bytes &key, host::ByteView data);
  u32 publish_spec(u32 identifier, host::ByteView payload);
  // Puts a record where publish() would, or takes it out, without delivery to anybody.
  void lay(u32 class_id, u32 key, host::ByteView data);
  void take_out(u32 class_id, u32 key);
  // Every instance takes all its batches anew, as after a restart of its subscriptions.
  void repeat_batches();
  // A primitive of a PTP, as a message to the active instance.
  u32 raise(u16 primitive, u16 ptp);
  // The same as a distributed notification to every board.
  u32 notify(u16 primitive, u16 ptp);

  // Does all that waits on either side.
  void settle();
  // Ships what is marked and answers the number of units; 0 without a standby.
  std::size_t synchronise();
  std::vector<host::SyncDifference> compare();
  bool failover();

  static constexpr std::size_t kEventsKept = 1'000;
  // Told of everything that enters the library on a board, when it has been answered.
  using InboundObserver = std::function<void(const Side &side, const host::Inbound &entry)>;
  std::vector<InboundObserver> inbound_observers;

  const std::deque<Event> &events() const { return events_; }
  std::uint64_t events_total() const { return events_total_; }

 private:
  void prepare(Side &side, bool with_static_records);
  void bring_up(Side &side, const StartReport &report);
  void restore(Side &side, const StartReport &report);
  void watch(Side &side);

  struct Mirrored {
    u32 class_id;
    host::Bytes key;
    host::Bytes data;
  };
  static void hand_over(const Mirrored &record, const host::Distribution &from,
                        host::Distribution &to);

  Chassis chassis_;
  std::vector<Product> products_;
  std::vector<std::unique_ptr<Side>> sides_;
  std::vector<Mirrored> mirrored_;  // from the active side's distribution, for the other side
  bool mirroring_ = false;
  std::deque<Event> events_;
  std::uint64_t events_total_ = 0;
};

}  // namespace node

#endif
