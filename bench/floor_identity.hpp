#ifndef BENCH_FLOOR_IDENTITY_HPP
#define BENCH_FLOOR_IDENTITY_HPP

#include "platform/base.h"

namespace floor_of {

u32 vs_mask(u16 ptp_id, u32 *mask);
u32 exists(u16 ptp_id);
u32 type(u16 ptp_id, u16 *type);
u32 position(u16 ptp_id, u16 *board, u8 *port);
u32 frame_slot_port(u16 ptp_id, u16 *frame, u8 *slot, u8 *port);

}  // namespace floor_of

#endif
