#include "live_ports.hpp"

#include <map>

#include "platform/root.h"

namespace product {
LivePort &live_port(u16 ptp) {
  static std::map<u32, std::map<u16, LivePort>> ports_of_instances;
  return ports_of_instances[ROOT_LibGetCurrentCID()][ptp];
}

}  // namespace product
