// Commands that ask the active instance: nothing changes by them.
#include <algorithm>

#include "node/console.hpp"
#include "node/ptp_text.hpp"

namespace node {
namespace {

// PTPs that a question over all of them passes before it feeds the watchdog.
constexpr u32 kPtpsPerFeed = 512;
constexpr u32 kListedByDefault = 20;

// Calls `visit` for every PTP ID while the active instance is current.
template <class Visit>
void for_every_ptp(Visit visit) {
  const u32 highest = PM_LibGetMaxPtpID();
  for (u32 ptp = 0; ptp <= highest; ++ptp) {
    if (ptp % kPtpsPerFeed == 0) {
      ZEL_ClearWatchDog();
    }
    visit(static_cast<u16>(ptp));
  }
}

Answer run_status(Console &console, const Arguments &) {
  Node &node = console.node();
  const Chassis &chassis = node.chassis();
  Answer answer;
  answer.field("node", chassis.name);
  std::string products;
  for (const Product &product : node.products()) {
    products += (products.empty() ? "" : ", ") + product.file.substr(product.file.rfind('/') + 1);
  }
  answer.field("products", products.empty() ? "none" : products);
  answer.field("frames", chassis.frames.size()).field("boards", chassis.boards.size());
  Rows &instances = answer.rows("instances", {"instance", "role", "ptps", "visible", "sub_lines",
                                              "published", "errors", "tick"});
  for (const auto &side : node.sides()) {
    const host::Scope scope(*side->instance);
    u32 existing = 0;
    u32 visible = 0;
    for_every_ptp([&](u16 ptp) {
      if (PM_LibIfPtpExist(ptp) != PM_OK) {
        return;
      }
      ++existing;
      if (PM_LibIsPtpVisible(ptp) == PM_OK) {
        ++visible;
      }
    });
    u16 sub_lines = 0;
    PM_LibCfgGetPtpTypeNum(&sub_lines);
    instances.add(Hex{side->cid}, side->instance->active ? "active" : "standby", existing, visible,
                  sub_lines, side->host.root.publications().size(), side->host.errors.total(),
                  side->host.clock.now());
  }
  return answer;
}

Answer run_vs(Console &console, const Arguments &arguments) {
  const u32 id = number_argument(arguments[0], 0, PM_VS_NUM - 1, "virtual system");
  const u32 listed = arguments.size() > 1
                         ? number_argument(arguments[1], 0, 0xFFFF, "number of PTPs")
                         : kListedByDefault;
  const host::Scope scope(*console.node().active().instance);
  std::vector<u16> members;
  u32 only_there = 0;
  for_every_ptp([&](u16 ptp) {
    if (PM_LibIfPtpInVs(ptp, id) != PM_OK) {
      return;
    }
    members.push_back(ptp);
    if (PM_LibIfPtpOnlyInOneVs(ptp, id) == PM_OK) {
      ++only_there;
    }
  });
  Answer answer;
  answer.field("virtual_system", id).field("ptps", members.size()).field("in_no_other", only_there);
  const std::size_t shown = std::min<std::size_t>(members.size(), listed);
  Rows &rows = answer.rows("first_ptps", {"ptp", "place", "type_name", "visible", "description"});
  for (std::size_t position = 0; position < shown; ++position) {
    const u16 ptp = members[position];
    rows.add(ptp, place_of(ptp), type_name_of_ptp(console.node().chassis(), ptp),
             PM_LibIsPtpVisible(ptp) == PM_OK, description_of(ptp));
  }
  if (shown < members.size()) {
    answer.remark("and " + std::to_string(members.size() - shown) + " more: vs " +
                  std::to_string(id) + " COUNT lists as many as you like");
  }
  return answer;
}

Answer run_spec(Console &console, const Arguments &) {
  const host::Scope scope(*console.node().active().instance);
  Answer answer;
  answer.field("max_ptp", PM_LibGetMaxPtpID())
      .field("ptps_by_specification", PM_LibGetPtpMaxNum())
      .field("description_length", PM_GetPmSpec(PM_SPEC_INDEX_DESC_MAX_LEN))
      .field("message_fid", PM_GetPmSpec(PM_SPEC_INDEX_MSG_FID))
      .field("attribute_class", PM_GetPmSpec(PM_SPEC_INDEX_ATTR_CLASS))
      .field("max_port_type", PM_LibGetPtpMaxTypeValue());
  Rows &rows = answer.rows("port_types", {"suffix", "type", "type_name", "visible",
                                          "capability_type", "co_class", "known", "sub_line"});
  u16 suffix = 0;
  for (const PortType &type : console.node().chassis().port_types) {
    rows.add(suffix++, type.value, type.name, type.visible, type.capability, type.co_class,
             PM_LibIsPtpTypeValid(type.value) == PM_OK, type.sub_line);
  }
  return answer;
}

constexpr Command kCommands[] = {
    {"status", "", "what the node consists of, its instances and their roles", "", 0, 0,
     run_status},
    {"vs", "ID [COUNT]", "the PTPs of a virtual system: how many, and the first of them",
     "  COUNT is the number of PTPs to list, 20 if it is left out.", 1, 2, run_vs},
    {"spec", "", "the specification: limits, and the port types with their suffixes", "", 0, 0,
     run_spec}};

}  // namespace

std::span<const Command> query_commands() {
  return kCommands;
}

}  // namespace node
