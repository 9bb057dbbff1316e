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
  std::uint64_t digest = 0;  // of a portable play
};

// `limit_seconds` is when a trial counts as endless.
Outcome try_script(const Script &script, unsigned limit_seconds);
// The same of a portable play, which leaves a digest; what the library's stage says goes to a file
// unless its name is empty.
Outcome try_portable(const Script &script, unsigned limit_seconds, const std::string &transcript);

// The shortest script found that still goes wrong: steps are left out as long as that stays so.
Script shrink(Script script, std::size_t failing_step);

}  // namespace soak

#endif
