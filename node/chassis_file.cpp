// The chassis file: port types, frames, board kinds, boards and the figures of the specification.
// Which PTPs they carry is worked out in chassis_ptps.cpp.
#include "node/chassis_file.hpp"

#include <algorithm>

namespace node {
namespace {

constexpr unsigned kCidMax = 0xFFFFFFFE;
constexpr unsigned kPtpIdMax = 65'534;
constexpr unsigned kPortTypesMax = 255;
constexpr unsigned kTotalPortsMax = 255;

template <class Items>
void refuse_repeated_name(const Table &table, const Items &items, const std::string &name) {
  if (std::any_of(items.begin(), items.end(),
                  [&](const auto &item) { return item.name == name; })) {
    table.fail(table.at("name"), "'" + name + "' is defined twice", "a name of its own");
  }
}

void read_node(Loader &loader, const Table &root) {
  for (const std::string_view key : {"node", "specification"}) {
    if (!root.has(key)) {
      root.fail(root.at(), "the file lacks [" + std::string(key) + "]", "a table");
    }
  }
  Chassis &chassis = loader.chassis;
  const Table node(loader.document, root.value("node"), "[node]", {"name", "active", "standby"});
  chassis.name = node.text("name");
  chassis.active_cid = node.number("active", 1, kCidMax);
  if (node.has("standby")) {
    chassis.standby_cid = node.number("standby", 1, kCidMax);
    if (chassis.standby_cid == chassis.active_cid) {
      node.fail(node.at("standby"), "'standby' is the identifier of the active instance",
                "an identifier of its own");
    }
  }

  const Table table(
      loader.document, root.value("specification"), "[specification]",
      {"max_ptp", "description_length", "message_fid", "attribute_class", "extended_area"});
  Specification &specification = chassis.specification;
  specification.max_ptp = table.number("max_ptp", 1, kPtpIdMax);
  specification.description_length =
      table.number_or("description_length", 1, PM_DESC_LEN_MAX, specification.description_length);
  specification.message_fid = table.number_or("message_fid", 0, kCidMax, specification.message_fid);
  specification.attribute_class =
      table.number_or("attribute_class", 0, 0xFFFF, specification.attribute_class);
  specification.extended_area =
      table.number_or("extended_area", 0, 0xFFFF, specification.extended_area);
}

void read_port_types(Loader &loader, const Table &root) {
  std::vector<PortType> &types = loader.chassis.port_types;
  for (const Value *value : root.tables("port_type")) {
    const Table table(loader.document, *value, "[[port_type]]",
                      {"name", "value", "visible", "capability", "co_class", "sub_line"});
    PortType type;
    type.name = table.text("name");
    refuse_repeated_name(table, types, type.name);
    type.value = static_cast<u16>(table.number("value", 1, 0xFFFE));
    if (loader.chassis.port_type(type.value) != nullptr) {
      table.fail(table.at("value"),
                 "port type value " + std::to_string(type.value) + " is taken by '" +
                     loader.chassis.port_type(type.value)->name + "'",
                 "a value of its own");
    }
    type.visible = table.flag_or("visible", true);
    type.capability = static_cast<u16>(table.number_or("capability", 0, 0xFFFF, 0));
    type.co_class = static_cast<u16>(table.number_or("co_class", 0, 0xFFFF, 0));
    type.sub_line = table.text_or("sub_line", type.name);
    if (types.size() == kPortTypesMax) {
      table.fail(table.at(), "too many port types", "at most " + std::to_string(kPortTypesMax));
    }
    types.push_back(std::move(type));
  }
}

void read_frames(Loader &loader, const Table &root) {
  for (const Value *value : root.tables("frame")) {
    const Table table(loader.document, *value, "[[frame]]", {"id", "slots"});
    Frame frame;
    frame.id = static_cast<u16>(table.number("id", 0, 255));
    frame.slots = static_cast<u8>(table.number("slots", 1, 255));
    if (loader.frame(frame.id) != nullptr) {
      table.fail(table.at("id"), "frame " + std::to_string(frame.id) + " is defined twice",
                 "an ID of its own");
    }
    loader.chassis.frames.push_back(frame);
  }
}

// One entry of a kind's `ports`: gives its ports a type.
void read_kind_ports(Loader &loader, const Value &value, BoardKind &kind) {
  const Table table(loader.document, value, "an entry of 'ports'",
                    {"ports", "type", "invisible", "link_trap"});
  const std::size_t type = loader.port_type(table);
  const NumberList ports = table.list("ports", 0, static_cast<unsigned>(kind.ports.size()) - 1);
  for (const unsigned number : ports.numbers) {
    KindPort &port = kind.ports[number];
    if (port.type) {
      table.fail(
          ports.at,
          "two PTPs on port " + std::to_string(number) + " of board kind '" + kind.name + "'",
          "each port once");
    }
    port.type = type;
    port.invisible = table.flag_or("invisible", false);
    port.link_trap = table.flag_or("link_trap", true);
  }
}

void read_board_kinds(Loader &loader, const Table &root) {
  for (const Value *value : root.tables("board_kind")) {
    const Table table(loader.document, *value, "[[board_kind]]",
                      {"name", "outer", "inner", "ports", "lan_switch", "e_switch"});
    BoardKind kind;
    kind.name = table.text("name");
    refuse_repeated_name(table, loader.chassis.kinds, kind.name);
    kind.outer_ports = static_cast<u16>(table.number_or("outer", 0, kTotalPortsMax, 0));
    kind.inner_ports =
        static_cast<u16>(table.number_or("inner", 0, kTotalPortsMax - kind.outer_ports, 0));
    kind.ports.resize(std::size_t{kind.outer_ports} + kind.inner_ports);
    if (kind.ports.empty()) {
      table.fail(table.at(), "board kind '" + kind.name + "' has no ports", "'outer' or 'inner'");
    }
    for (const Value *ports : table.tables("ports")) {
      read_kind_ports(loader, *ports, kind);
    }
    const unsigned last = static_cast<unsigned>(kind.ports.size()) - 1;
    if (table.has("lan_switch")) {
      for (const unsigned port : table.list("lan_switch", 0, last).numbers) {
        kind.ports[port].lan_switch = true;
      }
    }
    if (table.has("e_switch")) {
      for (const unsigned port : table.list("e_switch", 0, last).numbers) {
        kind.ports[port].e_switch = true;
      }
    }
    loader.chassis.kinds.push_back(std::move(kind));
  }
}

Chassis load(const Document &document) {
  Loader loader{document, {}, {}, {}};
  const Table root(document, document.root, "the file",
                   {"node", "specification", "virtual_ptps", "description", "port_type", "frame",
                    "board_kind", "board", "ptp", "ont", "virtual_system", "invisible"});
  read_node(loader, root);
  read_port_types(loader, root);
  read_frames(loader, root);
  read_board_kinds(loader, root);
  read_ptps(loader, root);
  return std::move(loader.chassis);
}

}  // namespace

const Frame *Loader::frame(unsigned id) const {
  const auto found = std::find_if(chassis.frames.begin(), chassis.frames.end(),
                                  [&](const Frame &frame) { return frame.id == id; });
  return found == chassis.frames.end() ? nullptr : &*found;
}

std::size_t Loader::port_type(const Table &table) const {
  const std::string name = table.text("type");
  std::string expected;
  for (std::size_t type = 0; type < chassis.port_types.size(); ++type) {
    if (chassis.port_types[type].name == name) {
      return type;
    }
    expected += (expected.empty() ? "" : ", ") + chassis.port_types[type].name;
  }
  table.fail(table.at("type"), "port type '" + name + "' is not defined",
             expected.empty() ? "a [[port_type]]" : expected);
}

const Frame &Loader::known_frame(const Table &table) const {
  const unsigned id = table.number("frame", 0, 255);
  const Frame *known = frame(id);
  if (known == nullptr) {
    table.fail(table.at("frame"), "frame " + std::to_string(id) + " is not defined", "a [[frame]]");
  }
  return *known;
}

Chassis load_chassis(const std::string &file) {
  return load(read_document(file));
}

Chassis chassis_from(std::string_view text, const std::string &file) {
  return load(parse_document(text, file));
}

}  // namespace node
