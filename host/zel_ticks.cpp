// Ticks, the task watchdog, and the runtime layer's comparisons.
#include <cstring>

#include "host/call.hpp"

namespace host {

void Watchdog::bark(Fn fn, u32 cid, u32 tick, std::uint64_t now) {
  constexpr std::size_t most_listed = 64;
  ++barks_;
  if (list_.size() < most_listed) {
    list_.push_back({fn, cid, tick, turn_.calls < limit_calls});
  }
  turn_ = {0, now};
}

}  // namespace host

using namespace host;

u32 ZEL_MemCmp(const void *pA, const void *pB, u32 ulLen) {
  return call_anywhere<Fn::ZEL_MemCmp>(
      [&]() -> u32 {
        const bool equal = pA != nullptr && pB != nullptr && std::memcmp(pA, pB, ulLen) == 0;
        return equal ? 0 : 1;
      },
      ulLen);
}

u32 ZEL_StrLen(const char *pcStr) {
  return call_anywhere<Fn::ZEL_StrLen>(
      [&]() -> u32 { return pcStr == nullptr ? 0 : static_cast<u32>(std::strlen(pcStr)); }, pcStr);
}

u32 ZEL_GetTick(void) {
  return call<Fn::ZEL_GetTick>([](Node &node) { return node.clock.now(); });
}

void ZEL_ClearWatchDog(void) {
  call<Fn::ZEL_ClearWatchDog>([](Node &node) { node.watchdog.feed(node.clock.elapsed()); });
}

void ZEL_TaskRunClearDog(u32 ulTicks) {
  call<Fn::ZEL_TaskRunClearDog>([](Node &node) { node.watchdog.feed(node.clock.elapsed()); },
                                ulTicks);
}

void ZEL_TaskDelay(u32 ulTicks) {
  call<Fn::ZEL_TaskDelay>(
      [&](Node &node) {
        node.clock.advance(ulTicks);
        node.watchdog.feed(node.clock.elapsed());
      },
      ulTicks);
}
