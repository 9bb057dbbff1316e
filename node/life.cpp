#include "node/life.hpp"

#include <algorithm>
#include <cstring>

namespace node {
namespace {

struct Change {
  u32 class_id = 0;
  u32 key = 0;
  host::Bytes data;
};

template <class Record>
Change change_of(u32 class_id, u32 key, const Record &record) {
  const host::ByteView view = host::view_of(record);
  return {class_id, key, {view.begin(), view.end()}};
}

std::uint64_t refused_by(const Node &node) {
  std::uint64_t refused = 0;
  for (const auto &side : node.sides()) {
    refused += side->host.ddm.refused();
  }
  return refused;
}

Told tell(Node &node, const std::vector<Change> &changes, Delivery delivery) {
  std::vector<std::size_t> listed;
  for (const auto &side : node.sides()) {
    listed.push_back(side->host.ddm.refusals().size());
  }
  const std::uint64_t refused = refused_by(node);
  for (const Change &change : changes) {
    if (delivery == Delivery::live) {
      node.publish(change.class_id, host::bytes_of_u32(change.key), change.data);
    } else {
      node.lay(change.class_id, change.key, change.data);
    }
  }
  if (delivery == Delivery::batch) {
    node.repeat_batches();
  }
  Told told{changes.size(), refused_by(node) - refused, 0};
  for (std::size_t side = 0; side < listed.size() && told.code == 0; ++side) {
    const auto &refusals = node.sides()[side]->host.ddm.refusals();
    told.code = refusals.size() > listed[side] ? refusals[listed[side]].code : 0;
  }
  return told;
}

std::string place_text(u16 frame, u8 slot) {
  return std::to_string(frame) + "/" + std::to_string(slot);
}

// A PTP's record as the owner last sent it; one made from the chassis when there is none.
template <class Record>
Record record_in(Node &node, u32 class_id, u16 ptp, const Record &otherwise) {
  Record record = otherwise;
  const host::Bytes *sent = node.active().host.ddm.find(class_id, ptp);
  if (sent != nullptr && sent->size() == sizeof record) {
    std::memcpy(&record, sent->data(), sizeof record);
  }
  return record;
}

Change existence(Node &node, const Ptp &ptp, bool exists) {
  PtpDynPubData record =
      record_in(node, PM_CLASS_DYNAMIC, ptp.id, dynamic_record_of(node.chassis(), ptp));
  record.ucExist = exists ? 1 : 0;
  return change_of(PM_CLASS_DYNAMIC, ptp.id, record);
}

std::vector<Ptp> ptps_at(const Chassis &chassis, u16 frame, u8 slot) {
  std::vector<Ptp> found;
  std::copy_if(chassis.ptps.begin(), chassis.ptps.end(), std::back_inserter(found),
               [&](const Ptp &ptp) { return ptp.frame == frame && ptp.slot == slot; });
  return found;
}

bool fits(const Ptp &ptp, const BoardKind &kind) {
  return ptp.port < kind.ports.size() && (ptp.ont || kind.ports[ptp.port].type == ptp.type);
}

void forget(Node &node, const Ptp &gone) {
  node.take_out(PM_CLASS_DYNAMIC, gone.id);
  node.take_out(PM_CLASS_STATIC, gone.id);
  std::erase_if(node.chassis().ptps, [&](const Ptp &ptp) { return ptp.id == gone.id; });
}

// Checks a new PTP against the chassis and enters it.
void enter(Chassis &chassis, Ptp ptp) {
  const std::string name = "PTP " + std::to_string(ptp.id);
  const unsigned highest = chassis.specification.max_ptp;
  if (ptp.id > highest) {
    throw LifeError(name + " is beyond the maximum PTP ID; expected 0 to " +
                    std::to_string(highest));
  }
  if (ptp.id >= chassis.virtual_first && ptp.id < chassis.virtual_first + chassis.virtual_count) {
    throw LifeError(name + " lies among the virtual PTPs; expected another ID");
  }
  for (const Ptp &other : chassis.ptps) {
    const bool same_place = other.frame == ptp.frame && other.slot == ptp.slot &&
                            other.port == ptp.port && other.ont == ptp.ont;
    if (other.id == ptp.id) {
      throw LifeError(name + " is there already; expected a free ID");
    }
    if (same_place) {
      throw LifeError(name + " meets PTP " + std::to_string(other.id) +
                      " on its port; expected one that has none");
    }
  }
  ptp.description = (chassis.port_types[ptp.type].name + " " + place_text(ptp.frame, ptp.slot) +
                     "/" + std::to_string(ptp.port))
                        .substr(0, chassis.specification.description_length);
  const auto after = std::find_if(chassis.ptps.begin(), chassis.ptps.end(),
                                  [&](const Ptp &other) { return other.id > ptp.id; });
  chassis.ptps.insert(after, std::move(ptp));
}

std::vector<Change> records_of_new(const Chassis &chassis, u16 id) {
  const auto ptp = std::find_if(chassis.ptps.begin(), chassis.ptps.end(),
                                [&](const Ptp &other) { return other.id == id; });
  return {change_of(PM_CLASS_DYNAMIC, id, dynamic_record_of(chassis, *ptp)),
          change_of(PM_CLASS_STATIC, id, static_record_of(chassis, *ptp))};
}

const Ptp &known_ptp(const Chassis &chassis, u16 id) {
  const auto found = std::find_if(chassis.ptps.begin(), chassis.ptps.end(),
                                  [&](const Ptp &ptp) { return ptp.id == id; });
  if (found == chassis.ptps.end()) {
    throw LifeError("the chassis has no PTP " + std::to_string(id) + "; expected one of its own");
  }
  return *found;
}

// The PTPs of a board of that kind, to be numbered from `first` on.
std::vector<Ptp> new_ptps(const BoardKind &kind, u16 frame, u8 slot, u32 first) {
  std::vector<Ptp> made;
  for (std::size_t port = 0; port < kind.ports.size(); ++port) {
    if (!kind.ports[port].type) {
      continue;
    }
    Ptp ptp;
    ptp.id = static_cast<u16>(std::min<std::size_t>(first + made.size(), 0xFFFF));
    ptp.frame = frame;
    ptp.slot = slot;
    ptp.port = static_cast<u8>(port);
    ptp.type = *kind.ports[port].type;
    ptp.invisible = kind.ports[port].invisible;
    ptp.link_trap = kind.ports[port].link_trap;
    made.push_back(std::move(ptp));
  }
  return made;
}

}  // namespace

Told insert_board(Node &node, u16 frame, u8 slot, std::size_t kind, std::optional<u16> first,
                  Delivery delivery) {
  Chassis chassis = node.chassis();
  const std::string place = place_text(frame, slot);
  if (chassis.board(frame, slot) != nullptr) {
    throw LifeError("slot " + place + " has a board; expected an empty slot");
  }
  const auto in = std::find_if(chassis.frames.begin(), chassis.frames.end(),
                               [&](const Frame &entry) { return entry.id == frame; });
  if (in == chassis.frames.end() || slot >= in->slots) {
    throw LifeError("there is no slot " + place + "; expected one of the chassis");
  }
  const std::vector<Ptp> before = ptps_at(chassis, frame, slot);
  const bool all_fit = !first && !before.empty() &&
                       std::all_of(before.begin(), before.end(),
                                   [&](const Ptp &ptp) { return fits(ptp, chassis.kinds[kind]); });
  std::vector<Change> changes;
  if (all_fit) {
    for (const Ptp &ptp : before) {
      changes.push_back(existence(node, ptp, true));
    }
  } else {
    std::erase_if(chassis.ptps,
                  [&](const Ptp &ptp) { return ptp.frame == frame && ptp.slot == slot; });
    const u32 end = chassis.ptps.empty() ? 0 : chassis.ptps.back().id + 1U;
    for (Ptp &ptp : new_ptps(chassis.kinds[kind], frame, slot, first.value_or(end))) {
      const u16 id = ptp.id;
      enter(chassis, std::move(ptp));
      for (Change &change : records_of_new(chassis, id)) {
        changes.push_back(std::move(change));
      }
    }
    for (const Ptp &ptp : before) {
      forget(node, ptp);
    }
  }
  chassis.boards.push_back({kind, frame, slot});
  const host::Chassis device_layer = device_layer_of(chassis);
  node.chassis() = std::move(chassis);
  for (const auto &side : node.sides()) {
    side->host.chassis.insert(frame, slot, *device_layer.board(frame, slot));
  }
  return tell(node, changes, delivery);
}

Told remove_board(Node &node, u16 frame, u8 slot, Delivery delivery) {
  Chassis &chassis = node.chassis();
  const auto here = [&](const Board &board) { return board.frame == frame && board.slot == slot; };
  if (std::erase_if(chassis.boards, here) == 0) {
    throw LifeError("slot " + place_text(frame, slot) + " has no board; expected one");
  }
  for (const auto &side : node.sides()) {
    side->host.chassis.remove(frame, slot);
  }
  std::vector<Change> changes;
  for (const Ptp &ptp : ptps_at(chassis, frame, slot)) {
    changes.push_back(existence(node, ptp, false));
  }
  return tell(node, changes, delivery);
}

Told add_ptp(Node &node, Ptp ptp, Delivery delivery) {
  const Board *board = node.chassis().board(ptp.frame, ptp.slot);
  if (board == nullptr || ptp.port >= node.chassis().kinds[board->kind].ports.size()) {
    throw LifeError("there is no port " + place_text(ptp.frame, ptp.slot) + "/" +
                    std::to_string(ptp.port) + "; expected one of a board");
  }
  const u16 id = ptp.id;
  enter(node.chassis(), std::move(ptp));
  return tell(node, records_of_new(node.chassis(), id), delivery);
}

Told remove_ptp(Node &node, u16 id, Delivery delivery) {
  const Ptp ptp = known_ptp(node.chassis(), id);
  const Told told = tell(node, {existence(node, ptp, false)}, delivery);
  forget(node, ptp);
  return told;
}

Told change_vs_mask(Node &node, u16 id, u32 mask, Delivery delivery) {
  Chassis &chassis = node.chassis();
  Ptp ptp = known_ptp(chassis, id);
  PtpDynPubData dynamic = record_in(node, PM_CLASS_DYNAMIC, id, dynamic_record_of(chassis, ptp));
  PtpStaticData fixed = record_in(node, PM_CLASS_STATIC, id, static_record_of(chassis, ptp));
  dynamic.ulVsMask = mask;
  fixed.ulVsMask = mask;
  for (Ptp &entry : chassis.ptps) {
    entry.vs_mask = entry.id == id ? mask : entry.vs_mask;
  }
  return tell(node,
              {change_of(PM_CLASS_DYNAMIC, id, dynamic), change_of(PM_CLASS_STATIC, id, fixed)},
              delivery);
}

Told add_port_type(Node &node, PortType type, Delivery delivery) {
  Chassis &chassis = node.chassis();
  if (chassis.port_type(type.value) != nullptr) {
    throw LifeError("port type " + std::to_string(type.value) + " is there; expected a new one");
  }
  const auto suffix = static_cast<u32>(chassis.port_types.size());
  chassis.port_types.push_back(std::move(type));
  const PmSubAttrNum counts = port_type_counts_of(chassis);
  node.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(counts));
  return tell(
      node,
      {change_of(PM_CLASS_SUB_ATTR, 0, counts),
       change_of(PM_CLASS_SUB_INFO, suffix, port_type_record_of(chassis.port_types.back()))},
      delivery);
}

}  // namespace node
