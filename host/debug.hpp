// Debug output as lines that can be read back, and the ring of error records.
#ifndef HOST_DEBUG_HPP
#define HOST_DEBUG_HPP

#include <cstdint>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct Node;

struct Line {
  Fn printer{};      // KVT_Printf, DEV_LibPrintf, xPrintf, DBG_InnerPrintReltime, ...
  u32 selector = 0;  // level or component type, as given; 0 for KVT_Printf
  std::string text;  // formatted; bytes as given
  std::string file;  // print position at that time, for the DBG_InnerPrint... printers
  u32 line = 0;
  u32 cid = 0;
  u32 tick = 0;
  std::vector<u32> numbers;  // help lines: the numeric arguments in order
};

struct LongCall {
  std::string file;
  u32 line = 0;
  u32 ticks = 0;
  u32 prim_type = 0;
  std::string function;  // by name, as in the journal
  u32 cid = 0;
};

class Debug {
 public:
  explicit Debug(Node &node) : node_(node) {}

  u32 print_switch = 1;  // what DBG_xPrintfSwitch answers
  u32 window_line = 0;   // last DBG_SetDbwinLineNo

  const std::deque<Line> &lines() const { return lines_; }
  std::uint64_t total() const { return total_; }
  void clear() { lines_.clear(); }
  void set_capacity(std::size_t capacity) { capacity_ = capacity; }
  // Texts of the lines printed after `mark` (a value of total()) that are still held.
  std::vector<std::string> since(std::uint64_t mark) const;
  // All text held of these printers, joined; of every printer when the list is empty.
  std::string text(std::initializer_list<Fn> printers = {}) const;
  bool contains(std::string_view text) const;
  // Called with each line as it is printed.
  void set_sink(std::function<void(const Line &)> sink) { sink_ = std::move(sink); }

  const std::vector<LongCall> &long_calls() const { return long_calls_; }

  // For the host functions themselves.
  void print(Fn printer, u32 selector, std::string text, std::vector<u32> numbers = {});
  void add_long_call(const char *file, u32 line, u32 ticks, u32 prim_type, const void *function);

 private:
  Node &node_;
  std::deque<Line> lines_;
  std::size_t capacity_ = 16'384;
  std::uint64_t total_ = 0;
  std::function<void(const Line &)> sink_;
  std::vector<LongCall> long_calls_;
};

struct ErrorRecord {
  std::uint64_t number = 0;  // 1, 2, ..
  std::string_view file;     // lives as long as the ring
  u32 line = 0;
  u32 value = 0;
  u32 tick = 0;
  u32 cid = 0;
};

// The last records; older ones than the capacity are overwritten.
class ErrorRing {
 public:
  std::uint64_t total() const { return total_; }  // also the mark for since()
  std::vector<ErrorRecord> since(std::uint64_t mark = 0) const;
  std::vector<u32> values_since(std::uint64_t mark = 0) const;
  bool contains(u32 value) const;
  std::size_t capacity() const { return capacity_; }
  void set_capacity(std::size_t capacity);  // drops what is held
  void clear() { ring_.clear(); }
  void set_sink(std::function<void(const ErrorRecord &)> sink) { sink_ = std::move(sink); }

  // For the host functions themselves.
  void record(const char *file, u32 line, u32 value, u32 tick, u32 cid);

 private:
  std::size_t capacity_ = 1'024;
  std::uint64_t total_ = 0;
  std::deque<ErrorRecord> ring_;
  std::set<std::string, std::less<>> files_;
  std::function<void(const ErrorRecord &)> sink_;
};

}  // namespace host

#endif
