// Device layer: a model of frames, slots, boards and ports that answers the DEV_ and PTOPO_ calls.
#ifndef HOST_CHASSIS_HPP
#define HOST_CHASSIS_HPP

#include <string>
#include <vector>

#include "platform/base.h"

namespace host {

// Identifiers the device layer knows. Lengths are checked: 1 for the slot count, 2 for the others.
enum : u32 {
  frame_attribute_slots = 5,              // u8
  board_attribute_inner_ports = 0x10007,  // u16
  board_attribute_outer_ports = 0x10008   // u16
};

enum : u8 { port_type_none = 0xFF };

struct Port {
  u8 type = 0;              // device layer's type; port_type_none = none
  bool lan_switch = false;  // wired to the board's LAN switch
  bool e_switch = false;
  u8 hard1 = 0;  // what the topology answers for a wired port
  u8 hard2 = 0;
};

// A board, or the kind of which boards are inserted. Outer ports come first.
struct Board {
  std::string kind;
  u16 outer_ports = 0;
  u16 inner_ports = 0;
  std::vector<Port> ports;  // port n; ports that are missing here have the default Port

  // A board whose ports all have that type.
  static Board of(std::string kind, u16 outer_ports, u16 inner_ports = 0, u8 type = 0);
  Port &port(u8 number);  // made when missing
};

class Chassis {
 public:
  // Board index of a slot unless map() says otherwise: frame x slots_per_frame + slot.
  u16 slots_per_frame = 32;

  void add_frame(u16 frame, u8 slots);
  void remove_frame(u16 frame);  // its boards go with it
  // Frames are counted to the highest one; a larger count can be set (0 = as counted).
  void set_frame_count(u16 count) { frame_count_ = count; }
  u16 frame_count() const;
  bool has_frame(u16 frame) const;
  u8 slots(u16 frame) const;

  // False when there is no such slot. A board that was there is replaced.
  bool insert(u16 frame, u8 slot, Board board);
  bool remove(u16 frame, u8 slot);  // false when there was no board
  // Null when the slot is empty or not there.
  Board *board(u16 frame, u8 slot);
  const Board *board(u16 frame, u8 slot) const;
  Board *board(u16 bindex);
  const Board *board(u16 bindex) const;

  // Gives a slot a board index of its own. Two slots may be given one index: the mapping is then
  // not one-to-one, and the index leads back to the slot mapped last.
  bool map(u16 frame, u8 slot, u16 bindex);
  static constexpr u32 none = 0xFFFFFFFF;
  u32 bindex(u16 frame, u8 slot) const;  // none when there is no such slot
  bool place(u16 bindex, u16 &frame, u8 &slot) const;

  std::size_t boards() const;  // boards present

 private:
  struct Slot {
    u16 bindex = 0;
    bool present = false;
    Board board;
  };
  struct Frame {
    bool exists = false;
    std::vector<Slot> slots;
  };
  Slot *slot(u16 frame, u8 slot);
  const Slot *slot(u16 frame, u8 slot) const;

  std::vector<Frame> frames_;
  std::vector<u32> places_;  // board index -> frame << 8 | slot, or none
  u16 frame_count_ = 0;
};

}  // namespace host

#endif
