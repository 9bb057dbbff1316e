// Shows a start-up: each step on a line, and each data class's batch as a progress bar at a
// terminal, as one line otherwise.
#ifndef NODE_START_VIEW_HPP
#define NODE_START_VIEW_HPP

#include <ostream>

#include "node/node.hpp"

namespace node {

// The stream must outlive the report.
StartReport start_view(std::ostream &out, bool terminal);

}  // namespace node

#endif
