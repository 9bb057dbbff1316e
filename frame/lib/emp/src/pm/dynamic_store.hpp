// The dynamic records as the library's other files see them.
#ifndef PM_DYNAMIC_STORE_HPP
#define PM_DYNAMIC_STORE_HPP

#include "global_data.hpp"

namespace pm {

// The record array; null while the store does not exist.
inline PtpDynPubData *dynamic_records(const PmGlobalData *data) {
  return data == nullptr || data->pstPtpDynPubData == nullptr ? nullptr : *data->pstPtpDynPubData;
}

// Is there a slot for the PTP? The array keeps its first size when the maximum PTP ID grows.
bool dynamic_slot_exists(const PmGlobalData *data, u16 ptp_id);

}  // namespace pm

#endif
