#include "node/panel.hpp"

#include <cstring>
#include <set>

#include "node/numerals.hpp"
#include "node/ptp_text.hpp"

namespace node {
namespace {

// The link of PTPs. A port type whose sub-line cannot tell is asked once only: each refusal is an
// error record.
class Links {
 public:
  PortState state(u16 ptp, u16 type) {
    if (mute_.contains(type)) {
      return PortState::unknown;
    }
    u8 link = 0;
    if (PM_LibGetLinkStateFromPTP(ptp, &link) != PM_OK) {
      mute_.insert(type);
      return PortState::unknown;
    }
    return link == 1 ? PortState::up : PortState::down;
  }

 private:
  std::set<u16> mute_;
};

PanelPort *port_at(Panel &panel, u16 frame_id, u8 slot, u8 port) {
  for (PanelFrame &frame : panel.frames) {
    if (frame.id == frame_id && slot < frame.slots.size() && frame.slots[slot] &&
        port < frame.slots[slot]->ports.size()) {
      return &frame.slots[slot]->ports[port];
    }
  }
  return nullptr;
}

void enter(Panel &panel, const Chassis &chassis, Links &links, u16 ptp) {
  PtpDynPubData record{};
  u16 frame = 0;
  u8 slot = 0;
  u8 number = 0;
  if (PM_LibGetAllDynDataFromPtpID(ptp, &record) != PM_OK ||
      PM_LibGetFSPFromPtp(ptp, &frame, &slot, &number) != PM_OK) {
    return;
  }
  PanelPort *port = port_at(panel, frame, slot, number);
  if (port == nullptr) {
    return;
  }
  const PortState link = links.state(ptp, record.usPtpType);
  if (record.ucPtpClass != PM_PTP_CLASS_PORT) {
    const unsigned up = link == PortState::up ? 1 : 0;
    ++port->behind;
    port->behind_up += up;
    ++panel.behind;
    panel.behind_up += up;
    return;
  }
  port->ptp = ptp;
  port->type = type_name_of(chassis, record.usPtpType);
  port->state = record.ucInvisible != 0 ? PortState::invisible : link;
  port->vs_mask = record.ulVsMask;
}

void count(Panel &panel) {
  for (const PanelFrame &frame : panel.frames) {
    for (const auto &board : frame.slots) {
      panel.boards += board ? 1U : 0U;
      for (const PanelPort &port : board ? board->ports : std::vector<PanelPort>{}) {
        ++panel.ports[static_cast<std::size_t>(port.state)];
        for (unsigned id = 0; id < PM_VS_NUM; ++id) {
          panel.vs_ports[id] += port.vs_mask >> id & 1;
        }
      }
    }
  }
}

}  // namespace

const char *name_of(PortState state) {
  constexpr const char *kNames[kPortStates] = {"up", "down", "invisible", "unknown", "absent"};
  return kNames[static_cast<std::size_t>(state)];
}

Panel panel_of(Node &node) {
  const Chassis &chassis = node.chassis();
  Panel panel;
  panel.name = chassis.name;
  for (const auto &side : node.sides()) {
    panel.roles += (panel.roles.empty() ? "" : ", ") + hex(side->cid) +
                   (side.get() == &node.active() ? " active" : " standby");
  }
  for (const Frame &frame : chassis.frames) {
    panel.frames.push_back({frame.id, std::vector<std::optional<PanelBoard>>(frame.slots)});
    for (const Board &board : chassis.boards) {
      if (board.frame == frame.id) {
        const BoardKind &kind = chassis.kinds[board.kind];
        panel.frames.back().slots[board.slot] =
            PanelBoard{kind.name, kind.outer_ports, std::vector<PanelPort>(kind.ports.size())};
      }
    }
  }
  const host::Scope scope(*node.active().instance);
  Links links;
  for (const auto &[key, data] : node.active().host.ddm.records(PM_CLASS_DYNAMIC)) {
    PtpDynPubData record{};
    u32 ptp = 0;
    std::memcpy(&record, data.data(), std::min(data.size(), sizeof record));
    std::memcpy(&ptp, key.data(), std::min(key.size(), sizeof ptp));
    if (record.ucExist != 0) {
      ZEL_ClearWatchDog();
      enter(panel, chassis, links, static_cast<u16>(ptp));
    }
  }
  count(panel);
  return panel;
}

}  // namespace node
