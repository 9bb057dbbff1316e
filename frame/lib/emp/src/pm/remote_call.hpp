// Calls of the services of the process that owns the PTP database.
//
// A stub names its service, lists the parameters in the service's order and decides itself what
// becomes of the two ways a call can fail: the owner was not reached, or the owner said no. Stubs
// block their task until the answer is there and keep nothing between calls.
#ifndef PM_REMOTE_CALL_HPP
#define PM_REMOTE_CALL_HPP

#include <initializer_list>
#include <type_traits>

#include "platform/rpc.h"
#include "pm_result.h"

namespace pm {

struct RemotePara {
  u32 kind;
  u32 length;
  void *value;
};

template <typename Value>
RemotePara by_value(Value value) {
  static_assert(std::is_unsigned_v<Value> && sizeof value <= sizeof(PmWord));
  return {RPC_KIND_VALUE, sizeof value, reinterpret_cast<void *>(static_cast<PmWord>(value))};
}

// Bytes that are sent.
inline RemotePara input(void *bytes, u32 length) {
  return {RPC_KIND_INPUT, length, bytes};
}

// Bytes that the owner's answer fills before the call returns.
inline RemotePara output(void *bytes, u32 length) {
  return {RPC_KIND_OUTPUT, length, bytes};
}

struct OwnerAnswer {
  u32 transport;  // nonzero: the remote-call layer's code, the owner was not reached
  u32 result;     // what the owner answered; 0 when it was not reached
};

// The one code of a stub that passes both failures on alike.
inline u32 outcome(const OwnerAnswer &answer) {
  return answer.transport != PM_OK ? answer.transport : answer.result;
}

// Calls a service and waits for the answer.
OwnerAnswer call_owner(const char *service, std::initializer_list<RemotePara> paras);

// Sends a call that has no answer; yields the remote-call layer's code.
u32 notify_owner(const char *service, std::initializer_list<RemotePara> paras);

}  // namespace pm

#endif
