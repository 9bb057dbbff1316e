// Object configuration per virtual system.
#include <cstring>

#include "host/call.hpp"

namespace host {

u32 ObjectCfg::vs_mask(u32 ptp, u32 type) const {
  constexpr u32 mask_bits = 32;
  u32 mask = 0;
  for (const auto &[id, flag] : objects_) {
    if (id.ptp == ptp && id.type == type && id.vs < mask_bits) {
      mask |= u32{1} << id.vs;
    }
  }
  return mask;
}

u32 ObjectCfg::add(const ObjectId &id, u32 flag) {
  objects_[id] = flag;
  log_.push_back({true, id, {flag, 0}});
  return 0;
}

u32 ObjectCfg::remove(const ObjectId &id, const std::array<u32, 2> &flags) {
  objects_.erase(id);
  log_.push_back({false, id, flags});
  return 0;
}

}  // namespace host

using namespace host;

u32 PUB_LibAddObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *pulFlag) {
  return call<Fn::PUB_LibAddObjAllCfg>(
      [&](Node &node) -> u32 {
        if (pulFlag == nullptr) {
          return code_null;
        }
        u32 flag;
        std::memcpy(&flag, pulFlag, sizeof flag);
        return node.objects.add({ulVsID, ulObjType, usPtpID}, flag);
      },
      ulVsID, ulObjType, usPtpID);
}

u32 PUB_LibDelObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *paulFlag) {
  return call<Fn::PUB_LibDelObjAllCfg>(
      [&](Node &node) -> u32 {
        if (paulFlag == nullptr) {
          return code_null;
        }
        std::array<u32, 2> flags;
        std::memcpy(flags.data(), paulFlag, sizeof flags);
        return node.objects.remove({ulVsID, ulObjType, usPtpID}, flags);
      },
      ulVsID, ulObjType, usPtpID);
}
