// What a node consists of: frames, boards, ports, PTPs and the figures of its specification. Plain
// data; chassis_file.cpp reads it from a file, node.cpp brings it up.
#ifndef NODE_CHASSIS_HPP
#define NODE_CHASSIS_HPP

#include <optional>
#include <string>
#include <vector>

#include "host/chassis.hpp"
#include "pm.h"

namespace node {

// Its position in Chassis::port_types is the suffix.
struct PortType {
  std::string name;
  u16 value = 0;
  bool visible = true;
  u16 capability = 0;
  u16 co_class = 0;
  std::string sub_line;  // the product code that owns the type, for people only
};

struct KindPort {
  std::optional<std::size_t> type;  // position of its port type; none: the port carries no PTP
  bool invisible = false;
  bool link_trap = true;
  bool lan_switch = false;
  bool e_switch = false;
};

struct BoardKind {
  std::string name;
  u16 outer_ports = 0;
  u16 inner_ports = 0;
  std::vector<KindPort> ports;  // outer ports first
};

struct Frame {
  u16 id = 0;
  u8 slots = 0;
};

struct Board {
  std::size_t kind = 0;
  u16 frame = 0;
  u8 slot = 0;
};

struct Ptp {
  u16 id = 0;
  u16 frame = 0;
  u8 slot = 0;
  u8 port = 0;
  std::optional<u8> ont;  // behind the port: a PTP of the second class
  std::size_t type = 0;   // position of its port type
  bool invisible = false;
  bool link_trap = true;
  u32 vs_mask = 1;
  std::string description;
};

struct Specification {
  unsigned max_ptp = 0;
  unsigned description_length = 64;
  unsigned message_fid = PM_COMP_TYPE;
  unsigned attribute_class = 0;
  unsigned extended_area = 0;  // first private dynamic memory identifier
};

struct Chassis {
  std::string name;
  u32 active_cid = 0;
  std::optional<u32> standby_cid;
  Specification specification;
  u16 virtual_first = 0;  // PTP IDs that the owner hands out for virtual PTPs
  u16 virtual_count = 0;
  std::vector<PortType> port_types;
  std::vector<Frame> frames;
  std::vector<BoardKind> kinds;
  std::vector<Board> boards;
  std::vector<Ptp> ptps;  // by rising ID

  u16 slots_per_frame() const;
  u16 bindex(u16 frame, u8 slot) const {
    return static_cast<u16>(frame * slots_per_frame() + slot);
  }
  const PortType *port_type(u16 value) const;
  const Board *board(u16 frame, u8 slot) const;
};

// Reads a chassis file; a fault in it is an InputError that names file, line and column.
Chassis load_chassis(const std::string &file);
// The same from text; `file` is the name used in errors.
Chassis chassis_from(std::string_view text, const std::string &file);

// The same chassis for the host's device layer.
host::Chassis device_layer_of(const Chassis &chassis);

// The records that tell a node of this chassis, as the system's data base delivers them.
PmSpec general_specification_of(const Chassis &chassis);
PmAttrCB ptp_numbers_of(const Chassis &chassis);
PmSubAttrNum port_type_counts_of(const Chassis &chassis);
PmSubInnerSubInfo port_type_record_of(const PortType &type);
PtpDynPubData dynamic_record_of(const Chassis &chassis, const Ptp &ptp);
PtpStaticData static_record_of(const Chassis &chassis, const Ptp &ptp);

}  // namespace node

#endif
