#include "node/node.hpp"

#include <algorithm>
#include <cstring>

#include "node/console.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

// Records of a batch that are delivered between two looks at its progress. Looking counts what is
// left, so a few looks per batch have to do.
constexpr std::size_t kBatchStep = 4'096;

constexpr u32 kPhases[] = {1, 2, 8};

struct ClassName {
  u32 class_id;
  const char *name;
};

constexpr ClassName kClassNames[] = {
    {PM_CLASS_SPEC, "specification"},        {PM_CLASS_ATTR_CB, "PTP numbers"},
    {PM_CLASS_SUB_ATTR, "port-type counts"}, {PM_CLASS_SUB_INFO, "port types"},
    {PM_CLASS_DYNAMIC, "dynamic records"},   {PM_CLASS_STATIC, "static records"},
    {PM_CLASS_PRIM_NOTIFY, "notifications"}, {PM_CLASS_OBJ_DEL_NUM, "objects in deletion"}};

std::size_t refusals_of(const host::Node &host, u32 class_id) {
  std::size_t count = 0;
  for (const host::RefusedRecord &record : host.ddm.refusals()) {
    if (record.class_id == class_id) {
      ++count;
    }
  }
  return count;
}

// The lines of a text without the host's line breaks and blanks around them.
std::string trimmed(const std::string &text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) {
    return "";
  }
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace

const char *class_name_of(u32 class_id) {
  for (const ClassName &entry : kClassNames) {
    if (entry.class_id == class_id) {
      return entry.name;
    }
  }
  return "unknown class";
}

Node::Node(Chassis chassis, std::vector<Product> products)
    : chassis_(std::move(chassis)), products_(std::move(products)) {
  sides_.push_back(std::make_unique<Side>());
  sides_.back()->cid = chassis_.active_cid;
  if (chassis_.standby_cid) {
    sides_.push_back(std::make_unique<Side>());
    sides_.back()->cid = *chassis_.standby_cid;
    owner().serve(sides_.back()->host);
  }
}

Side &Node::active() {
  for (const auto &side : sides_) {
    if (side->instance != nullptr && side->instance->active) {
      return *side;
    }
  }
  return *sides_.front();
}

// Lays the system's data base for one board before anything of it starts.
void Node::prepare(Side &side, bool with_static_records) {
  host::Distribution &ddm = side.host.ddm;
  side.host.chassis = device_layer_of(chassis_);
  if (chassis_.virtual_count != 0) {
    owner().set_virtual_range(chassis_.virtual_first, static_cast<u16>(chassis_.virtual_first +
                                                                       chassis_.virtual_count - 1));
  }
  ddm.preset(PM_CLASS_SUB_ATTR, 0, host::view_of(port_type_counts_of(chassis_)));
  u32 suffix = 0;
  for (const PortType &type : chassis_.port_types) {
    ddm.preset(PM_CLASS_SUB_INFO, suffix++, host::view_of(port_type_record_of(type)));
  }
  for (const Ptp &ptp : chassis_.ptps) {
    ddm.preset(PM_CLASS_DYNAMIC, ptp.id, host::view_of(dynamic_record_of(chassis_, ptp)));
    if (!with_static_records) {
      continue;
    }
    ddm.preset(PM_CLASS_STATIC, ptp.id, host::view_of(static_record_of(chassis_, ptp)));
  }
  const u32 none_in_deletion = 0;
  ddm.preset(PM_CLASS_OBJ_DEL_NUM, 0, host::view_of(none_in_deletion));
}

