// What happens to the chassis of a running node. Each change is told to both boards in the records
// that the owner of the data would send: live, one after the other, or laid into the data base and
// found there by batches that every instance takes anew.
#ifndef NODE_LIFE_HPP
#define NODE_LIFE_HPP

#include <optional>

#include "node/node.hpp"

namespace node {

enum class Delivery { live, batch };

// How the records fared. `code` is that of the first one an instance refused.
struct Told {
  std::size_t records = 0;
  std::uint64_t refused = 0;
  u32 code = 0;
};

// A change that the chassis does not allow.
struct LifeError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A board comes into an empty slot. The PTPs that were there before come back if they fit the kind;
// otherwise they are forgotten, and every port with a type gets a PTP, from `first` or the end on.
Told insert_board(Node &node, u16 frame, u8 slot, std::size_t kind, std::optional<u16> first,
                  Delivery delivery);
// A board goes; its PTPs no longer exist, their static records stay.
Told remove_board(Node &node, u16 frame, u8 slot, Delivery delivery);

// A PTP comes on a port that has none. Its description is made up from type and place.
Told add_ptp(Node &node, Ptp ptp, Delivery delivery);
// A PTP goes for good. Nothing can tell an instance to forget one PTP's static record; it stays
// there.
Told remove_ptp(Node &node, u16 id, Delivery delivery);
// Its dynamic and its static record say so.
Told change_vs_mask(Node &node, u16 id, u32 mask, Delivery delivery);

// A port type behind all others: the counts, as specification message and record, then its record.
Told add_port_type(Node &node, PortType type, Delivery delivery);

}  // namespace node

#endif
