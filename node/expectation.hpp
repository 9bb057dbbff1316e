// What a script may expect of its last command.
#ifndef NODE_EXPECTATION_HPP
#define NODE_EXPECTATION_HPP

#include "node/console.hpp"

namespace node {

// Does nothing when the expectation is met. Otherwise a CommandError says what was wanted and what
// was got; one that cannot be judged is a CommandError too.
void check_expectation(Console &console, const Arguments &arguments);

}  // namespace node

#endif
