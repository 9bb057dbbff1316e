// How a remote call is put together: parameter block, call, result area.
#include "remote_call.hpp"

namespace {

constexpr u32 owner = 0;  // the destination

RpcPara describe(std::initializer_list<pm::RemotePara> paras) {
  RpcPara block{};
  (void)RPC_LibParaInit(&block, static_cast<u32>(paras.size()));
  u32 index = 0;
  for (const pm::RemotePara &para : paras) {
    (void)RPC_LibParaSet(&block, index, para.kind, para.length, para.value);
    ++index;
  }
  return block;
}

}  // namespace

pm::OwnerAnswer pm::call_owner(const char *service, std::initializer_list<RemotePara> paras) {
  u32 result_area[RPC_RESULT_SIZE / sizeof(u32)] = {};
  RpcPara block = describe(paras);
  const u32 transport = RPC_LibSyncCall(owner, service, &block, result_area);
  return {transport, transport == PM_OK ? result_area[0] : u32{PM_OK}};
}

u32 pm::notify_owner(const char *service, std::initializer_list<RemotePara> paras) {
  RpcPara block = describe(paras);
  return RPC_LibAyncCall(owner, service, &block);
}
