// Journal: every host call in order, as text that is the same on every run and every machine.
//
// Off unless start() is called. Functions stand in it by name (names given to name(), then symbol,
// then "fn#1", "fn#2".. in order of appearance); memory blocks as "block#N" by allocation number;
// any other address as "&". Text is quoted and escaped.
#ifndef HOST_JOURNAL_HPP
#define HOST_JOURNAL_HPP

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct JournalEntry {
  std::uint64_t number = 0;  // 1, 2, .. in the order in which calls began
  Fn fn{};
  u32 cid = 0;    // instance that called; 0 = none
  u32 tick = 0;   // when the call began
  u32 depth = 0;  // 0 = called by the library; 1 = from a callback inside a host call, and so on
  bool faulted = false;
  std::string arguments;  // "54, 3, 226"
  std::string result;     // "0x0", "block#7", "null"; empty for a function without result

  // "ZEL_MemAlloc_F(54, 2, 226) = block#7"
  std::string text() const;
};

class Journal {
 public:
  void start() { on_ = true; }
  void stop() { on_ = false; }
  bool on() const { return on_; }

  // Only these functions from now on; an empty list means all. `except` names what is left out.
  void keep_only(std::initializer_list<Fn> functions);
  void leave_out(std::initializer_list<Fn> functions);
  void set_kept(Fn fn, bool kept) { kept_[index_of(fn)] = kept; }
  bool wants(Fn fn) const { return on_ && kept_[index_of(fn)]; }

  // Entries still held, oldest first; older ones than `capacity` are dropped.
  const std::deque<JournalEntry> &entries() const { return entries_; }
  std::uint64_t total() const { return total_; }
  void clear() { entries_.clear(); }
  void set_capacity(std::size_t capacity) { capacity_ = capacity; }
  // The texts of the entries after number `mark`, for comparison as a whole.
  std::vector<std::string> since(std::uint64_t mark) const;

  // Called with each entry when its call ends, so a call made inside another one comes first; the
  // number tells the order in which they began.
  void set_observer(std::function<void(const JournalEntry &)> observer) {
    observer_ = std::move(observer);
  }

  // Gives a function a name in the journal.
  void name(const void *function, std::string text) { names_[function] = std::move(text); }
  template <class R, class... A>
  void name(R (*function)(A...), std::string text) {
    name(reinterpret_cast<const void *>(function), std::move(text));
  }
  std::string name_of_function(const void *function);

  // For the host functions themselves.
  JournalEntry begin(Fn fn, u32 cid, u32 tick, std::string arguments);
  void end(JournalEntry entry, std::string result, bool faulted);

 private:
  bool on_ = false;
  std::array<bool, fn_count> kept_ = all_kept();
  static constexpr std::array<bool, fn_count> all_kept() {
    std::array<bool, fn_count> kept{};
    kept.fill(true);
    return kept;
  }
  std::deque<JournalEntry> entries_;
  std::size_t capacity_ = 1'000'000;
  std::uint64_t total_ = 0;
  u32 depth_ = 0;
  std::function<void(const JournalEntry &)> observer_;
  std::map<const void *, std::string> names_;
  u32 nameless_ = 0;
};

}  // namespace host

#endif
