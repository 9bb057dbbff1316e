#ifndef BENCH_FLOOR_DELIVERY_HPP
#define BENCH_FLOOR_DELIVERY_HPP

#include "platform/base.h"

namespace floor_of {

u32 deliver(u16 prim_type, u16 ptp_id, void *para);

}  // namespace floor_of

#endif
