#include "node/feed_line.hpp"

#include <algorithm>
#include <set>

#include "node/document.hpp"
#include "node/feed.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

using Json = FeedLine::Json;

void read_entered(const FeedLine &line) {
  const std::string kind = line.text("entered");
  if (std::find(std::begin(kEntryNames), std::end(kEntryNames), kind) == std::end(kEntryNames)) {
    std::string names;
    for (const std::string_view name : kEntryNames) {
      names += (names.empty() ? "" : ", ") + std::string(name);
    }
    line.fail("'entered' is \"" + kind + "\"", "one of " + names);
  }
  for (const char *name : {"board", "instance", "id", "answer"}) {
    line.number(name);
  }
  for (const char *name : {"key", "data"}) {
    line.has(name) ? line.bytes(name) : host::Bytes();
  }
  if (line.has("name")) {
    line.text("name");
  }
}

Source source_in(const FeedLine &line) {
  const auto source = source_of(line.text("from"));
  if (!source) {
    line.fail("'from' is " + line.json()["from"].dump(), "script, pipe or prompt");
  }
  return *source;
}

}  // namespace

FeedLine::FeedLine(const std::string &file, unsigned number, const std::string &text)
    : file_(file), number_(number) {
  std::set<std::string> names;
  std::string twice;
  bool flat = true;
  const auto watch = [&](int depth, Json::parse_event_t event, const Json &parsed) {
    // A text of bytes in a list is the deepest there is. What goes deeper is given up while it is
    // read: nothing has to follow it there.
    constexpr int kDeepest = 2;
    const bool opens =
        event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
    flat = flat && !(opens && depth > kDeepest);
    if (!flat) {
      return false;
    }
    if (event == Json::parse_event_t::key && depth == 1 &&
        !names.insert(parsed.get<std::string>()).second) {
      twice = parsed.get<std::string>();
    }
    return true;
  };
  json_ = Json::parse(text, watch, false);
  if (!flat) {
    fail("the line is nested", "one JSON object of numbers and texts");
  }
  if (!json_.is_object()) {
    fail("the line is damaged", "one JSON object");
  }
  if (!twice.empty()) {
    fail("'" + twice + "' stands there twice", "every member once");
  }
}

void FeedLine::fail(const std::string &what, const std::string &expected) const {
  throw InputError(file_ + ":" + std::to_string(number_) + ": " + what + "; expected " + expected);
}

void FeedLine::refuse_members_but(std::initializer_list<std::string_view> known) const {
  for (const auto &member : json_.items()) {
    if (std::find(known.begin(), known.end(), member.key()) != known.end()) {
      continue;
    }
    std::string expected;
    for (const std::string_view name : known) {
      expected += (expected.empty() ? "" : ", ") + std::string(name);
    }
    fail("unknown member '" + member.key() + "'", expected);
  }
}

u32 FeedLine::number(const char *name) const {
  const auto found = json_.find(name);
  const std::string expected = std::string("'") + name + "', a number or \"0x..\" of 32 bits";
  if (found == json_.end()) {
    fail("the number is missing", expected);
  }
  if (found->is_number_unsigned() && found->get<std::uint64_t>() <= 0xFFFFFFFF) {
    return found->get<u32>();
  }
  if (found->is_string()) {
    if (const auto number = number_of(found->get<std::string>())) {
      return *number;
    }
  }
  fail("'" + std::string(name) + "' is " + found->dump(), expected);
}

host::Bytes FeedLine::bytes(const char *name) const {
  const auto found = json_.find(name);
  const std::string expected = std::string("'") + name + "', a string of hexadecimal bytes";
  if (found == json_.end()) {
    fail("the bytes are missing", expected);
  }
  if (found->is_string()) {
    if (auto bytes = bytes_of_hex(found->get<std::string>())) {
      return *bytes;
    }
  }
  fail("'" + std::string(name) + "' is " + found->dump(), expected);
}

std::string FeedLine::text_of(const char *name, const Json &value) const {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (value.is_object() && value.size() == 1 && value.contains("bytes") &&
      value["bytes"].is_string()) {
    if (const auto bytes = bytes_of_hex(value["bytes"].get<std::string>())) {
      return {bytes->begin(), bytes->end()};
    }
  }
  fail("there is no text", std::string("'") + name + "', a string or its bytes");
}

std::string FeedLine::text(const char *name) const {
  const auto found = json_.find(name);
  return text_of(name, found == json_.end() ? Json() : *found);
}

std::vector<std::string> FeedLine::texts(const char *name) const {
  const Json &list = json_[name];
  if (!list.is_array()) {
    fail("'" + std::string(name) + "' is no list", "a list of texts");
  }
  std::vector<std::string> texts;
  for (const Json &value : list) {
    texts.push_back(text_of(name, value));
  }
  return texts;
}

Json json_of_text(const std::string &text) {
  try {
    Json json = text;
    json.dump();
    return json;
  } catch (const Json::type_error &) {
    return {{"bytes", hex_of_bytes({reinterpret_cast<const u8 *>(text.data()), text.size()})}};
  }
}

bool read_recorded(const FeedLine &line, unsigned version, FeedItem &item) {
  if (line.has("command")) {
    line.refuse_members_but({"command", "from"});
    item.kind = FeedItem::Kind::command;
    item.text = line.text("command");
    item.source = source_in(line);
  } else if (line.has("entered")) {
    line.refuse_members_but(
        {"entered", "board", "instance", "id", "name", "key", "data", "answer"});
    read_entered(line);
    item.kind = FeedItem::Kind::entered;
    item.text = line.json().dump();
  } else if (line.has("file") && version >= kSelfContainedVersion) {
    line.refuse_members_but({"file", "content"});
    item.kind = FeedItem::Kind::file;
    item.text = line.text("file");
    item.content = line.has("content") ? std::optional(line.text("content")) : std::nullopt;
  } else if (line.has("figures") && version >= kSelfContainedVersion) {
    line.refuse_members_but({"figures"});
    item.kind = FeedItem::Kind::figures;
    item.figures = line.texts("figures");
  } else {
    return false;
  }
  return true;
}

}  // namespace node
