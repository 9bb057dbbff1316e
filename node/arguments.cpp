// Readers of commands' arguments, and result codes as text.
#include <algorithm>

#include "node/console.hpp"
#include "node/numerals.hpp"
#include "node/suggestion.hpp"

namespace node {
namespace {

constexpr u32 kOctet = 0xFF;

// Codes of the host that the library passes on.
constexpr std::pair<u32, const char *> kHostCodes[] = {
    {host::code_unknown, "not known to the host"},
    {host::code_no_frame, "no such frame or slot"},
    {host::code_no_board, "no such board"},
    {host::code_no_port, "no such port"},
    {host::code_unreachable, "the owner cannot be reached"},
    {host::code_no_ptp, "the owner knows no such PTP"},
    {host::code_in_deletion, "being deleted"},
    {host::code_full, "nothing left to hand out"},
    {host::code_refused, "refused"}};

// The texts between the slashes; a CommandError unless there are that many.
std::vector<std::string> parts_of(const std::string &text, std::size_t count,
                                  const char *expected) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
    end = text.find('/', begin);
    parts.push_back(text.substr(begin, end - begin));
  }
  if (parts.size() != count) {
    throw CommandError("'" + text + "' is no place; expected " + expected);
  }
  return parts;
}

template <class Integer>
Integer part_argument(const std::string &text, std::string_view what) {
  return static_cast<Integer>(number_argument(text, 0, kOctet, what));
}

}  // namespace

u32 number_argument(const std::string &text, u32 lowest, u32 highest, std::string_view what) {
  const auto number = number_of(text);
  if (!number || *number < lowest || *number > highest) {
    throw CommandError("'" + text + "' is no " + std::string(what) + "; expected " +
                       std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return *number;
}

host::Bytes bytes_argument(const std::string &text, std::string_view what) {
  auto bytes = bytes_of_hex(text);
  if (!bytes) {
    throw CommandError("'" + text + "' is no " + std::string(what) +
                       "; expected bytes as pairs of hexadecimal digits");
  }
  return std::move(*bytes);
}

Place place_argument(const std::string &text) {
  const std::vector<std::string> parts = parts_of(text, 3, "FRAME/SLOT/PORT");
  return {part_argument<u16>(parts[0], "frame"), part_argument<u8>(parts[1], "slot"),
          part_argument<u8>(parts[2], "port")};
}

u16 ptp_argument(Console &console, const std::string &text) {
  if (text.find('/') == std::string::npos) {
    return static_cast<u16>(number_argument(text, 0, 0xFFFE, "PTP ID"));
  }
  const Place place = place_argument(text);
  const host::Scope scope(*console.node().active().instance);
  u16 ptp = 0;
  if (const u32 code = PM_LibGetPtpFromFSP(place.frame, place.slot, place.port, &ptp)) {
    throw CommandError("no PTP at " + text + ": " + result_text(code));
  }
  return ptp;
}

u16 type_argument(Console &console, const std::string &text) {
  const std::vector<PortType> &types = console.node().chassis().port_types;
  const auto named = std::find_if(types.begin(), types.end(),
                                  [&](const PortType &type) { return type.name == text; });
  return named != types.end() ? named->value
                              : static_cast<u16>(number_argument(text, 0, 0xFFFF, "port type"));
}

u16 board_argument(Console &console, const std::string &text) {
  if (text.find('/') == std::string::npos) {
    return static_cast<u16>(number_argument(text, 0, 0xFFFE, "board index"));
  }
  const std::vector<std::string> parts = parts_of(text, 2, "FRAME/SLOT");
  return console.node().chassis().bindex(part_argument<u16>(parts[0], "frame"),
                                         part_argument<u8>(parts[1], "slot"));
}

PmFspOntid object_argument(const std::string &text) {
  const std::vector<std::string> parts = parts_of(text, 4, "FRAME/SLOT/PORT/ONT");
  PmFspOntid object{};
  object.usFrameID = part_argument<u16>(parts[0], "frame");
  object.ucSlotID = part_argument<u8>(parts[1], "slot");
  object.ucPortID = part_argument<u8>(parts[2], "port");
  object.ulOntID = number_argument(parts[3], 0, 0xFFFFFFFF, "ONT ID");
  return object;
}

host::Fn function_argument(const std::string &text) {
  const auto fn = host::find_fn(text);
  if (text.empty()) {
    throw CommandError("the host function is missing; expected the name of one of platform/");
  }
  if (!fn) {
    throw CommandError("'" + text + "' is no host function; expected one of platform/" +
                       suggestion(text, function_names()));
  }
  return *fn;
}

std::vector<std::string_view> function_names() {
  std::vector<std::string_view> names;
  for (const host::FnInfo &info : host::fn_infos) {
    names.emplace_back(info.name);
  }
  return names;
}

std::string text_argument(const Arguments &arguments, std::size_t first) {
  std::string text;
  for (std::size_t position = first; position < arguments.size(); ++position) {
    text += (position == first ? "" : " ") + arguments[position];
  }
  return text;
}

std::string result_text(u32 code) {
  if (code == PM_OK) {
    return "ok";
  }
  for (const auto &[host_code, text] : kHostCodes) {
    if (code == host_code) {
      return std::string(text) + " (" + hex(code) + ")";
    }
  }
#define NODE_RESULT_NAME(name, value, text) \
  if (code == (value)) return #name " (" + hex(code) + ")";
  PM_RESULT_LIST(NODE_RESULT_NAME)
#undef NODE_RESULT_NAME
  return hex(code);
}

std::string result_name(u32 code) {
  const std::string text = result_text(code);
  const std::size_t bracket = text.find(" (");
  return bracket == std::string::npos ? "-" : text.substr(0, bracket);
}

}  // namespace node
