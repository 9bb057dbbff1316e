// A stage of a soak: two boards of a node, active and standby, and a product, on which either the
// library or the model plays. Both stages get the same steps; what is said on them is compared.
#ifndef NODE_SOAK_STAGE_HPP
#define NODE_SOAK_STAGE_HPP

#include <array>
#include <string>
#include <vector>

#include "host/host.hpp"
#include "pm.h"

namespace soak {

// The product's functions are the same on both stages; each says on the current stage that it was
// called, and answers what the stage's product is set to.
struct Product {
  static constexpr u32 kFunctions = 6;
  static constexpr u32 kVariants = 3;
  struct Behaviour {
    u32 answer = 0;
    u32 ticks = 0;
    u32 deed = 0;  // 1 = unbooks itself, 2 = unbooks its successor's function, 3 = books another
    u16 type = 0;  // port type of the deed
  };
  std::array<Behaviour, kFunctions> booked{};
  u32 callback_answer = 0;
  bool writes_on_failure = false;
  u32 hook_answer = 0;
  u32 phase_answer = 0;
  u32 class_answer = 0;
  std::vector<PmSubLineInfo> sub_lines;  // registered by the configuration hook
};

PmBookFunc booked_function(u32 number);  // 1 to kFunctions; 0 and others: null
PmSubCallBack callbacks_of(u32 variant, u32 present);
PmSubLineInfo sub_line_of(u16 type, u32 pid, u32 variant, u32 present);
PmPtpClassFunc class_functions(u32 variant);
PmProductMngt hooks_of(u32 present);  // bit n = slot n is filled
PmWord completion_function();

// What the product and the driver call of the library or the model.
struct Player {
  u32 (*register_info)();
  u32 (*fid_init)(u32);
  u32 (*register_sub_line)(const PmSubLineInfo *);
  u32 (*book)(u16, u16, PmBookFunc);
  u32 (*unbook)(u16, u16, PmBookFunc);
  void *(*service)(const char *);
};

class Stage {
 public:
  // A portable one leaves out what depends on the width of a pointer.
  Stage(const Player &player, bool portable);

  static constexpr std::size_t kSides = 2;
  host::Node nodes[kSides];
  host::Instance *instances[kSides] = {};
  std::size_t side = 0;
  const Player player;
  const bool portable;
  Product product;
  std::string said;
  u32 booked_depth = 0;
  u32 fault_steps = 0;  // steps until the faults are cleared

  host::Node &node() { return nodes[side]; }
  host::Instance *instance() { return instances[side]; }

  void say(const char *what, std::initializer_list<u32> values);
  void say_bytes(const char *what, const void *bytes, std::size_t size);
  void say_slots(const PmSubCallBack &slots);
  // The host calls between on and off, with their arguments.
  void watch_calls(bool on);
  // What the host's parts have been asked to do since the last time.
  void say_host_effects();
  void remove_instance();

 private:
  std::size_t side_of(const host::Node &node) const { return &node == &nodes[0] ? 0 : 1; }
  void say_parameter(const host::SentParameter &sent);

  std::size_t slow_calls[kSides] = {};  // already said
};

// The stage on which something runs now.
extern Stage *current_stage;

}  // namespace soak

#endif
