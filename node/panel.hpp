// The front panel: what the chassis looks like from the outside, as the active instance tells it,
// and the picture of it.
#ifndef NODE_PANEL_HPP
#define NODE_PANEL_HPP

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "node/node.hpp"

namespace node {

enum class PortState { up, down, invisible, unknown, absent };
constexpr std::size_t kPortStates = 5;

struct PanelPort {
  PortState state = PortState::absent;  // absent: the port carries no PTP, or one that is gone
  u16 ptp = PM_PTP_ID_NONE;
  std::string type;
  u32 vs_mask = 0;
  unsigned behind = 0;  // PTPs behind the port
  unsigned behind_up = 0;
};

struct PanelBoard {
  std::string kind;
  u16 outer_ports = 0;
  std::vector<PanelPort> ports;  // outer ports first
};

struct PanelFrame {
  u16 id = 0;
  std::vector<std::optional<PanelBoard>> slots;
};

struct Panel {
  std::string name;
  std::string roles;
  std::vector<PanelFrame> frames;
  std::array<unsigned, kPortStates> ports{};   // by state
  std::array<unsigned, PM_VS_NUM> vs_ports{};  // by virtual system
  unsigned boards = 0;
  unsigned behind = 0;
  unsigned behind_up = 0;
};

const char *name_of(PortState state);

// The library is asked; PTPs whose owner says that they are gone are not asked about.
Panel panel_of(Node &node);

// The picture as SVG. The same panel gives the same bytes.
void draw(const Panel &panel, std::ostream &out);

}  // namespace node

#endif
