// The chassis as the host's device layer sees it, and as records of the system's data base.
#include "node/chassis.hpp"

#include <algorithm>
#include <cstring>

namespace node {

u16 Chassis::slots_per_frame() const {
  u16 most = 32;
  for (const Frame &frame : frames) {
    most = std::max<u16>(most, frame.slots);
  }
  return most;
}

const PortType *Chassis::port_type(u16 value) const {
  const auto found = std::find_if(port_types.begin(), port_types.end(),
                                  [&](const PortType &type) { return type.value == value; });
  return found == port_types.end() ? nullptr : &*found;
}

const Board *Chassis::board(u16 frame, u8 slot) const {
  const auto found = std::find_if(boards.begin(), boards.end(), [&](const Board &board) {
    return board.frame == frame && board.slot == slot;
  });
  return found == boards.end() ? nullptr : &*found;
}

host::Chassis device_layer_of(const Chassis &chassis) {
  host::Chassis device_layer;
  device_layer.slots_per_frame = chassis.slots_per_frame();
  for (const Frame &frame : chassis.frames) {
    device_layer.add_frame(frame.id, frame.slots);
  }
  for (const Board &board : chassis.boards) {
    const BoardKind &kind = chassis.kinds[board.kind];
    host::Board device = host::Board::of(kind.name, kind.outer_ports, kind.inner_ports);
    u8 number = 0;
    for (const KindPort &port : kind.ports) {
      host::Port &device_port = device.port(number);
      device_port.type = port.type ? static_cast<u8>(*port.type) : u8{host::port_type_none};
      device_port.lan_switch = port.lan_switch;
      device_port.e_switch = port.e_switch;
      device_port.hard2 = number++;
    }
    device_layer.insert(board.frame, board.slot, std::move(device));
  }
  return device_layer;
}

PmSpec general_specification_of(const Chassis &chassis) {
  PmSpec spec{};
  spec.ulSpec2 = 1;
  spec.ulDescMaxLen = chassis.specification.description_length;
  spec.ulMsgFid = chassis.specification.message_fid;
  spec.ulAttrClassValue = chassis.specification.attribute_class;
  return spec;
}

PmAttrCB ptp_numbers_of(const Chassis &chassis) {
  const auto invisible = std::count_if(chassis.ptps.begin(), chassis.ptps.end(),
                                       [](const Ptp &ptp) { return ptp.invisible; });
  PmAttrCB numbers{};
  numbers.usVisiblePtpNum =
      static_cast<u16>(chassis.ptps.size() - static_cast<std::size_t>(invisible));
  numbers.usOtherPtpNum = static_cast<u16>(invisible);
  numbers.usVirtualPtpNum = chassis.virtual_count;
  numbers.usMaxPtpID = static_cast<u16>(chassis.specification.max_ptp);
  numbers.usExtAreaSize = static_cast<u16>(chassis.specification.extended_area);
  return numbers;
}

PmSubAttrNum port_type_counts_of(const Chassis &chassis) {
  PmSubAttrNum counts{};
  u16 highest = 0;
  for (const PortType &type : chassis.port_types) {
    highest = std::max(highest, type.value);
  }
  counts.usPtpTypeNum = static_cast<u16>(chassis.port_types.size());
  counts.usMaxPtpTypeValue = highest;
  return counts;
}

PmSubInnerSubInfo port_type_record_of(const PortType &type) {
  PmSubInnerSubInfo record{};
  record.usPtpType = type.value;
  record.ucVisible = type.visible ? 1 : 0;
  record.usCapType = type.capability;
  record.usCoClass = type.co_class;
  return record;
}

PtpDynPubData dynamic_record_of(const Chassis &chassis, const Ptp &ptp) {
  PtpDynPubData record{};
  record.usIndex1 = chassis.bindex(ptp.frame, ptp.slot);
  // Behind a port, the second index carries the port in its high and the ONT in its low byte.
  record.usIndex2 = ptp.ont ? static_cast<u16>(ptp.port << 8 | *ptp.ont) : u16{ptp.port};
  record.ucPtpClass = ptp.ont ? u8{PM_PTP_CLASS_OTHER} : u8{PM_PTP_CLASS_PORT};
  record.ucExist = 1;
  record.usPtpType = chassis.port_types[ptp.type].value;
  record.ucInvisible = ptp.invisible ? 1 : 0;
  record.ulVsMask = ptp.vs_mask;
  return record;
}

PtpStaticData static_record_of(const Chassis &chassis, const Ptp &ptp) {
  PtpStaticData record{};
  record.usPtpID = ptp.id;
  record.usBIndex = chassis.bindex(ptp.frame, ptp.slot);
  record.ucPortID = ptp.port;
  record.ucLinkUpDownTrap = ptp.link_trap ? 1 : 0;
  record.usType = chassis.port_types[ptp.type].value;
  record.ucVisible = ptp.invisible ? 1 : 0;
  record.ulVsMask = ptp.vs_mask;
  std::memcpy(record.szDescription, ptp.description.data(),
              std::min<std::size_t>(ptp.description.size(), PM_DESC_LEN_MAX));
  return record;
}

}  // namespace node
