// Feeds: what enters the library, as lines of JSON in a file.
#ifndef NODE_FEED_HPP
#define NODE_FEED_HPP

#include <istream>
#include <string>
#include <vector>

#include "node/document.hpp"
#include "node/node.hpp"
#include "node/source.hpp"

namespace node {

struct FeedItem {
  enum class Kind { spec, record, primitive, message, ticks, command, entered };
  Kind kind{};
  u32 id = 0;       // spec: identifier; record: class; ticks: their number
  host::Bytes key;  // record
  host::Bytes data;
  std::string text;   // command: its line; entered: the line of the feed
  Source source{};    // command
  unsigned line = 0;  // in the feed
};

// The first line of a feed that is written today.
std::string feed_header();

// The feed was recorded: it says what was answered as well.
bool is_recording(const std::vector<FeedItem> &items);

// Reads a whole feed before anything of it is applied: a damaged line is an InputError that names
// file, line and what was expected.
std::vector<FeedItem> read_feed(const std::string &file);
std::vector<FeedItem> feed_from(std::istream &lines, const std::string &file);

// Applies what is no recording in order and answers how many the library refused.
std::size_t apply_feed(Node &node, const std::vector<FeedItem> &items);

}  // namespace node

#endif
