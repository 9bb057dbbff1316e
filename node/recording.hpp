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
  void watch(Console &console);

 private:
  std::ofstream stream_;
};

// Replays a recording and compares what enters the library with what entered it then. Watches from
// before the node's start; an InputError names the line of the recording at which they part.
class Replay {
 public:
  Replay(std::vector<FeedItem> items, std::string file);
  Replay(const Replay &) = delete;
  Replay &operator=(const Replay &) = delete;

  void watch(Node &node);
  // After the start.
  void run(Console &console);

 private:
  void compare();
  [[noreturn]] void fail(unsigned line, const std::string &what) const;

  std::vector<FeedItem> items_;
  std::string file_;
  std::size_t position_ = 0;
  std::vector<std::string> entered_;  // not compared yet
};

}  // namespace node

#endif
