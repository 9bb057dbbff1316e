// Plays a script on both stages and compares them after every step.
#ifndef NODE_SOAK_PLAY_HPP
#define NODE_SOAK_PLAY_HPP

#include <optional>
#include <string>

#include "node/soak_script.hpp"

namespace soak {

struct Mismatch {
  std::size_t step = 0;  // index in the script
  std::string expected;  // lines of the model
  std::string got;       // of the library
};

class Play {
 public:
  Play();
  // Nothing, or what differs after the step.
  std::optional<Mismatch> step(const Step &step);

  Stage library;
  Stage model;

 private:
  std::optional<Mismatch> compare() const;
};

}  // namespace soak

#endif
