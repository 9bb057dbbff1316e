// A static record as the library's other files see it: the record that stands for "no static data"
// and the place of the private data.
#ifndef PM_STATIC_RECORD_HPP
#define PM_STATIC_RECORD_HPP

#include <cstring>

#include "global_data.hpp"
#include "platform/zel.h"
#include "pm_static_data.h"

namespace pm {

// The record of a PTP without static data: every byte 0xFF.
inline PtpStaticData absent_static_record() {
  PtpStaticData record;
  std::memset(&record, 0xFF, sizeof record);
  return record;
}

inline bool is_absent_static_record(const void *record) {
  const PtpStaticData absent = absent_static_record();
  return ZEL_MemCmp(record, &absent, sizeof absent) == 0;
}

// The private data: directly behind the description's terminator, so where it begins depends on
// the description length. PM_PRI_DATA_SIZE bytes.
inline const u8 *private_static_data(const PtpStaticData &record) {
  constexpr u32 terminator_size = 1;
  return reinterpret_cast<const u8 *>(&record) + offsetof(PtpStaticData, szDescription) +
         usable_desc_len() + terminator_size;
}

}  // namespace pm

#endif
