// Faults: any host function made to fail or to take time, and counts of calls.
//
// A call that fails by a fault does nothing else than answer: no state changes, no output is
// written, nothing is printed. Calls are counted from the node's birth whether or not they fail; a
// rule's n is counted from the moment it is set.
#ifndef HOST_FAULT_HPP
#define HOST_FAULT_HPP

#include <array>
#include <optional>

#include "host/fn.hpp"

namespace host {

struct FaultRule {
  u32 fail_first = 0;  // first and last call that fail, in the numbering of Faults::calls;
  u32 fail_last = 0;   // 0 = none
  std::optional<u32> answer;
  u32 delay_first = 0;  // first and last call that take delay_ticks more
  u32 delay_last = 0;
  u32 delay_ticks = 0;
  u32 hits = 0;  // calls that failed by this rule
};

class Faults {
 public:
  static constexpr u32 all = 0;

  // The n-th call from now fails (1 = the next one), and `times` calls in all from there. The
  // answer is the code or value; what answers a pointer or a handle always answers none.
  void fail_nth(Fn fn, u32 n, std::optional<u32> answer = {}, u32 times = 1);
  // Every call from now on fails.
  void fail_always(Fn fn, std::optional<u32> answer = {});
  // The n-th call from now takes that many ticks; `all` = every call.
  void delay(Fn fn, u32 ticks, u32 n = all);

  void clear(Fn fn);
  void clear();

  u32 calls(Fn fn) const { return calls_[index_of(fn)]; }
  u32 hits(Fn fn) const { return rules_[index_of(fn)].hits; }
  unsigned long long total_calls() const;
  const FaultRule &rule(Fn fn) const { return rules_[index_of(fn)]; }
  bool armed() const { return armed_ != 0; }

  // For the host functions themselves.
  u32 count(Fn fn) { return ++calls_[index_of(fn)]; }
  // What call number `call` answers when a rule makes it fail, and the ticks it takes first.
  struct Verdict {
    bool fails = false;
    u32 answer = 0;
    u32 delay_ticks = 0;
  };
  Verdict judge(Fn fn, u32 call);

 private:
  FaultRule &rearm(Fn fn);

  std::array<u32, fn_count> calls_{};
  std::array<FaultRule, fn_count> rules_{};
  std::array<bool, fn_count> set_{};
  u32 armed_ = 0;  // functions with a rule
};

}  // namespace host

#endif
