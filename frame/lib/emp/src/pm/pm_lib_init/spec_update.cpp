// Specification messages of the data distribution.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/bounded.h"
#include "pm_spec.h"

PM_SOURCE(pm_lib_init, 2);

namespace {

struct SpecTarget {
  u32 identifier;
  u32 size;
  void *record;
};

const SpecTarget spec_targets[] = {
    {PM_SPEC_MSG_SPEC, sizeof g_stPmSpec, &g_stPmSpec},
    {PM_SPEC_MSG_ATTR_CB, sizeof g_stPmAttrCB, &g_stPmAttrCB},
    {PM_SPEC_MSG_SUB_ATTR, sizeof g_stPmSubAttrCB, &g_stPmSubAttrCB},
};

// The copy's length is the target's own: the message's length is only compared with it.
void take_spec(const SpecTarget &target, u32 length, const void *payload) {
  if (length != target.size) {
    RECORD(length, target.identifier);
    return;
  }
  const int ret = memcpy_s(target.record, target.size, payload, target.size);
  if (ret != 0) {
    RECORD(ret, target.identifier);
  }
}

}  // namespace

u32 PM_LibSpecUpdate(const void *pSpecMsg) {
  if (pSpecMsg == nullptr) {
    return PM_OK;
  }
  const PmSpecMsg head = pm::load<PmSpecMsg>(pSpecMsg);
  for (const SpecTarget &target : spec_targets) {
    if (target.identifier == head.ulIdentifier) {
      take_spec(target, head.ulLen, static_cast<const u8 *>(pSpecMsg) + sizeof head);
      break;
    }
  }
  return PM_OK;
}
