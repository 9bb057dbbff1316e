#ifndef BENCH_FLOOR_RESTORE_HPP
#define BENCH_FLOOR_RESTORE_HPP

#include "platform/base.h"

namespace floor_of {

u32 restore_dynamic(u32 class_id, const void *key, const void *record, u32 length);
u32 restore_static(u32 class_id, const void *record, u32 length);
u32 extract_unit(u32 unit, void *buffer, u32 room, u32 *length);
u32 restore_unit(u32 unit, const void *record, u32 length);
// Among the PTPs below `num`.
u32 find_description(const char *text, u32 num, u16 *ptp_id);

}  // namespace floor_of

#endif
