// The owner of the PTP database: the server side of the library's remote calls.
#include <algorithm>
#include <cstring>

#include "host/call.hpp"
#include "pm_dynamic_data.h"
#include "pm_spec.h"
#include "pm_static_data.h"

namespace host {

namespace {

enum : u32 {
  class_dynamic = 0x360011,
  class_static = 0x360030,
  class_primitive = 0x360040,
  class_deletions = 0x360031,
  spec_general = 0x6C00000
};

// Data of a primitive notification.
struct PrimitiveRecord {
  u16 type = 0;
  u16 ptp = 0;
  u8 parameter[28] = {};
};
PM_PIN_SIZE(PrimitiveRecord, 32);

struct VirtualPtpRequest {
  u8 ptp_class;
  u8 unused;
  u16 index1;
  u16 index2;
  u16 type;
};
PM_PIN_SIZE(VirtualPtpRequest, 8);

template <class T>
bool take(ByteView bytes, T &record) {
  if (bytes.size() != sizeof record) {
    return false;
  }
  std::memcpy(&record, bytes.data(), sizeof record);
  return true;
}

// Characters of a description, as the specification in force says.
std::size_t description_length(const Distribution &ddm) {
  constexpr u32 longest = 80;
  PmSpec spec{};
  const Bytes *payload = ddm.spec(spec_general);
  if (payload == nullptr || !take(*payload, spec)) {
    return longest;
  }
  const u32 length = spec.ulDescMaxLen;
  return std::min(length, longest);
}

}  // namespace

void Owner::serve(Node &board) {
  boards_.push_back(&board);
  const struct {
    const char *name;
    u32 (Owner::*serve)(RpcPara &);
  } services[] = {
      {"PM_SapiLinkEventNotify", &Owner::link_event},
      {"PM_SapiAddVirtualPtp", &Owner::add_virtual},
      {"PM_SapiDelVirtualPtp", &Owner::delete_virtual},
      {"PM_SapiSetDescFromPTP", &Owner::set_description},
      {"PM_SapiIsObjSupportSrvCfg", &Owner::supports_configuration},
      {"PM_SapiOperCheckCanDelPTP", &Owner::can_delete},
      {"PM_SapiDelObjectCfg", &Owner::delete_configuration},
  };
  for (const auto &entry : services) {
    board.rpc.serve(
        entry.name, [this, serve = entry.serve](RpcPara &para) { return (this->*serve)(para); },
        &online);
  }
}

void Owner::set_virtual_range(u16 first, u16 last) {
  first_ = first;
  last_ = last;
}

u32 Owner::link_event(RpcPara &para) {
  enum : u16 { link_up = 6, link_down = 7 };
  const LinkEvent event{static_cast<u16>(rpc_value(para, 0)), static_cast<u8>(rpc_value(para, 1))};
  link_events_.push_back(event);
  PrimitiveRecord record;
  record.type = event.event == 0 ? link_down : link_up;
  record.ptp = event.ptp;
  source_->ddm.send(class_primitive, event.ptp, view_of(record));
  return 0;
}

u32 Owner::add_virtual(RpcPara &para) {
  VirtualPtpRequest request;
  if (!take(rpc_input(para, 0), request)) {
    return code_length;
  }
  for (u32 id = first_; id <= last_; ++id) {
    const u16 ptp = static_cast<u16>(id);
    if (virtual_ptps_.count(ptp) != 0 || source_->ddm.find(class_dynamic, id) != nullptr) {
      continue;
    }
    if (!rpc_output(para, 1, view_of(ptp))) {
      return code_null;
    }
    PtpDynPubData record{};
    record.usIndex1 = request.index1;
    record.usIndex2 = request.index2;
    record.ucPtpClass = request.ptp_class;
    record.ucExist = 1;
    record.usPtpType = request.type;
    record.LastChangeTick = node_.clock.now();
    virtual_ptps_.insert(ptp);
    source_->ddm.publish(class_dynamic, id, view_of(record));
    return 0;
  }
  return code_full;
}

u32 Owner::delete_virtual(RpcPara &para) {
  const u16 ptp = static_cast<u16>(rpc_value(para, 0));
  const Bytes *known = source_->ddm.find(class_dynamic, ptp);
  PtpDynPubData record;
  if (virtual_ptps_.erase(ptp) == 0 || known == nullptr || !take(*known, record)) {
    return code_no_ptp;
  }
  record.ucExist = 0;
  record.LastChangeTick = node_.clock.now();
  // What is gone is told as a record that does not exist; later subscribers need not hear of it.
  source_->ddm.publish(class_dynamic, ptp, view_of(record));
  source_->ddm.remove(class_dynamic, ptp);
  return 0;
}

u32 Owner::set_description(RpcPara &para) {
  const u16 ptp = static_cast<u16>(rpc_value(para, 0));
  const ByteView text = rpc_input(para, 1);
  const Bytes *known = source_->ddm.find(class_static, ptp);
  if (known == nullptr || known->size() != sizeof(PtpStaticData)) {
    return code_no_ptp;
  }
  if (text.data() == nullptr) {
    return code_null;
  }
  // The private data stands right behind the terminator, wherever that is: it stays as it is.
  const std::size_t room = description_length(source_->ddm);
  Bytes record = *known;
  const auto start = record.begin() + offsetof(PtpStaticData, szDescription);
  std::fill_n(start, room + 1, u8{0});
  std::copy_n(text.begin(), std::min(text.size(), room), start);
  source_->ddm.publish(class_static, ptp, record);
  return 0;
}

u32 Owner::supports_configuration(RpcPara &para) {
  ObjectKey key;
  if (!take(rpc_input(para, 0), key)) {
    return code_length;
  }
  const bool deleting = std::any_of(deletions_.begin(), deletions_.end(),
                                    [&](const Deletion &entry) { return entry.key == key; });
  return deleting ? u32{code_in_deletion} : 0;
}

u32 Owner::can_delete(RpcPara &para) {
  const u16 ptp = static_cast<u16>(rpc_value(para, 0));
  if (const auto found = undeletable.find(ptp); found != undeletable.end()) {
    return found->second;
  }
  return source_->ddm.find(class_dynamic, ptp) == nullptr ? u32{code_no_ptp} : 0;
}

u32 Owner::delete_configuration(RpcPara &para) {
  Deletion deletion;
  const u32 refused = supports_configuration(para);
  if (refused != 0 || !take(rpc_input(para, 0), deletion.key)) {
    return refused;
  }
  const ByteView text = rpc_input(para, 1);
  deletion.text.assign(text.begin(), text.end());
  deletion.cid = static_cast<u32>(rpc_value(para, 2));
  deletion.completion = rpc_value(para, 3);
  deletion.due = deletion_ticks == by_hand ? std::numeric_limits<std::uint64_t>::max()
                                           : node_.clock.elapsed() + deletion_ticks;
  deletions_.push_back(std::move(deletion));
  publish_count();
  return 0;
}

void Owner::publish_count() {
  source_->ddm.publish(class_deletions, 0, view_of(static_cast<u32>(deletions_.size())));
}

Node &Owner::board_of(u32 cid) const {
  const auto found = std::find_if(boards_.begin(), boards_.end(), [&](const Node *board) {
    return board->root.find(cid) != nullptr;
  });
  return found == boards_.end() ? node_ : **found;
}

void Owner::finish(const Deletion &deletion, u32 result) {
  ++finished_;
  publish_count();
  ObjectKey key = deletion.key;
  Node &board = board_of(deletion.cid);
  const u32 code = board.root.call_service(
      deletion.cid, "PM_SapiNotifyDelObjectCfgResult",
      reinterpret_cast<u32 (*)(ObjectKey *, u32)>(deletion.completion), &key, result);
  board.tell({Inbound::Kind::service,
              deletion.cid,
              result,
              "PM_SapiNotifyDelObjectCfgResult",
              view_of(key),
              {},
              code});
}

bool Owner::finish_deletion(u32 result) {
  if (deletions_.empty()) {
    return false;
  }
  const Deletion deletion = std::move(deletions_.front());
  deletions_.pop_front();
  finish(deletion, result);
  return true;
}

std::size_t Owner::run() {
  std::size_t count = 0;
  for (;;) {
    const auto next =
        std::find_if(deletions_.begin(), deletions_.end(),
                     [&](const Deletion &entry) { return entry.due <= node_.clock.elapsed(); });
    if (next == deletions_.end()) {
      return count;
    }
    const Deletion deletion = std::move(*next);
    deletions_.erase(next);
    finish(deletion, deletion_result);
    ++count;
  }
}

}  // namespace host
