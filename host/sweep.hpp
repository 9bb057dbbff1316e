// Sweeps: a scene is played once to count what it asks of the host, then once more for every one of
// those calls and every way in which it can fail.
//
//   const host::Use before(node);
//   scene();
//   for (const host::Disturbance &one : before.disturbances(node)) { ... }
//
// and, on a fresh node each time: one.arm(node); scene(); host::Disturbance::disarm(node).
#ifndef HOST_SWEEP_HPP
#define HOST_SWEEP_HPP

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct Node;

// What a function answers when it fails or misleads: each kind of code, a value that is not the
// right one, or success without having written its output.
std::vector<u32> failures_of(Fn fn);

// One thing that goes wrong: the n-th call of a function from now, or (n = 0) every call; the
// instance is lost from the n-th question for it on; or a partition has room for n more blocks
// only.
struct Disturbance {
  std::optional<Fn> fn;
  u32 n = 0;
  u32 value = 0;
  u32 partition = 0;

  std::string text() const;
  void arm(Node &node) const;
  static void disarm(Node &node);
};

// How often each function has been called, and what the partitions have given, at one moment.
class Use {
 public:
  explicit Use(const Node &node);

  // Calls made since, and the functions called.
  u32 calls(const Node &now) const;
  u32 functions(const Node &now) const;
  // Everything that can go wrong with what has been done since.
  std::vector<Disturbance> disturbances(const Node &now) const;

 private:
  std::array<u32, fn_count> calls_{};
  std::array<std::uint64_t, 3> allocations_{};
};

}  // namespace host

#endif