// Keeps what products print, where errors are recorded, and what the active side's distribution has
// to hand to the other side.
void Node::watch(Side &side) {
  side.host.debug.set_sink([this](const host::Line &line) {
    if (line.printer != host::Fn::xPrintf || line.selector == PM_COMP_TYPE) {
      return;
    }
    events_.push_back({line.cid, line.tick, trimmed(line.text)});
    ++events_total_;
    if (events_.size() > kEventsKept) {
      events_.pop_front();
    }
  });
  side.host.errors.set_sink([&side](const host::ErrorRecord &record) {
    ErrorPlace &place = side.error_places[{std::string(record.file), record.line}];
    if (place.count++ == 0) {
      place.first_value = record.value;
    }
    place.last_value = record.value;
  });
  side.host.inbound = [this, &side](const host::Inbound &entry) {
    for (const InboundObserver &observer : inbound_observers) {
      observer(side, entry);
    }
    if (!mirroring_ || &side != &active() || entry.kind != host::Inbound::Kind::record) {
      return;
    }
    if (entry.id == PM_CLASS_STATIC) {
      return;
    }
    mirrored_.push_back({entry.id, host::Bytes(entry.key.begin(), entry.key.end()),
                         host::Bytes(entry.data.begin(), entry.data.end())});
  };
}

// Delivers the batches class by class.
void Node::restore(Side &side, const StartReport &report) {
  host::Distribution &ddm = side.host.ddm;
  for (const u32 class_id : ddm.subscriptions(side.cid)) {
    Restore restore{side.cid, class_id, class_name_of(class_id), 0, 0, 0, false};
    while (!restore.finished) {
      const std::size_t delivered = ddm.run(kBatchStep);
      const auto progress = ddm.progress(side.cid, class_id);
      if (!progress) {
        throw StartError("subscription to class " + hex(class_id) + " is gone");
      }
      restore.delivered = progress->delivered;
      restore.total = progress->total;
      restore.finished = progress->finished;
      if (!restore.finished && delivered == 0) {
        throw StartError("batch of class " + hex(class_id) + " does not move on");
      }
      restore.refused = refusals_of(side.host, class_id);
      if (report.restore) {
        report.restore(restore);
      }
    }
  }
}

void Node::bring_up(Side &side, const StartReport &report) {
  host::Node &host = side.host;
  const auto done = [&](const std::string &step, u32 code) {
    if (report.step) {
      report.step(step, code == 0 ? "ok" : "failed, " + result_text(code));
    }
    if (code == 0) {
      return;
    }
    std::string reason;
    if (!host.debug.lines().empty()) {
      reason = ": " + trimmed(host.debug.lines().back().text);
    }
    throw StartError(step + " failed with " + result_text(code) + reason);
  };
  {
    const host::Scope scope(host);
    done("register component 54", PM_LibRegisterInfo());
  }
  // Before phase 1: the control block of an instance takes the port-type counts in that phase.
  host.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(general_specification_of(chassis_)));
  host.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(ptp_numbers_of(chassis_)));
  host.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(port_type_counts_of(chassis_)));
  done("specification messages", PM_LibGetMaxPtpID() == chassis_.specification.max_ptp ? 0 : 1);
  side.instance = host.root.construct(side.cid);
  done("construct instance " + hex(side.cid), side.instance != nullptr ? 0 : host.root.last_code());
  side.instance->active = &side == sides_.front().get();
  // The FID start-up never answers a failure: what it recorded tells.
  const std::uint64_t mark = host.errors.total();
  const u32 fid = host.root.start_fid(*side.instance, PM_FidInitProc);
  const std::vector<u32> recorded = host.errors.values_since(mark);
  done("FID start-up", fid == 0 && !recorded.empty() ? recorded.back() : fid);
  for (const u32 phase : kPhases) {
    done("PID phase " + std::to_string(phase), host.root.start_phase(*side.instance, phase));
  }
}

void Node::start(const StartReport &report) {
  if (!products_.empty()) {
    const PmProductMngt hooks = combined_hooks(products_);
    const host::Scope scope(sides_.front()->host);
    PM_LibRegProductMngtFuncProc(&hooks);
  }
  for (const auto &side : sides_) {
    const bool first = side == sides_.front();
    if (report.step) {
      report.step(first ? "active board" : "standby board", "");
    }
    prepare(*side, first);
    watch(*side);
    bring_up(*side, report);
    restore(*side, report);
  }
  mirroring_ = has_standby();
  if (has_standby()) {
    if (report.step) {
      report.step("synchronisation", "");
    }
    sides_[0]->host.syn.pair(*sides_[0]->instance, *sides_[1]->instance);
    const std::size_t shipped = synchronise();
    const std::size_t differing = compare().size();
    if (report.step) {
      report.step("units shipped", std::to_string(shipped));
      report.step("static data of both sides",
                  differing == 0 ? "identical" : std::to_string(differing) + " units differ");
    }
  }
  settle();
}

