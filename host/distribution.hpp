// Data distribution: the current records of every class, batches to new subscribers, live records,
// specification messages.
//
// Order. Keys of a class are ordered by length, then as little-endian numbers, so u32 keys come in
// numeric order. A new subscription is fed by run(): subscriptions one after another in the order
// in which they were made, each with the current records of its class in key order, then the end of
// its batch. A record that changes behind the batch's position follows after its end. After
// the end publish() delivers at once, to the subscribers in order of subscription.
//
// Publishing from inside a delivery or while a remote call is being served changes the store at
// once; the deliveries wait for the end of the running delivery or, during a remote call, for the
// next run() or publish(). No delivery is ever nested in another, and none is reordered.
//
// An empty key or empty data reaches the subscriber as a null pointer.
#ifndef HOST_DISTRIBUTION_HPP
#define HOST_DISTRIBUTION_HPP

#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct Node;
struct Instance;

using Bytes = std::vector<u8>;
using ByteView = std::span<const u8>;

struct KeyOrder {
  bool operator()(const Bytes &a, const Bytes &b) const;
};
using Records = std::map<Bytes, Bytes, KeyOrder>;

Bytes bytes_of_u32(u32 value);
template <class T>
ByteView view_of(const T &record) {
  return {reinterpret_cast<const u8 *>(&record), sizeof record};
}

struct RefusedRecord {
  u32 cid = 0;
  u32 class_id = 0;
  Bytes key;
  u32 code = 0;
};

class Distribution {
 public:
  explicit Distribution(Node &node) : node_(node) {}

  static constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

  // Batches of new subscriptions are delivered inside DDM_LibSubscribe instead of by run().
  bool immediate_batches = false;
  // Answers DDM_LibScribeIsClassBtFinished with this byte, whatever the batches' state.
  std::optional<u8> forced_batch_state;

  // Sets a record and delivers it. Answers the first non-zero code of a subscriber that got it now.
  u32 publish(u32 class_id, ByteView key, ByteView data);
  u32 publish(u32 class_id, u32 key, ByteView data) {
    return publish(class_id, bytes_of_u32(key), data);
  }
  // Delivers like publish() without keeping the record: an event, not a state.
  u32 send(u32 class_id, u32 key, ByteView data);
  // Takes a record out of the store. Subscribers are not told: what a class has as a mark of
  // removal is published as a record first.
  bool remove(u32 class_id, u32 key);
  // Puts a record into the store without delivery to anybody: to lay a data base before start-up.
  void preset(u32 class_id, u32 key, ByteView data);

  // Delivers what waits: batches, then live records. At most that many records of batches; call
  // again for the rest. Returns the number of records delivered.
  std::size_t run(std::size_t max_records = all);
  bool idle() const;

  // Records of a class's batch to one subscriber.
  struct Progress {
    std::size_t delivered = 0;
    std::size_t total = 0;
    bool finished = false;
  };
  std::optional<Progress> progress(u32 cid, u32 class_id) const;
  bool batch_finished(u32 cid, u32 class_id) const;
  // Classes to which an instance has subscribed, in order.
  std::vector<u32> subscriptions(u32 cid) const;
  // Starts a batch again for every subscription of the instance, as after a loss of connection.
  void restart_batches(u32 cid);

  const Records &records(u32 class_id) const;
  const Bytes *find(u32 class_id, u32 key) const;

  // Specification messages: the payload is kept and handed to every registered function, at once
  // and to those that register later.
  void publish_spec(u32 identifier, ByteView payload);
  // Hands a message as it is, without keeping it: for malformed ones.
  void send_spec(ByteView message);
  // The payload kept under that identifier; null when there is none.
  const Bytes *spec(u32 identifier) const;

  // Records that a subscriber did not accept; at most 1,000 are listed.
  std::uint64_t refused() const { return refused_; }
  const std::vector<RefusedRecord> &refusals() const { return refusals_; }
  std::uint64_t delivered() const { return delivered_; }
  void clear_refusals() {
    refused_ = 0;
    refusals_.clear();
  }

  // For the host functions themselves.
  u32 register_spec(u32 module, DdmSpecUpdateFunc update);
  u32 subscribe(u32 cid, u32 class_id, DdmRestoreFunc restore);
  u32 batch_state(u32 cid, u32 class_id, u8 *finished) const;
  void forget(u32 cid);  // an instance has gone

 private:
  struct Record {
    Bytes key;
    Bytes data;
  };
  struct Subscription {
    u32 cid = 0;
    u32 class_id = 0;
    DdmRestoreFunc restore = nullptr;
    bool finished = false;
    bool started = false;
    Bytes position;  // key of the last record delivered in the batch
    std::size_t delivered = 0;
    std::size_t passed = 0;    // records of the class up to the position, so as not to count them
    std::vector<Record> late;  // changed behind the position

    bool has_passed(const Bytes &key) const { return started && !KeyOrder{}(position, key); }
  };
  static Subscription fresh(u32 cid, u32 class_id, DdmRestoreFunc restore) {
    Subscription subscription;
    subscription.cid = cid;
    subscription.class_id = class_id;
    subscription.restore = restore;
    return subscription;
  }
  struct Class {
    Records records;
    std::uint64_t changes =
        0;  // records that came or went: places in `records` are to be sought anew
  };
  struct Live {
    u32 cid = 0;
    u32 class_id = 0;
    Record record;
  };
  struct SpecUser {
    u32 module = 0;
    DdmSpecUpdateFunc update = nullptr;
  };
  void keep(u32 class_id, const Bytes &key, Bytes data);
  u32 enqueue(u32 class_id, const Record &record, bool event);
  u32 drain();
  u32 deliver(u32 cid, u32 class_id, const Record &record);
  void feed_batch(u32 cid, u32 class_id, std::size_t &room);
  void tell_spec(const SpecUser &user, ByteView message);
  Subscription *find_subscription(u32 cid, u32 class_id);
  const Subscription *find_subscription(u32 cid, u32 class_id) const;

  Node &node_;
  std::map<u32, Class> store_;
  std::deque<Subscription> subscriptions_;
  std::deque<Live> live_;
  std::map<u32, Bytes> specs_;
  std::vector<SpecUser> spec_users_;
  bool delivering_ = false;
  std::uint64_t delivered_ = 0;
  std::uint64_t refused_ = 0;
  std::vector<RefusedRecord> refusals_;
};

}  // namespace host

#endif
