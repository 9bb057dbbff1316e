// What every floor begins with: the instance's data, found the way the host prescribes, and the
// host's side of a trace line whose switch is off.
//
// A floor keeps only what its answer needs: no check of pointers, no texts, no error records that
// the measured questions never cause. It reads the library's own tables, so both touch the same
// memory, and makes the same host calls in the same order, so both pay the host alike.
#ifndef BENCH_FLOOR_HPP
#define BENCH_FLOOR_HPP

#include "global_data.hpp"
#include "platform/bounded.h"
#include "platform/dbg.h"
#include "platform/ddm.h"
#include "platform/dev.h"
#include "platform/syn.h"
#include "platform/zel.h"
#include "pm.h"

namespace floor_of {

inline PmGlobalData *data() {
  return static_cast<PmGlobalData *>(ROOT_LibGetCurrentThis()->pLocalData);
}

inline PtpDynPubData *records(const PmGlobalData *data) {
  return *data->pstPtpDynPubData;
}

inline bool in_range(const PmGlobalData *data, u16 ptp_id) {
  return ptp_id < data->ulDynRecordNum;
}

inline u32 existence(const PtpDynPubData &record) {
  return record.ucExist != 0 ? 0 : u32{PM_ERR_PTP_NOT_EXIST};
}

// A trace line asks the host and the instance's switch. The floors have no text to print.
inline void ask_switch(u32 switch_no) {
  if (DBG_xPrintfSwitch(0, switch_no) == 1 && data()->astDbgSwitch[switch_no].ulValue != 0) {
    __builtin_trap();
  }
}

}  // namespace floor_of

#endif
