// The kinds of steps, by family: those that change something and those that only ask.
#ifndef NODE_SOAK_ACTIONS_HPP
#define NODE_SOAK_ACTIONS_HPP

#include "node/soak_ops.hpp"

namespace soak {

std::vector<Op> life_actions();
std::vector<Op> record_actions();
std::vector<Op> event_actions();
std::vector<Op> remote_actions();

std::vector<Op> store_questions();
std::vector<Op> identity_questions();
std::vector<Op> type_questions();
std::vector<Op> live_questions();
std::vector<Op> walk_questions();

}  // namespace soak

#endif
