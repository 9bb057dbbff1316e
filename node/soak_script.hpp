// The steps of a soak: their kinds, how they are drawn from a seed, and how they stand in a file.
#ifndef NODE_SOAK_SCRIPT_HPP
#define NODE_SOAK_SCRIPT_HPP

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "node/soak_stage.hpp"

namespace soak {

// What an argument of a step is, which says how it is drawn.
struct Draw {
  const char *name;
  u32 (*draw)(class Random &random);
};

constexpr std::size_t kMostArguments = 12;
using Arguments = std::array<u32, kMostArguments>;

// A kind of step. Both functions do the same, with the library and with the model.
struct Op {
  const char *name;
  std::vector<Draw> arguments;
  void (*with_library)(Stage &stage, const u32 *arguments);
  void (*with_model)(Stage &stage, const u32 *arguments);
  u32 weight;
};

struct Step {
  const Op *op = nullptr;
  Arguments arguments{};
};
using Script = std::vector<Step>;

// Numbers that are the same for a seed on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed);
  u32 next();
  // 0 to count - 1.
  u32 below(u32 count) { return count == 0 ? 0 : next() % count; }
  bool one_in(u32 count) { return below(count) == 0; }
  template <std::size_t count>
  u32 of(const u32 (&values)[count]) {
    return values[below(count)];
  }

 private:
  std::uint64_t state_;
};

// Kinds of steps that change something, and those that only ask. Weight 0 is never drawn.
const std::vector<Op> &actions();
const std::vector<Op> &questions();
const Op &op_named(const std::string &name);  // throws std::invalid_argument

// A life from its seed: a start, then that many actions with a few questions after each. In a
// portable one memory never runs out: how much was asked for depends on the width of a pointer.
Script life_of(std::uint64_t seed, u32 actions, bool portable = false);

std::string text_of(const Step &step);
Script read_script(std::istream &in);  // throws std::invalid_argument that names the line

}  // namespace soak

#endif
