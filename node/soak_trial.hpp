// Plays a script in a process of its own, so that every trial begins with a fresh library, and a
// crash or an endless loop is a finding like any other.
#ifndef NODE_SOAK_TRIAL_HPP
#define NODE_SOAK_TRIAL_HPP

#include "node/soak_play.hpp"

namespace soak {

struct Outcome {
  std::optional<Mismatch> mismatch;
  std::size_t steps = 0;  // played
  double seconds = 0;
};

// `limit_seconds` is when a trial counts as endless.
Outcome try_script(const Script &script, unsigned limit_seconds);

// The shortest script found that still goes wrong: steps are left out as long as that stays so.
Script shrink(Script script, std::size_t failing_step);

}  // namespace soak

#endif
