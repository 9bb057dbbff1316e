// A program in C++ that runs the library without a node, on the stand-in host: what a service's
// unit test begins with. It lets PTP 17 come into existence and asks about it.
#include <cstdio>

#include "host/host.hpp"
#include "pm.h"

namespace {

void publish_specification(host::Node &node) {
  PmSpec general{};
  general.ulDescMaxLen = 40;
  PmAttrCB numbers{};
  numbers.usVisiblePtpNum = 100;
  numbers.usMaxPtpID = 99;
  const PmSubAttrNum types = {1, 20};
  node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(general));
  node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(numbers));
  node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(types));
}

host::Instance *start_instance(host::Node &node) {
  {
    const host::Scope scope = host::enter(node);
    PM_LibRegisterInfo();
  }
  publish_specification(node);
  host::Instance *instance = node.root.construct(0x36);
  if (instance != nullptr) {
    node.root.start_fid(*instance, PM_FidInitProc);
    for (const u32 phase : {1U, 2U, 8U}) {
      node.root.start_phase(*instance, phase);
    }
    node.run();
  }
  return instance;
}

}  // namespace

int main() {
  host::Node node;
  host::Instance *instance = start_instance(node);
  if (instance == nullptr) {
    return 1;
  }
  PtpDynPubData record{};
  record.ucExist = 1;
  record.usPtpType = 20;
  record.ulVsMask = 1;
  node.ddm.publish(PM_CLASS_DYNAMIC, 17, host::view_of(record));

  const host::Scope scope = host::enter(*instance);
  u16 type = 0;
  const u32 code = PM_LibGetTypeFromPTP(17, &type);
  std::printf("PTP 17: result 0x%x, type %u; PTP 18: result 0x%x\n", unsigned{code}, unsigned{type},
              unsigned{PM_LibIfPtpExist(18)});
  return code == PM_OK && type == 20 && PM_LibIfPtpExist(18) == PM_ERR_PTP_NOT_EXIST ? 0 : 1;
}
