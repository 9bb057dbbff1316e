#include "host/fault.hpp"

#include <limits>
#include <numeric>

namespace host {

namespace {

constexpr u32 last_call = std::numeric_limits<u32>::max();

bool in_range(u32 call, u32 first, u32 last) {
  return first != 0 && call >= first && call <= last;
}

}  // namespace

FaultRule &Faults::rearm(Fn fn) {
  if (!set_[index_of(fn)]) {
    set_[index_of(fn)] = true;
    ++armed_;
  }
  return rules_[index_of(fn)];
}

void Faults::fail_nth(Fn fn, u32 n, std::optional<u32> answer, u32 times) {
  FaultRule &rule = rearm(fn);
  rule.fail_first = calls(fn) + (n == 0 ? 1 : n);
  rule.fail_last = times > last_call - rule.fail_first ? last_call : rule.fail_first + times - 1;
  rule.answer = answer;
  rule.hits = 0;
}

void Faults::fail_always(Fn fn, std::optional<u32> answer) {
  fail_nth(fn, 1, answer, last_call);
}

void Faults::delay(Fn fn, u32 ticks, u32 n) {
  FaultRule &rule = rearm(fn);
  rule.delay_first = calls(fn) + (n == all ? 1 : n);
  rule.delay_last = n == all ? last_call : rule.delay_first;
  rule.delay_ticks = ticks;
}

void Faults::clear(Fn fn) {
  if (set_[index_of(fn)]) {
    set_[index_of(fn)] = false;
    --armed_;
  }
  rules_[index_of(fn)] = {};
}

void Faults::clear() {
  rules_.fill({});
  set_.fill(false);
  armed_ = 0;
}

unsigned long long Faults::total_calls() const {
  return std::accumulate(calls_.begin(), calls_.end(), 0ULL);
}

Faults::Verdict Faults::judge(Fn fn, u32 call) {
  Verdict verdict;
  FaultRule &rule = rules_[index_of(fn)];
  if (in_range(call, rule.delay_first, rule.delay_last)) {
    verdict.delay_ticks = rule.delay_ticks;
  }
  if (in_range(call, rule.fail_first, rule.fail_last)) {
    verdict.fails = true;
    const FnInfo &info = info_of(fn);
    verdict.answer = info.answer == Answer::handle ? 0 : rule.answer.value_or(info.fault);
    ++rule.hits;
  }
  return verdict;
}

}  // namespace host
