#include "node/feed.hpp"

#include <algorithm>

#include "node/feed_line.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

using Json = FeedLine::Json;
using Kind = FeedItem::Kind;

constexpr const char *kFormat = "pmnode-feed";
constexpr unsigned kFirstVersion = 1;      // feeds
constexpr unsigned kRecordingVersion = 2;  // and recordings
constexpr unsigned kVersion = kSelfContainedVersion;
constexpr std::size_t kPrimitiveBytes = sizeof(PmPrimMsg);

// Version and width of the machine.
Feed read_header(const std::string &file, const std::string &text) {
  const std::string expected = std::string(R"({"format": ")") + kFormat + R"(", "version": )" +
                               std::to_string(kFirstVersion) + " to " + std::to_string(kVersion) +
                               "}";
  bool flat = true;
  const auto is_flat = [&flat](int depth, Json::parse_event_t event, const Json &) {
    flat = flat && (depth == 0 || (event != Json::parse_event_t::object_start &&
                                   event != Json::parse_event_t::array_start));
    return flat;
  };
  const Json json = Json::parse(text, is_flat, false);
  const auto fail = [&](const std::string &what) {
    throw InputError(file + ":1: " + what + "; expected " + expected);
  };
  if (!flat || !json.is_object() || json.value("format", Json()) != kFormat) {
    fail("the file is no feed");
  }
  const Json version = json.value("version", Json());
  if (!version.is_number_unsigned() || version < kFirstVersion || version > kVersion) {
    fail("version " + version.dump() + " of the format is not known");
  }
  const FeedLine line(file, 1, text);
  line.refuse_members_but({"format", "version", "bits"});
  return {version.get<unsigned>(), line.has("bits") ? line.number("bits") : 0, {}};
}

void read_applied(const FeedLine &line, unsigned version, FeedItem &item) {
  if (line.has("spec")) {
    line.refuse_members_but({"spec", "data"});
    item.kind = Kind::spec;
    item.id = line.number("spec");
    item.data = line.bytes("data");
  } else if (line.has("class")) {
    line.refuse_members_but({"class", "key", "data"});
    item.kind = Kind::record;
    item.id = line.number("class");
    item.key = host::bytes_of_u32(line.number("key"));
    item.data = line.bytes("data");
  } else if (line.has("primitive")) {
    line.refuse_members_but({"primitive"});
    item.kind = Kind::primitive;
    item.data = line.bytes("primitive");
    if (item.data.size() != kPrimitiveBytes) {
      line.fail("the primitive has " + std::to_string(item.data.size()) + " bytes",
                std::to_string(kPrimitiveBytes));
    }
  } else if (line.has("message")) {
    line.refuse_members_but({"message"});
    item.kind = Kind::message;
    item.data = line.bytes("message");
    // The framework reads a message's header, and a debug-window message has 36 bytes.
    if (item.data.size() < sizeof(PmDbwinMsg)) {
      line.fail("the message has " + std::to_string(item.data.size()) + " bytes",
                "at least " + std::to_string(sizeof(PmDbwinMsg)));
    }
  } else if (line.has("ticks")) {
    line.refuse_members_but({"ticks"});
    item.kind = Kind::ticks;
    item.id = line.number("ticks");
  } else {
    const std::string in_recordings = version >= kSelfContainedVersion
                                          ? ", command, entered, file or figures"
                                          : ", command or entered";
    line.fail("the line says nothing known",
              version >= kRecordingVersion
                  ? "spec, class, primitive, message, ticks" + in_recordings
                  : "spec, class, primitive, message or ticks");
  }
}

u32 apply(Node &node, const FeedItem &item) {
  switch (item.kind) {
    case Kind::spec:
      return node.publish_spec(item.id, item.data);
    case Kind::record:
      return node.publish(item.id, item.key, item.data);
    case Kind::primitive: {
      PmPrimMsg message;
      std::copy(item.data.begin(), item.data.end(), reinterpret_cast<u8 *>(&message));
      const host::Scope scope(*node.active().instance);
      return PM_PrimMsgProc(&message);
    }
    case Kind::message: {
      host::Bytes message = item.data;
      Side &side = node.active();
      return side.host.root.send_message(*side.instance, message.data());
    }
    case Kind::ticks:
      for (const auto &side : node.sides()) {
        side->host.clock.advance(item.id);
      }
      return 0;
    case Kind::command:
    case Kind::entered:
    case Kind::file:
    case Kind::figures:
      return 0;  // the business of a replay
  }
  return 0;
}

}  // namespace

bool Feed::is_recording() const {
  return std::any_of(items.begin(), items.end(), [](const FeedItem &item) {
    return item.kind == Kind::command || item.kind == Kind::entered;
  });
}

std::string recording_header() {
  return Json{{"format", kFormat}, {"version", kVersion}, {"bits", kBits}}.dump();
}

Feed read_feed(const std::string &file) {
  std::ifstream stream = open_input(file, "a feed");
  return feed_from(stream, file);
}

Feed feed_from(std::istream &lines, const std::string &file) {
  std::string text;
  std::getline(lines, text);
  Feed feed = read_header(file, text);
  for (unsigned number = 2; std::getline(lines, text); ++number) {
    if (text.empty()) {
      continue;
    }
    const FeedLine line(file, number, text);
    FeedItem item;
    item.line = number;
    if (feed.version < kRecordingVersion || !read_recorded(line, feed.version, item)) {
      read_applied(line, feed.version, item);
    }
    feed.items.push_back(std::move(item));
  }
  return feed;
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
