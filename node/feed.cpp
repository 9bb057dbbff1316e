#include "node/feed.hpp"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "node/numerals.hpp"

namespace node {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char *kFormat = "pmnode-feed";
constexpr unsigned kVersion = 2;
constexpr unsigned kFirstVersion = 1;      // feeds
constexpr unsigned kRecordingVersion = 2;  // and recordings
constexpr std::size_t kPrimitiveBytes = sizeof(PmPrimMsg);

// One line of a feed, to complain about.
struct Line {
  const std::string &file;
  unsigned number;

  [[noreturn]] void fail(const std::string &what, const std::string &expected) const {
    throw InputError(file + ":" + std::to_string(number) + ": " + what + "; expected " + expected);
  }
};

// A number as such, or as a string such as "0x360011".
u32 number_in(const Line &line, const Json &json, const char *name) {
  const auto found = json.find(name);
  const std::string expected = std::string("'") + name + "', a number or \"0x..\" of 32 bits";
  if (found == json.end()) {
    line.fail("the number is missing", expected);
  }
  if (found->is_number_unsigned() && found->get<std::uint64_t>() <= 0xFFFFFFFF) {
    return found->get<u32>();
  }
  if (found->is_string()) {
    if (const auto number = number_of(found->get<std::string>())) {
      return *number;
    }
  }
  line.fail("'" + std::string(name) + "' is " + found->dump(), expected);
}

host::Bytes bytes_of(const Line &line, const Json &json, const char *name) {
  const auto found = json.find(name);
  const std::string expected = std::string("'") + name + "', a string of hexadecimal bytes";
  if (found == json.end()) {
    line.fail("the bytes are missing", expected);
  }
  if (found->is_string()) {
    if (auto bytes = bytes_of_hex(found->get<std::string>())) {
      return *bytes;
    }
  }
  line.fail("'" + std::string(name) + "' is " + found->dump(), expected);
}

void refuse_other_members(const Line &line, const Json &json,
                          std::initializer_list<std::string_view> known) {
  for (const auto &member : json.items()) {
    if (std::find(known.begin(), known.end(), member.key()) != known.end()) {
      continue;
    }
    std::string expected;
    for (const std::string_view name : known) {
      expected += (expected.empty() ? "" : ", ") + std::string(name);
    }
    line.fail("unknown member '" + member.key() + "'", expected);
  }
}

// Lines are flat. One that is nested is given up while it is read: however deep it goes, nothing
// has to follow it there.
Json read_json(const std::string &text, bool &flat) {
  const auto is_flat = [&flat](int depth, Json::parse_event_t event, const Json &) {
    const bool opens =
        event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
    flat = flat && !(opens && depth > 0);
    return flat;
  };
  return Json::parse(text, is_flat, false);
}

Json parse(const Line &line, const std::string &text) {
  bool flat = true;
  Json json = read_json(text, flat);
  if (!flat) {
    line.fail("the line is nested", "one JSON object of numbers and texts");
  }
  if (!json.is_object()) {
    line.fail("the line is damaged", "one JSON object");
  }
  return json;
}

// Answers the version.
unsigned read_header(const Line &line, const std::string &text) {
  const std::string expected = std::string(R"({"format": ")") + kFormat + R"(", "version": )" +
                               std::to_string(kFirstVersion) + " or " + std::to_string(kVersion) +
                               "}";
  bool flat = true;
  const Json json = read_json(text, flat);
  if (!flat || !json.is_object() || json.value("format", Json()) != kFormat) {
    line.fail("the file is no feed", expected);
  }
  const Json version = json.value("version", Json());
  if (version != kFirstVersion && version != kVersion) {
    line.fail("version " + version.dump() + " of the format is not known", expected);
  }
  return version.get<unsigned>();
}

std::string text_of(const Line &line, const Json &json, const char *name) {
  const auto found = json.find(name);
  if (found == json.end() || !found->is_string()) {
    line.fail("there is no text", std::string("'") + name + "', a string");
  }
  return found->get<std::string>();
}

// The two kinds of line that only recordings have; false for any other line.
bool read_recorded(const Line &line, const Json &json, FeedItem &item) {
  if (json.contains("command")) {
    refuse_other_members(line, json, {"command", "from"});
    item.kind = FeedItem::Kind::command;
    item.text = text_of(line, json, "command");
    const auto source = source_of(text_of(line, json, "from"));
    if (!source) {
      line.fail("'from' is " + json["from"].dump(), "script, pipe or prompt");
    }
    item.source = *source;
    return true;
  }
  if (json.contains("entered")) {
    refuse_other_members(line, json,
                         {"entered", "board", "instance", "id", "name", "key", "data", "answer"});
    item.kind = FeedItem::Kind::entered;
    item.text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    return true;
  }
  return false;
}

FeedItem item_of(const Line &line, const std::string &text, unsigned version) {
  const Json json = parse(line, text);
  FeedItem item;
  item.line = line.number;
  if (version >= kRecordingVersion && read_recorded(line, json, item)) {
    return item;
  }
  if (json.contains("spec")) {
    refuse_other_members(line, json, {"spec", "data"});
    item.kind = FeedItem::Kind::spec;
    item.id = number_in(line, json, "spec");
    item.data = bytes_of(line, json, "data");
  } else if (json.contains("class")) {
    refuse_other_members(line, json, {"class", "key", "data"});
    item.kind = FeedItem::Kind::record;
    item.id = number_in(line, json, "class");
    item.key = host::bytes_of_u32(number_in(line, json, "key"));
    item.data = bytes_of(line, json, "data");
  } else if (json.contains("primitive")) {
    refuse_other_members(line, json, {"primitive"});
    item.kind = FeedItem::Kind::primitive;
    item.data = bytes_of(line, json, "primitive");
    if (item.data.size() != kPrimitiveBytes) {
      line.fail("the primitive has " + std::to_string(item.data.size()) + " bytes",
                std::to_string(kPrimitiveBytes));
    }
  } else if (json.contains("message")) {
    refuse_other_members(line, json, {"message"});
    item.kind = FeedItem::Kind::message;
    item.data = bytes_of(line, json, "message");
    // The framework reads a message's header, and a debug-window message has 36 bytes.
    if (item.data.size() < sizeof(PmDbwinMsg)) {
      line.fail("the message has " + std::to_string(item.data.size()) + " bytes",
                "at least " + std::to_string(sizeof(PmDbwinMsg)));
    }
  } else if (json.contains("ticks")) {
    refuse_other_members(line, json, {"ticks"});
    item.kind = FeedItem::Kind::ticks;
    item.id = number_in(line, json, "ticks");
  } else {
    line.fail("the line says nothing known",
              version >= kRecordingVersion
                  ? "spec, class, primitive, message, ticks, command or entered"
                  : "spec, class, primitive, message or ticks");
  }
  return item;
}

u32 apply(Node &node, const FeedItem &item) {
  switch (item.kind) {
    case FeedItem::Kind::spec:
      return node.publish_spec(item.id, item.data);
    case FeedItem::Kind::record:
      return node.publish(item.id, item.key, item.data);
    case FeedItem::Kind::primitive: {
      PmPrimMsg message;
      std::copy(item.data.begin(), item.data.end(), reinterpret_cast<u8 *>(&message));
      const host::Scope scope(*node.active().instance);
      return PM_PrimMsgProc(&message);
    }
    case FeedItem::Kind::message: {
      host::Bytes message = item.data;
      Side &side = node.active();
      return side.host.root.send_message(*side.instance, message.data());
    }
    case FeedItem::Kind::command:
    case FeedItem::Kind::entered:
      return 0;  // the business of a replay
    case FeedItem::Kind::ticks:
      for (const auto &side : node.sides()) {
        side->host.clock.advance(item.id);
      }
      return 0;
  }
  return 0;
}

}  // namespace

std::string feed_header() {
  return Json{{"format", kFormat}, {"version", kVersion}}.dump();
}

bool is_recording(const std::vector<FeedItem> &items) {
  return std::any_of(items.begin(), items.end(), [](const FeedItem &item) {
    return item.kind == FeedItem::Kind::command || item.kind == FeedItem::Kind::entered;
  });
}

std::vector<FeedItem> read_feed(const std::string &file) {
  std::ifstream stream(file);
  if (!stream) {
    throw InputError(file + ": cannot be opened; expected a feed");
  }
  return feed_from(stream, file);
}

std::vector<FeedItem> feed_from(std::istream &lines, const std::string &file) {
  std::vector<FeedItem> items;
  std::string text;
  unsigned number = 0;
  unsigned version = 0;
  while (std::getline(lines, text)) {
    ++number;
    if (number == 1) {
      version = read_header({file, number}, text);
    } else if (!text.empty()) {
      items.push_back(item_of({file, number}, text, version));
    }
  }
  if (number == 0) {
    read_header({file, 1}, "");
  }
  return items;
}

std::size_t apply_feed(Node &node, const std::vector<FeedItem> &items) {
  std::size_t refused = 0;
  for (const FeedItem &item : items) {
    if (apply(node, item) != 0) {
      ++refused;
    }
    node.settle();
  }
  return refused;
}

}  // namespace node
