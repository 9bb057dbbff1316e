// Data distribution.
#include <algorithm>
#include <cstring>

#include "host/call.hpp"

namespace host {

namespace {

const u8 *pointer_or_null(const Bytes &bytes) {
  return bytes.empty() ? nullptr : bytes.data();
}

constexpr std::size_t most_refusals = 1'000;

u32 u32_of(const Bytes &bytes) {
  u32 value;
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

}  // namespace

bool KeyOrder::operator()(const Bytes &a, const Bytes &b) const {
  // Nearly every key is a number of four bytes, and every delivery looks for one.
  if (a.size() == sizeof(u32) && b.size() == sizeof(u32)) {
    return u32_of(a) < u32_of(b);
  }
  if (a.size() != b.size()) {
    return a.size() < b.size();
  }
  return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

Bytes bytes_of_u32(u32 value) {
  const ByteView view = view_of(value);
  return {view.begin(), view.end()};
}

u32 Distribution::publish(u32 class_id, ByteView key, ByteView data) {
  const Record record{{key.begin(), key.end()}, {data.begin(), data.end()}};
  keep(class_id, record.key, record.data);
  return enqueue(class_id, record, false);
}

u32 Distribution::send(u32 class_id, u32 key, ByteView data) {
  return enqueue(class_id, {bytes_of_u32(key), {data.begin(), data.end()}}, true);
}

bool Distribution::remove(u32 class_id, u32 key) {
  const auto found = store_.find(class_id);
  const Bytes bytes = bytes_of_u32(key);
  if (found == store_.end() || found->second.records.erase(bytes) == 0) {
    return false;
  }
  ++found->second.changes;
  for (Subscription &to : subscriptions_) {
    to.passed -= to.class_id == class_id && to.has_passed(bytes) ? 1U : 0U;
  }
  return true;
}

void Distribution::preset(u32 class_id, u32 key, ByteView data) {
  keep(class_id, bytes_of_u32(key), {data.begin(), data.end()});
}

void Distribution::keep(u32 class_id, const Bytes &key, Bytes data) {
  Class &at = store_[class_id];
  const std::size_t before = at.records.size();
  // Data bases are laid in the order of their keys.
  at.records.insert_or_assign(at.records.end(), key, std::move(data));
  if (at.records.size() == before) {
    return;
  }
  ++at.changes;
  for (Subscription &to : subscriptions_) {
    to.passed += to.class_id == class_id && to.has_passed(key) ? 1U : 0U;
  }
}

u32 Distribution::enqueue(u32 class_id, const Record &record, bool event) {
  for (Subscription &to : subscriptions_) {
    if (to.class_id != class_id) {
      continue;
    }
    if (to.finished) {
      live_.push_back({to.cid, class_id, record});
    } else if (event || to.has_passed(record.key)) {
      to.late.push_back(record);
    }
    // Else the batch still comes to the record.
  }
  return delivering_ || node_.serving != 0 ? 0 : drain();
}

u32 Distribution::drain() {
  u32 first_code = 0;
  delivering_ = true;
  while (!live_.empty()) {
    const Live next = std::move(live_.front());
    live_.pop_front();
    const u32 code = deliver(next.cid, next.class_id, next.record);
    first_code = first_code == 0 ? code : first_code;
  }
  delivering_ = false;
  return first_code;
}

u32 Distribution::deliver(u32 cid, u32 class_id, const Record &record) {
  Instance *instance = node_.root.find(cid);
  const Subscription *to = find_subscription(cid, class_id);
  if (instance == nullptr || to == nullptr) {
    return 0;  // gone while the record waited
  }
  const DdmRestoreFunc restore = to->restore;
  u32 code;
  {
    Scope scope(*instance);
    code = restore(class_id, 0, pointer_or_null(record.key), pointer_or_null(record.data),
                   static_cast<u32>(record.data.size()));
  }
  ++delivered_;
  if (code != 0) {
    ++refused_;
    if (refusals_.size() < most_refusals) {
      refusals_.push_back({cid, class_id, record.key, code});
    }
  }
  node_.tell({Inbound::Kind::record, cid, class_id, {}, record.key, record.data, code});
  return code;
}

void Distribution::feed_batch(u32 cid, u32 class_id, std::size_t &room) {
  Record record;
  const Class &from = store_[class_id];
  auto next = from.records.end();
  std::uint64_t seen = from.changes - 1;  // `next` is not known yet
  // The subscription is looked up for every record: a delivery may change what is subscribed.
  for (Subscription *to; (to = find_subscription(cid, class_id)) != nullptr && !to->finished;) {
    if (seen != from.changes || !to->started || to->position != record.key) {
      next = to->started ? from.records.upper_bound(to->position) : from.records.begin();
      seen = from.changes;
    }
    if (next == from.records.end()) {
      to->finished = true;
      for (Record &late : to->late) {
        live_.push_back({cid, class_id, std::move(late)});
      }
      to->late.clear();
      return;
    }
    if (room == 0) {
      return;
    }
    --room;
    record.key = next->first;
    record.data = next->second;
    ++next;
    to->started = true;
    to->position = record.key;
    ++to->passed;
    ++to->delivered;
    deliver(cid, class_id, record);
  }
}

std::size_t Distribution::run(std::size_t max_records) {
  if (delivering_ || node_.serving != 0) {
    return 0;
  }
  const std::uint64_t before = delivered_;
  std::size_t room = max_records;
  drain();
  for (std::size_t i = 0; i < subscriptions_.size(); ++i) {
    const u32 cid = subscriptions_[i].cid;
    const u32 class_id = subscriptions_[i].class_id;
    delivering_ = true;
    feed_batch(cid, class_id, room);
    delivering_ = false;
    drain();
  }
  return static_cast<std::size_t>(delivered_ - before);
}

bool Distribution::idle() const {
  return live_.empty() && std::all_of(subscriptions_.begin(), subscriptions_.end(),
                                      [](const Subscription &to) { return to.finished; });
}

std::optional<Distribution::Progress> Distribution::progress(u32 cid, u32 class_id) const {
  const Subscription *to = find_subscription(cid, class_id);
  if (to == nullptr) {
    return std::nullopt;
  }
  Progress progress{to->delivered, to->delivered, to->finished};
  if (!to->finished) {
    progress.total += records(class_id).size() - to->passed;
  }
  return progress;
}

bool Distribution::batch_finished(u32 cid, u32 class_id) const {
  const Subscription *to = find_subscription(cid, class_id);
  return to != nullptr && to->finished;
}

std::vector<u32> Distribution::subscriptions(u32 cid) const {
  std::vector<u32> classes;
  for (const Subscription &to : subscriptions_) {
    if (to.cid == cid) {
      classes.push_back(to.class_id);
    }
  }
  return classes;
}

void Distribution::restart_batches(u32 cid) {
  for (Subscription &to : subscriptions_) {
    if (to.cid == cid) {
      to = fresh(cid, to.class_id, to.restore);
    }
  }
  std::erase_if(live_, [&](const Live &entry) { return entry.cid == cid; });
}

const Records &Distribution::records(u32 class_id) const {
  static const Records none;
  const auto found = store_.find(class_id);
  return found == store_.end() ? none : found->second.records;
}

const Bytes *Distribution::find(u32 class_id, u32 key) const {
  const Records &all_records = records(class_id);
  const auto found = all_records.find(bytes_of_u32(key));
  return found == all_records.end() ? nullptr : &found->second;
}

void Distribution::publish_spec(u32 identifier, ByteView payload) {
  specs_[identifier].assign(payload.begin(), payload.end());
  Bytes message = bytes_of_u32(identifier);
  const Bytes length = bytes_of_u32(static_cast<u32>(payload.size()));
  message.insert(message.end(), length.begin(), length.end());
  message.insert(message.end(), payload.begin(), payload.end());
  send_spec(message);
}

void Distribution::send_spec(ByteView message) {
  for (const SpecUser &user : spec_users_) {
    tell_spec(user, message);
  }
}

void Distribution::tell_spec(const SpecUser &user, ByteView message) {
  u32 code;
  {
    Scope scope(node_);
    code = user.update(message.empty() ? nullptr : message.data());
  }
  node_.tell({Inbound::Kind::spec, 0, user.module, {}, {}, message, code});
}

const Bytes *Distribution::spec(u32 identifier) const {
  const auto found = specs_.find(identifier);
  return found == specs_.end() ? nullptr : &found->second;
}

u32 Distribution::register_spec(u32 module, DdmSpecUpdateFunc update) {
  if (update == nullptr) {
    return code_null;
  }
  std::erase_if(spec_users_, [&](const SpecUser &user) { return user.module == module; });
  spec_users_.push_back({module, update});
  for (const auto &[identifier, payload] : specs_) {
    Bytes message = bytes_of_u32(identifier);
    const Bytes length = bytes_of_u32(static_cast<u32>(payload.size()));
    message.insert(message.end(), length.begin(), length.end());
    message.insert(message.end(), payload.begin(), payload.end());
    tell_spec(spec_users_.back(), message);
  }
  return 0;
}

u32 Distribution::subscribe(u32 cid, u32 class_id, DdmRestoreFunc restore) {
  if (restore == nullptr) {
    return code_null;
  }
  if (node_.root.find(cid) == nullptr) {
    return code_no_instance;
  }
  const Subscription subscription = fresh(cid, class_id, restore);
  if (Subscription *known = find_subscription(cid, class_id)) {
    *known = subscription;
  } else {
    subscriptions_.push_back(subscription);
  }
  if (immediate_batches && !delivering_) {
    std::size_t room = all;
    delivering_ = true;
    feed_batch(cid, class_id, room);
    delivering_ = false;
    drain();
  }
  return 0;
}

u32 Distribution::batch_state(u32 cid, u32 class_id, u8 *finished) const {
  if (finished == nullptr) {
    return code_null;
  }
  if (forced_batch_state) {
    *finished = *forced_batch_state;
    return 0;
  }
  const Subscription *to = find_subscription(cid, class_id);
  if (to == nullptr) {
    return code_unknown;
  }
  *finished = to->finished ? 1 : 0;
  return 0;
}

void Distribution::forget(u32 cid) {
  std::erase_if(subscriptions_, [&](const Subscription &to) { return to.cid == cid; });
  std::erase_if(live_, [&](const Live &entry) { return entry.cid == cid; });
}

const Distribution::Subscription *Distribution::find_subscription(u32 cid, u32 class_id) const {
  for (const Subscription &to : subscriptions_) {
    if (to.class_id == class_id && to.cid == cid) {
      return &to;
    }
  }
  return nullptr;
}

Distribution::Subscription *Distribution::find_subscription(u32 cid, u32 class_id) {
  return const_cast<Subscription *>(std::as_const(*this).find_subscription(cid, class_id));
}

}  // namespace host

using namespace host;

u32 DDM_RegisterSpecAppInfo(u32 ulModule, u32 (*pfnSpecUpdate)(const void *pSpecMsg)) {
  return call<Fn::DDM_RegisterSpecAppInfo>(
      [&](Node &node) { return node.ddm.register_spec(ulModule, pfnSpecUpdate); }, ulModule,
      pfnSpecUpdate);
}

u32 DDM_LibSubscribe(u32 ulCid, u32 ulClassID, DdmRestoreFunc pfnRestore) {
  return call<Fn::DDM_LibSubscribe>(
      [&](Node &node) { return node.ddm.subscribe(ulCid, ulClassID, pfnRestore); }, ulCid,
      ulClassID, pfnRestore);
}

u32 DDM_LibScribeIsClassBtFinished(u32 ulClassID, u8 *pucFinished) {
  return call<Fn::DDM_LibScribeIsClassBtFinished>(
      [&](Node &node) { return node.ddm.batch_state(current_cid(), ulClassID, pucFinished); },
      ulClassID);
}
