// Recordings: feeds that also keep what a console was told and everything that entered the library,
// with its answers. Replayed, they show whether a node still does the same.
#ifndef NODE_RECORDING_HPP
#define NODE_RECORDING_HPP

#include <fstream>
#include <string>
#include <vector>

#include "node/console.hpp"
#include "node/feed.hpp"

namespace node {

// Writes a recording of a node and its console; watches from before the node's start. Must outlive
// both.
class Recorder {
 public:
  // An InputError when the file cannot be written.
  explicit Recorder(const std::string &file);
  Recorder(const Recorder &) = delete;
  Recorder &operator=(const Recorder &) = delete;

  void watch(Node &node);
  // Behind a replay, if there is one: what that puts in is recorded.
  void watch(Console &console);

 private:
  std::ofstream stream_;
};

// A replay parted from its recording.
struct ReplayDiffers : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Replays a recording and compares what enters the library with what entered it then. Watches from
// before the node's start; a ReplayDiffers names the line of the recording at which they part.
class Replay {
 public:
  Replay(Feed feed, std::string file);
  Replay(const Replay &) = delete;
  Replay &operator=(const Replay &) = delete;

  void watch(Node &node);
  // What the recording keeps of its machine stands in for what this one has.
  void watch(Console &console);
  // After the start.
  void run(Console &console);

 private:
  bool at(FeedItem::Kind kind) const;
  void compare_entered();
  void compare();
  const FeedItem &take(FeedItem::Kind kind, const std::string &got);
  [[noreturn]] void fail(unsigned line, const std::string &what) const;

  Feed feed_;
  std::string file_;
  std::size_t position_ = 0;
  std::vector<std::string> entered_;  // not compared yet
};

}  // namespace node

#endif
