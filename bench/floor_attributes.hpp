#ifndef BENCH_FLOOR_ATTRIBUTES_HPP
#define BENCH_FLOOR_ATTRIBUTES_HPP

#include "platform/base.h"

namespace floor_of {

u32 mtu(u16 ptp_id, u32 *mtu);
u32 name(u16 ptp_id, u32 length, char *name);

}  // namespace floor_of

#endif
