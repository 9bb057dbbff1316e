// Feeds: what enters the library, as lines of JSON in a file.
#ifndef NODE_FEED_HPP
#define NODE_FEED_HPP

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "node/document.hpp"
#include "node/node.hpp"
#include "node/source.hpp"

namespace node {

struct FeedItem {
  enum class Kind { spec, record, primitive, message, ticks, command, entered, file, figures };
  Kind kind{};
  u32 id = 0;       // spec: identifier; record: class; ticks: their number
  host::Bytes key;  // record
  host::Bytes data;
  std::string text;                    // command: its line; entered: the line of the feed
  Source source{};                     // command
  std::optional<std::string> content;  // file: what it held; nothing when it could not be read
  std::vector<std::string> figures;
  unsigned line = 0;  // in the feed
};

struct Feed {
  unsigned version = 0;
  unsigned bits = 0;  // width of the machine that recorded it; 0: not known
  std::vector<FeedItem> items;

  // Says what was answered as well.
  bool is_recording() const;
};

// The first line of a recording that is written today.
std::string recording_header();
// The width of this machine.
constexpr unsigned kBits = sizeof(void *) * 8;
// The first version whose recordings keep files and figures.
constexpr unsigned kSelfContainedVersion = 3;

// Reads a whole feed before anything of it is applied: a damaged line is an InputError that names
// file, line and what was expected.
Feed read_feed(const std::string &file);
Feed feed_from(std::istream &lines, const std::string &file);

// Applies what is no recording in order and answers how many the library refused.
std::size_t apply_feed(Node &node, const std::vector<FeedItem> &items);

}  // namespace node

#endif
