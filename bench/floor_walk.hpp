#ifndef BENCH_FLOOR_WALK_HPP
#define BENCH_FLOOR_WALK_HPP

#include "platform/base.h"

namespace floor_of {

// The port behind a PTP, over the whole chassis; PM_PTP_ID_NONE begins.
u32 next_port(u16 ptp_id, u16 *next_ptp_id);

}  // namespace floor_of

#endif