u32 Node::publish(u32 class_id, const host::Bytes &key, host::ByteView data) {
  const u32 code = active().host.ddm.publish(class_id, key, data);
  settle();
  return code;
}

u32 Node::publish_spec(u32 identifier, host::ByteView payload) {
  for (const auto &side : sides_) {
    side->host.ddm.publish_spec(identifier, payload);
  }
  return 0;
}

void Node::lay(u32 class_id, u32 key, host::ByteView data) {
  for (const auto &side : sides_) {
    if (class_id != PM_CLASS_STATIC || side.get() == &active()) {
      side->host.ddm.preset(class_id, key, data);
    }
  }
}

void Node::take_out(u32 class_id, u32 key) {
  for (const auto &side : sides_) {
    side->host.ddm.remove(class_id, key);
  }
}

void Node::repeat_batches() {
  // Every board has its own batches: nothing is to be handed over.
  mirroring_ = false;
  for (const auto &side : sides_) {
    side->host.ddm.restart_batches(side->cid);
  }
  settle();
  mirroring_ = has_standby();
}

u32 Node::raise(u16 primitive, u16 ptp) {
  PmPrimMsg message{};
  message.usPrimaryWord = primitive;
  message.usPtpID = ptp;
  u32 code = 0;
  {
    const host::Scope scope(*active().instance);
    code = PM_PrimMsgProc(&message);
  }
  settle();
  return code;
}

u32 Node::notify(u16 primitive, u16 ptp) {
  PmPrimNotify notification{};
  notification.usPrimType = primitive;
  notification.usPtpID = ptp;
  const u32 code = active().host.ddm.send(PM_CLASS_PRIM_NOTIFY, 0, host::view_of(notification));
  settle();
  return code;
}

void Node::settle() {
  for (std::size_t done = 1; done != 0;) {
    done = 0;
    for (const auto &side : sides_) {
      done += side->host.run();
    }
    const std::vector<Mirrored> records = std::move(mirrored_);
    mirrored_.clear();
    for (const Mirrored &record : records) {
      for (const auto &side : sides_) {
        if (side.get() == &active()) {
          continue;
        }
        hand_over(record, active().host.ddm, side->host.ddm);
        ++done;
      }
    }
  }
}

// What the active side's distribution does not hold is an event, or a record that has been taken
// out.
void Node::hand_over(const Mirrored &record, const host::Distribution &from,
                     host::Distribution &to) {
  if (from.records(record.class_id).contains(record.key)) {
    to.publish(record.class_id, record.key, record.data);
    return;
  }
  u32 key = 0;
  std::memcpy(&key, record.key.data(), std::min(record.key.size(), sizeof key));
  to.send(record.class_id, key, record.data);
  to.remove(record.class_id, key);
}

std::size_t Node::synchronise() {
  return has_standby() ? sides_.front()->host.syn.run() : 0;
}

std::vector<host::SyncDifference> Node::compare() {
  return has_standby() ? sides_.front()->host.syn.compare() : std::vector<host::SyncDifference>{};
}

bool Node::failover() {
  settle();
  if (!has_standby()) {
    return false;
  }
  const host::Distribution &before = active().host.ddm;
  if (!sides_.front()->host.syn.failover()) {
    return false;
  }
  // The owner goes on with the data base of the new active side. The static records are laid there
  // without delivery: synchronisation has brought them to the instance.
  host::Node &now = active().host;
  for (const auto &[key, data] : before.records(PM_CLASS_STATIC)) {
    u32 ptp = 0;
    std::memcpy(&ptp, key.data(), std::min(key.size(), sizeof ptp));
    now.ddm.preset(PM_CLASS_STATIC, ptp, data);
  }
  owner().publish_through(now);
  return true;
}

}  // namespace node
