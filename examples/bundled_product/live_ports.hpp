// What this product's hardware would know: the live state of the ports. Here a small model stands
// in its place; it is kept per library instance, because every instance of the process sees its own
// events.
#ifndef BUNDLED_PRODUCT_LIVE_PORTS_HPP
#define BUNDLED_PRODUCT_LIVE_PORTS_HPP

#include "pm.h"

namespace product {

struct LivePort {
  bool link_up = false;
  bool admin_up = true;
  u32 link_changes = 0;
};

// The port's state in the current instance; a port that has had no event yet is down.
LivePort &live_port(u16 ptp);

}  // namespace product

#endif
