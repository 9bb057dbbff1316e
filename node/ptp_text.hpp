// Properties of a PTP of the current instance as people read them, for the commands that show PTPs.
#ifndef NODE_PTP_TEXT_HPP
#define NODE_PTP_TEXT_HPP

#include <string>

#include "node/chassis.hpp"

namespace node {

// Each answers the result code's text when the library cannot tell.
std::string place_of(u16 ptp);        // "0/3/5"
std::string description_of(u16 ptp);  // "-" for a PTP that is no physical port

// "?" for a type that the chassis does not name.
std::string type_name_of(const Chassis &chassis, u16 value);
std::string type_name_of_ptp(const Chassis &chassis, u16 ptp);
// "0, 2", or "none".
std::string systems_of(u32 mask);

}  // namespace node

#endif
