// Between the two halves of reading a chassis file.
#ifndef NODE_CHASSIS_FILE_HPP
#define NODE_CHASSIS_FILE_HPP

#include <map>
#include <tuple>

#include "node/chassis.hpp"
#include "node/document.hpp"

namespace node {

struct Loader {
  const Document &document;
  Chassis chassis;
  std::map<unsigned, std::size_t> by_id;  // PTP ID -> position in chassis.ptps
  // Frame, slot, port, ONT (or -1) -> position in chassis.ptps.
  std::map<std::tuple<unsigned, unsigned, unsigned, int>, std::size_t> by_place;

  const Frame *frame(unsigned id) const;
  // The frame, or the port type's position, that a table names under "frame" or "type".
  const Frame &known_frame(const Table &table) const;
  std::size_t port_type(const Table &table) const;
};

// Reads boards and everything that gives, hides, groups or describes PTPs.
void read_ptps(Loader &loader, const Table &root);

}  // namespace node

#endif
