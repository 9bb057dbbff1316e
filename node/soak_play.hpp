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
  // A portable play says the same with every width of pointer, and all host calls of every step.
  explicit Play(bool portable = false);
  // Nothing, or what differs after the step.
  std::optional<Mismatch> step(const Step &step);

  Stage library;
  Stage model;

  std::uint64_t digest() const { return digest_; }  // of all the library's stage has said

 private:
  std::optional<Mismatch> compare() const;

  std::size_t steps_ = 0;
  std::uint64_t digest_ = 0xCBF29CE484222325ULL;
};

}  // namespace soak

#endif
