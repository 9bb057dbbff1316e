#ifndef BENCH_FLOOR_REVERSE_HPP
#define BENCH_FLOOR_REVERSE_HPP

#include "platform/base.h"

namespace floor_of {

u32 find_port(u16 board, u8 port, u16 *ptp_id);
u32 scan(u8 ptp_class, u16 index1, u16 index2, u16 *ptp_id);

}  // namespace floor_of

#endif
