// pmnode soak: a random but replayable life of a node, checked at every step.
#ifndef NODE_SOAK_HPP
#define NODE_SOAK_HPP

#include <ostream>

namespace soak {

// The whole command; the first argument is the word "soak". Answers the exit code: 0 the library
// agrees with the model, 1 it does not, 2 bad input.
int soak_main(int count, char **arguments, std::ostream &out, std::ostream &complaints);

}  // namespace soak

#endif
