// How a remote call is put together: parameter block, call, result area.
#include "remote_call.hpp"

namespace {

constexpr u32 owner = 0;  // the destination

// Yields the code of the parameter that could not be set: without it the owner would do something
// else than it is asked for, so the call is not made.
u32 describe(std::initializer_list<pm::RemotePara> paras, RpcPara *block) {
  u32 ret = RPC_LibParaInit(block, static_cast<u32>(paras.size()));
  u32 index = 0;
  for (const pm::RemotePara &para : paras) {
    if (ret != PM_OK) {
      break;
    }
    ret = RPC_LibParaSet(block, index, para.kind, para.length, para.value);
    ++index;
  }
  return ret;
}

}  // namespace

pm::OwnerAnswer pm::call_owner(const char *service, std::initializer_list<RemotePara> paras) {
  u32 result_area[RPC_RESULT_SIZE / sizeof(u32)] = {};
  RpcPara block{};
  u32 transport = describe(paras, &block);
  if (transport == PM_OK) {
    transport = RPC_LibSyncCall(owner, service, &block, result_area);
  }
  return {transport, transport == PM_OK ? result_area[0] : u32{PM_OK}};
}

u32 pm::notify_owner(const char *service, std::initializer_list<RemotePara> paras) {
  RpcPara block{};
  const u32 ret = describe(paras, &block);
  return ret == PM_OK ? RPC_LibAyncCall(owner, service, &block) : ret;
}
