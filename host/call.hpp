// The way every host function begins and ends: finds the node, counts the call, lets the watchdog
// see it, applies faults and writes the journal. Private to the host.
//
// Unless a fault is armed or the journal runs, a call costs a thread-local read, two counters and
// two predictable branches more than its work.
#ifndef HOST_CALL_HPP
#define HOST_CALL_HPP

#include <cstdarg>
#include <string>
#include <type_traits>
#include <utility>

#include "host/host.hpp"

namespace host {

struct Current {
  Node *node;
  Instance *instance;
};
extern thread_local constinit Current current __attribute__((tls_model("initial-exec")));

inline u32 current_cid() {
  return current.instance == nullptr ? 0 : current.instance->cid();
}

// Text of a format, empty when it cannot be made; "(null)" for a null format.
std::string format_text(const char *format, va_list arguments) noexcept PM_PRINTF(1, 0);

// How values stand in the journal.
std::string journal_number(u32 value);
std::string journal_code(u32 value);
std::string journal_text(std::string_view text);
std::string journal_address(Node &node, const void *address);

template <class T>
std::string journal_argument(Node &node, const T &value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return journal_text(value);
  } else if constexpr (std::is_convertible_v<T, const char *>) {
    return static_cast<const char *>(value) == nullptr ? "null" : journal_text(value);
  } else if constexpr (std::is_pointer_v<T> && std::is_function_v<std::remove_pointer_t<T>>) {
    return node.journal.name_of_function(reinterpret_cast<const void *>(value));
  } else if constexpr (std::is_pointer_v<T>) {
    return journal_address(node, value);
  } else if constexpr (std::is_signed_v<T>) {
    return std::to_string(value);
  } else {
    return journal_number(static_cast<u32>(value));
  }
}

template <Fn fn, class R>
std::string journal_result(Node &node, const R &value) {
  if constexpr (info_of(fn).answer == Answer::code) {
    return journal_code(static_cast<u32>(value));
  } else {
    return journal_argument(node, value);
  }
}

// A fault's answer as the function's result.
template <class R>
R answer_of(u32 value) {
  if constexpr (std::is_pointer_v<R>) {
    return nullptr;
  } else if constexpr (!std::is_void_v<R>) {
    return static_cast<R>(value);
  }
}

// What a function answers outside any node.
template <Fn fn, class R>
R answer_without_node() {
  return answer_of<R>(info_of(fn).answer == Answer::code ? u32{code_no_node} : 0);
}

constexpr bool feeds_watchdog(Fn fn) {
  return fn == Fn::ZEL_ClearWatchDog || fn == Fn::ZEL_TaskRunClearDog || fn == Fn::ZEL_TaskDelay;
}

// One entry of the journal that is being written; ends it whichever way the call is left.
class JournalCall {
 public:
  JournalCall(Node &node, JournalEntry entry) : node_(node), entry_(std::move(entry)) {}
  ~JournalCall() { node_.journal.end(std::move(entry_), std::move(result), faulted); }
  JournalCall(const JournalCall &) = delete;
  JournalCall &operator=(const JournalCall &) = delete;

  std::string result;
  bool faulted = false;

 private:
  Node &node_;
  JournalEntry entry_;
};

template <Fn fn, class R, class Body, class... A>
[[gnu::noinline]] R observed_call(Node &node, u32 number, Body &body, const A &...arguments) {
  const Faults::Verdict verdict = node.faults.judge(fn, number);
  std::optional<JournalCall> written;
  if (node.journal.wants(fn)) {
    std::string text;
    ((text += (text.empty() ? "" : ", ") + journal_argument(node, arguments)), ...);
    written.emplace(node, node.journal.begin(fn, current_cid(), node.clock.now(), std::move(text)));
  }
  node.clock.advance(verdict.delay_ticks);
  if (verdict.fails && written) {
    written->faulted = true;
  }
  if constexpr (std::is_void_v<R>) {
    if (!verdict.fails) {
      body(node);
    }
  } else {
    const R result = verdict.fails ? answer_of<R>(verdict.answer) : body(node);
    if (written) {
      written->result = journal_result<fn>(node, result);
    }
    return result;
  }
}

// A call that needs a node. `arguments` are those the journal shows.
template <Fn fn, class Body, class... A>
auto call(Body &&body, const A &...arguments) noexcept -> std::invoke_result_t<Body &, Node &> {
  using R = std::invoke_result_t<Body &, Node &>;
  Node *node = current.node;
  if (node == nullptr) [[unlikely]] {
    return answer_without_node<fn, R>();
  }
  try {
    const u32 number = node->faults.count(fn);
    const std::uint64_t now = node->clock.elapsed();
    if (feeds_watchdog(fn) ? node->watchdog.late(now) : node->watchdog.spend(now)) [[unlikely]] {
      node->watchdog.bark(fn, current_cid(), node->clock.now(), now);
    }
    if (node->faults.armed() || node->journal.on()) [[unlikely]] {
      return observed_call<fn, R>(*node, number, body, arguments...);
    }
    return body(*node);
  } catch (...) {
    return answer_of<R>(info_of(fn).fault);
  }
}

// A call that also works outside any node. The body takes no node.
template <Fn fn, class Body, class... A>
auto call_anywhere(Body &&body, const A &...arguments) noexcept -> std::invoke_result_t<Body &> {
  if (current.node == nullptr) {
    return body();
  }
  return call<fn>([&](Node &) { return body(); }, arguments...);
}

// A call that needs an instance: without one it answers code_no_instance.
template <Fn fn, class Body, class... A>
u32 call_instance(Body &&body, const A &...arguments) noexcept {
  return call<fn>(
      [&](Node &node) -> u32 {
        return current.instance == nullptr ? u32{code_no_instance} : body(node, *current.instance);
      },
      arguments...);
}

}  // namespace host

#endif
