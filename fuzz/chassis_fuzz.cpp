// Chassis files: one line of complaint, or a node that is what the file says.
#include <array>

#include "fuzz/input.hpp"
#include "node/document.hpp"
#include "node/node.hpp"

namespace {

constexpr std::size_t most_ptps = 600;  // a larger node is read but not started

// Every PTP of the file is there, in its place and with its description.
void compare(node::Node &node) {
  const node::Chassis &chassis = node.chassis();
  const auto scope = host::enter(*node.active().instance);
  for (const node::Ptp &ptp : chassis.ptps) {
    HOLDS(PM_LibIfPtpExist(ptp.id) == PM_OK);
    u16 type = 0;
    HOLDS(PM_LibGetTypeFromPTP(ptp.id, &type) == PM_OK);
    HOLDS(type == chassis.port_types[ptp.type].value);
    u32 vs_mask = 0;
    HOLDS(PM_LibGetVsMaskFromPtp(ptp.id, &vs_mask) == PM_OK && vs_mask == ptp.vs_mask);
    if (!ptp.ont) {
      std::array<char, PM_DESC_LEN_MAX + 1> text{};
      HOLDS(PM_LibGetDescFromPTP(ptp.id, text.size(), text.data()) == PM_OK);
      HOLDS(ptp.description.c_str() == std::string(text.data()));
      u16 found = 0;
      HOLDS(PM_LibGetPtpFromFSP(ptp.frame, ptp.slot, ptp.port, &found) == PM_OK);
      HOLDS(found == ptp.id);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char *>(bytes), size);
  node::Chassis chassis;
  try {
    chassis = node::chassis_from(text, "fuzz.toml");
  } catch (const node::InputError &error) {
    const std::string line = error.what();
    HOLDS(line.rfind("fuzz.toml:", 0) == 0 && line.find("; expected ") != std::string::npos);
    return 0;
  }
  if (chassis.ptps.size() > most_ptps) {
    return 0;
  }
  node::Node node(std::move(chassis), {});
  node.start();
  compare(node);
  HOLDS(node.compare().empty());
  for (const auto &side : node.sides()) {
    HOLDS(side->host.misuses.empty() && side->host.watchdog.barks() == 0);
    HOLDS(side->host.ddm.refused() == 0);
  }
  return 0;
}
