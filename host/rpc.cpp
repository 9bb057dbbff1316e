// Remote calls.
#include <algorithm>
#include <cstring>

#include "host/call.hpp"

namespace host {

namespace {

bool value_length(u32 length) {
  return length == 1 || length == 2 || length == 4 || length == sizeof(PmWord);
}

constexpr std::size_t most_sent = 1'024;

}  // namespace

PmWord rpc_value(const RpcPara &para, u32 index) {
  if (index >= para.ulNum || index >= RPC_PARA_MAX ||
      para.astPara[index].ulKind != RPC_KIND_VALUE) {
    return 0;
  }
  const PmWord word = reinterpret_cast<PmWord>(para.astPara[index].pValue);
  const u32 length = para.astPara[index].ulLen;
  return length >= sizeof(PmWord) ? word : word & ((PmWord{1} << (8 * length)) - 1);
}

ByteView rpc_input(const RpcPara &para, u32 index) {
  if (index >= para.ulNum || index >= RPC_PARA_MAX ||
      para.astPara[index].ulKind != RPC_KIND_INPUT || para.astPara[index].pValue == nullptr) {
    return {};
  }
  return {static_cast<const u8 *>(para.astPara[index].pValue), para.astPara[index].ulLen};
}

bool rpc_output(RpcPara &para, u32 index, ByteView bytes) {
  if (index >= para.ulNum || index >= RPC_PARA_MAX ||
      para.astPara[index].ulKind != RPC_KIND_OUTPUT || para.astPara[index].pValue == nullptr ||
      para.astPara[index].ulLen < bytes.size()) {
    return false;
  }
  std::copy(bytes.begin(), bytes.end(), static_cast<u8 *>(para.astPara[index].pValue));
  return true;
}

void Rpc::serve(const std::string &name, Service service, const bool *online) {
  if (service) {
    services_[name] = {std::move(service), online};
  } else {
    services_.erase(name);
  }
}

const Rpc::Served *Rpc::find(std::string_view name, u32 &code) const {
  const auto found = services_.find(name);
  const bool known = found != services_.end();
  const bool on = reachable && (!known || found->second.online == nullptr || *found->second.online);
  code = !on ? u32{code_unreachable} : known ? 0 : u32{code_unknown};
  return code == 0 ? &found->second : nullptr;
}

SentCall Rpc::describe(u32 destination, const char *name, const RpcPara &para,
                       bool synchronous) const {
  SentCall call;
  call.synchronous = synchronous;
  call.destination = destination;
  call.cid = current_cid();
  call.service = name;
  for (u32 i = 0; i < para.ulNum; ++i) {
    SentParameter sent{para.astPara[i].ulKind, para.astPara[i].ulLen, false, {}};
    if (sent.kind == RPC_KIND_VALUE) {
      const PmWord value = rpc_value(para, i);
      const ByteView bytes = view_of(value).first(std::min<std::size_t>(sent.length, sizeof value));
      sent.bytes.assign(bytes.begin(), bytes.end());
    } else {
      sent.null = para.astPara[i].pValue == nullptr;
      const ByteView bytes = rpc_input(para, i);
      sent.bytes.assign(bytes.begin(), bytes.end());
    }
    call.parameters.push_back(std::move(sent));
  }
  return call;
}

void Rpc::keep(SentCall call) {
  if (sent_.size() >= most_sent) {
    sent_.pop_front();
  }
  sent_.push_back(std::move(call));
}

u32 Rpc::call(u32 destination, const char *name, RpcPara *para, void *result) {
  if (name == nullptr || para == nullptr || result == nullptr) {
    return code_null;
  }
  if (para->ulNum > RPC_PARA_MAX) {
    return code_range;
  }
  SentCall sent = describe(destination, name, *para, true);
  if (const Served *served = find(name, sent.code)) {
    const Service service = served->service;  // it may take itself away
    ++node_.serving;
    sent.answer = service(*para);
    --node_.serving;
    std::memcpy(result, &sent.answer, sizeof sent.answer);
    node_.tell({Inbound::Kind::remote_answer, sent.cid, 0, name, {}, {}, sent.answer});
  }
  const u32 code = sent.code;
  keep(std::move(sent));
  return code;
}

u32 Rpc::post(u32 destination, const char *name, RpcPara *para) {
  if (name == nullptr || para == nullptr) {
    return code_null;
  }
  if (para->ulNum > RPC_PARA_MAX) {
    return code_range;
  }
  for (u32 i = 0; i < para->ulNum; ++i) {
    if (para->astPara[i].ulKind == RPC_KIND_OUTPUT) {
      return code_kind;
    }
  }
  SentCall sent = describe(destination, name, *para, false);
  if (find(name, sent.code) != nullptr) {
    queue_.push_back(sent);
  }
  const u32 code = sent.code;
  keep(std::move(sent));
  return code;
}

std::size_t Rpc::run() {
  std::size_t count = 0;
  for (; !queue_.empty() && node_.serving == 0; ++count) {
    SentCall call = std::move(queue_.front());
    queue_.pop_front();
    RpcPara para{};
    for (SentParameter &sent : call.parameters) {
      PmWord word = 0;
      std::memcpy(&word, sent.bytes.data(),
                  sent.kind == RPC_KIND_VALUE ? std::min(sent.bytes.size(), sizeof word) : 0);
      void *value = sent.kind == RPC_KIND_VALUE ? reinterpret_cast<void *>(word)
                    : sent.null                 ? nullptr
                                                : sent.bytes.data();
      para.astPara[para.ulNum++] = {sent.kind, sent.length, value};
    }
    u32 code = 0;
    if (const Served *served = find(call.service, code)) {
      const Service service = served->service;
      Scope scope(node_);
      ++node_.serving;
      service(para);
      --node_.serving;
    }
  }
  return count;
}

}  // namespace host

using namespace host;

u32 RPC_LibParaInit(RpcPara *pstPara, u32 ulParaNum) {
  return call<Fn::RPC_LibParaInit>(
      [&](Node &) -> u32 {
        if (pstPara == nullptr) {
          return code_null;
        }
        if (ulParaNum > RPC_PARA_MAX) {
          return code_range;
        }
        *pstPara = {};
        pstPara->ulNum = ulParaNum;
        return 0;
      },
      ulParaNum);
}

u32 RPC_LibParaSet(RpcPara *pstPara, u32 ulIndex, u32 ulKind, u32 ulLen, void *pValue) {
  return call<Fn::RPC_LibParaSet>(
      [&](Node &) -> u32 {
        if (pstPara == nullptr) {
          return code_null;
        }
        if (pstPara->ulNum > RPC_PARA_MAX || ulIndex >= pstPara->ulNum) {
          return code_range;
        }
        if (ulKind > RPC_KIND_OUTPUT) {
          return code_kind;
        }
        if (ulKind == RPC_KIND_VALUE && !value_length(ulLen)) {
          return code_length;
        }
        // A null buffer is carried as it is: whether it will do is the service's to say.
        pstPara->astPara[ulIndex] = {ulKind, ulLen, pValue};
        return 0;
      },
      ulIndex, ulKind, ulLen);
}

u32 RPC_LibSyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara, void *pResult) {
  return call<Fn::RPC_LibSyncCall>(
      [&](Node &node) { return node.rpc.call(ulDest, pcService, pstPara, pResult); }, ulDest,
      pcService);
}

u32 RPC_LibAyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara) {
  return call<Fn::RPC_LibAyncCall>(
      [&](Node &node) { return node.rpc.post(ulDest, pcService, pstPara); }, ulDest, pcService);
}
