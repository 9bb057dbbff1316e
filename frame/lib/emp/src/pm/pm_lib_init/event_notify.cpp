// The events that a change of a dynamic record raises: existence and virtual systems, with the
// PTP's object configuration per virtual system.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/ddm.h"
#include "platform/pub.h"
#include "pm_booking.h"
#include "pm_dynamic_data.h"
#include "pm_events.h"
#include "pm_restore.h"
#include "pm_virtual_system.h"

PM_SOURCE(pm_lib_init, 20);

namespace {

constexpr u32 needed_pid = 407;
constexpr u32 pid_depended = 1;
constexpr u32 object_type = 2;
constexpr u32 object_flag_one_vs = 1;
constexpr u32 object_flag_multi_vs = 2;
constexpr u16 first_notified_vs = 1;  // joining or leaving virtual system 0 is no event
constexpr u32 add_failed_level = 0x7C;

enum class Batch { unknown, running, finished };

// How far the first delivery of all dynamic records has come; a failed question is recorded.
Batch batch_state() {
  if (pm::current_data() == nullptr) {
    return Batch::unknown;
  }
  u8 finished = 0;
  const u32 ret = DDM_LibScribeIsClassBtFinished(PM_CLASS_DYNAMIC, &finished);
  if (ret != PM_OK) {
    RECORD(ret);
    return Batch::unknown;
  }
  return finished != 0 ? Batch::finished : Batch::running;
}

void raise_primitive(u16 prim_type, u16 ptp_id, void *para) {
  const u32 ret = PM_LibBookCallBookedFuncs(prim_type, ptp_id, para);
  if (ret != PM_OK) {
    RECORD(ret);
  }
}

// The record as the store holds it, an empty slot included; false when there is no slot.
bool read_current(u16 ptp_id, PtpDynPubData *current) {
  const u32 ret = PM_LibGetAllDynDataFromPtpID(ptp_id, current);
  return ret == PM_OK || ret == PM_ERR_PTP_NOT_EXIST;
}

void raise_if_exists(u16 ptp_id) {
  PtpDynPubData current{};
  if (read_current(ptp_id, &current) && current.ucExist != 0) {
    raise_primitive(PM_PRIM_EXIST, ptp_id, nullptr);
  }
}

// What a change of virtual systems means for a PTP's object configuration.
struct VsChange {
  u32 vs_mask;  // virtual systems of the current record that the other record does not have
  u32 object_flag;
};

VsChange vs_change(u16 ptp_id, const PtpDynPubData *other) {
  constexpr VsChange none = {0, 0};
  PmInstance *self = ROOT_LibGetCurrentThis();
  if (other == nullptr || self == nullptr || self->pLocalData == nullptr ||
      ROOT_LibIsPidDepend(needed_pid, self) != pid_depended) {
    return none;
  }
  PtpDynPubData current{};
  if (!read_current(ptp_id, &current) || current.ulVsMask == other->ulVsMask) {
    return none;
  }
  const bool in_many = PM_LibIfPortBelongMultiVs(ptp_id) == PM_OK;
  return {current.ulVsMask & ~other->ulVsMask, in_many ? object_flag_multi_vs : object_flag_one_vs};
}

bool contains(const VsChange &change, u16 vs_id) {
  return ((change.vs_mask >> vs_id) & 1U) != 0;
}

void raise_vs(u16 prim_type, u16 ptp_id, u16 vs_id) {
  raise_primitive(prim_type, ptp_id, &vs_id);
}

void delete_object_config(u16 vs_id, u16 ptp_id, u32 object_flag) {
  u32 flags[] = {object_flag, 0};
  (void)PUB_LibDelObjAllCfg(vs_id, object_type, ptp_id, flags);
}

u32 add_object_config(u16 vs_id, u16 ptp_id, u32 object_flag) {
  return PUB_LibAddObjAllCfg(vs_id, object_type, ptp_id, &object_flag);
}

}  // namespace

void PM_LibEventPrimNotify(u16 usPtpID, const PtpDynPubData *pstOldData) {
  const Batch batch = batch_state();
  if (batch == Batch::unknown) {
    return;
  }
  if (batch == Batch::running) {
    raise_if_exists(usPtpID);
    return;
  }
  PtpDynPubData current{};
  if (pstOldData == nullptr || !read_current(usPtpID, &current)) {
    return;
  }
  const bool existed = pstOldData->ucExist != 0;
  const bool exists = current.ucExist != 0;
  if (exists && !existed) {
    raise_primitive(PM_PRIM_EXIST, usPtpID, nullptr);
  } else if (existed && !exists) {
    raise_primitive(PM_PRIM_NOT_EXIST, usPtpID, nullptr);
  }
}

void PM_LibPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData) {
  PM_LibPtpVsPrimaryNotifyBefore(usPtpID, pstNewData);
}

void PM_LibPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData) {
  const Batch batch = batch_state();
  if (batch == Batch::finished) {
    PM_LibPtpVsPrimaryNotifyAfter(usPtpID, pstOldData);
  } else if (batch == Batch::running) {
    raise_if_exists(usPtpID);
  }
}

void PM_LibPtpVsPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData) {
  const VsChange removed = vs_change(usPtpID, pstNewData);
  for (u16 vs_id = first_notified_vs; vs_id < PM_VS_NUM; ++vs_id) {
    if (contains(removed, vs_id)) {
      raise_vs(PM_PRIM_VS_REMOVED, usPtpID, vs_id);
      delete_object_config(vs_id, usPtpID, removed.object_flag);
    }
  }
}

void PM_LibPtpVsPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData) {
  const VsChange added = vs_change(usPtpID, pstOldData);
  for (u16 vs_id = first_notified_vs; vs_id < PM_VS_NUM; ++vs_id) {
    if (!contains(added, vs_id)) {
      continue;
    }
    const u32 ret = add_object_config(vs_id, usPtpID, added.object_flag);
    if (ret != PM_OK) {
      RECORD(vs_id, object_type, usPtpID);
      PRINT_INFO(add_failed_level, "\r\n PUB_LibAddObjCfg fail, ulRet=%u, usVsID=%u", ret, vs_id);
      delete_object_config(vs_id, usPtpID, added.object_flag);
      return;
    }
    raise_vs(PM_PRIM_VS_ADDED, usPtpID, vs_id);
  }
}
