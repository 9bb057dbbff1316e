// A desk node, brought up anew for every input.
#ifndef FUZZ_DESK_HPP
#define FUZZ_DESK_HPP

#include "fuzz/input.hpp"
#include "node/document.hpp"
#include "node/node.hpp"

namespace fuzz {

// Started without products, so that nothing but the file under test decides.
class Desk {
 public:
  node::Node node;

  Desk() : node(chassis(), {}) { node.start(); }
  ~Desk() {
    for (const auto &side : node.sides()) {
      HOLDS(side->host.misuses.empty());
      HOLDS(side->host.memory.check() == 0);
    }
  }
  Desk(const Desk &) = delete;
  Desk &operator=(const Desk &) = delete;

 private:
  static const node::Chassis &chassis() {
    static const node::Chassis read = node::load_chassis(PM_SOURCE_DIR "/fuzz/desk.toml");
    return read;
  }
};

}  // namespace fuzz

#endif
