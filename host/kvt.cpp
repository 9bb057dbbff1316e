// Operating-system layer.
#include <cstring>

#include "host/call.hpp"

using namespace host;

u32 KVT_RegisterPIDInfo(u32 ulPid, u32 (*pfnInit)(u32 enPhase), void (*pfnMsgProc)(void *pMsg)) {
  return call_instance<Fn::KVT_RegisterPIDInfo>(
      [&](Node &node, Instance &instance) {
        return node.root.register_pid(instance, {ulPid, pfnInit, pfnMsgProc});
      },
      ulPid, pfnInit, pfnMsgProc);
}

u32 KVT_RegisterMsgTaskPrio(u32 ulFid, u32 ulPrio) {
  return call_instance<Fn::KVT_RegisterMsgTaskPrio>(
      [&](Node &node, Instance &instance) {
        return node.root.register_message_task(instance, ulFid, ulPrio);
      },
      ulFid, ulPrio);
}

void KVT_Printf(const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const std::string text = format_text(pcFormat, arguments);
  va_end(arguments);
  call<Fn::KVT_Printf>([&](Node &node) { node.debug.print(Fn::KVT_Printf, 0, text); }, text);
}

u32 KVT_StrNCmp(const char *pcA, const char *pcB, u32 ulLen) {
  return call_anywhere<Fn::KVT_StrNCmp>(
      [&]() -> u32 {
        const bool equal = pcA != nullptr && pcB != nullptr && std::strncmp(pcA, pcB, ulLen) == 0;
        return equal ? 0 : 1;
      },
      ulLen);
}
