// One line of a feed as JSON: its members, checked, and what is told when one is not as expected.
#ifndef NODE_FEED_LINE_HPP
#define NODE_FEED_LINE_HPP

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "host/distribution.hpp"

namespace node {

struct FeedItem;

class FeedLine {
 public:
  using Json = nlohmann::ordered_json;

  // An InputError unless the text is one JSON object that has no member twice.
  FeedLine(const std::string &file, unsigned number, const std::string &text);

  const Json &json() const { return json_; }
  bool has(const char *name) const { return json_.contains(name); }
  void refuse_members_but(std::initializer_list<std::string_view> known) const;
  // A number as such, or as a string such as "0x360011".
  u32 number(const char *name) const;
  host::Bytes bytes(const char *name) const;
  // A string, or {"bytes": "80ff"} for what is not UTF-8.
  std::string text(const char *name) const;
  std::vector<std::string> texts(const char *name) const;

  [[noreturn]] void fail(const std::string &what, const std::string &expected) const;

 private:
  std::string text_of(const char *name, const Json &value) const;

  const std::string &file_;
  unsigned number_;
  Json json_;
};

// The reverse of FeedLine::text().
FeedLine::Json json_of_text(const std::string &text);
// What entered the library, by its name in a recording.
constexpr std::string_view kEntryNames[] = {"spec", "record",  "message",       "phase",
                                            "fid",  "service", "remote_answer", "unit"};

// The kinds of line that only recordings have; false for any other line.
bool read_recorded(const FeedLine &line, unsigned version, FeedItem &item);

}  // namespace node

#endif
