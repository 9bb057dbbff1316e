// Delivery of a primitive to the functions booked for it, trace switches off.
#include <array>
#include <utility>

#include "bench/floor_delivery.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr double delivery_target = 1.3;

// Each booked function is one of its own, as in a product.
u64 heard;
template <u32 number>
u32 booked(u16 ptp_id, u16 /*prim_type*/, void * /*para*/) {
  heard += ptp_id + u64{number};
  return 0;
}

template <u32... numbers>
constexpr std::array<PmBookFunc, sizeof...(numbers)> booked_functions(
    std::integer_sequence<u32, numbers...>) {
  return {booked<numbers>...};
}

constexpr u32 most_booked = 64;
constexpr auto functions = booked_functions(std::make_integer_sequence<u32, most_booked>{});

// Primitives whose delivery no failure would end, one for each number of functions.
struct Booking {
  u16 prim_type;
  u32 num;
};
constexpr Booking bookings[] = {{PM_PRIM_LINK_UP, 1}, {PM_PRIM_LINK_DOWN, 8}, {10, most_booked}};

template <u32 (*deliver)(u16, u16, void *)>
Work delivering(const World &world, u16 prim_type) {
  return asking_ptps(world, [prim_type](u16 ptp_id) {
    const u64 before = heard;
    const u32 ret = deliver(prim_type, ptp_id, nullptr);
    return ret + (heard - before);
  });
}

}  // namespace

void add_delivery_rows(World &world, Rivals & /*rivals*/, std::vector<Row> &rows) {
  for (const Booking &booking : bookings) {
    for (u32 i = 0; i < booking.num; ++i) {
      (void)PM_LibRegPrimaryWordCallback(booking.prim_type, PM_PTP_TYPE_ALL, functions[i]);
    }
    Row row;
    row.name = "delivery, " + std::to_string(booking.num) + " booked";
    row.target = delivery_target;
    row.questions = world.ptps();
    row.parts = booking.num;
    row.part = "function";
    row.contenders = {{"library", delivering<PM_LibBookCallBookedFuncs>(world, booking.prim_type)},
                      {"floor", delivering<floor_of::deliver>(world, booking.prim_type)}};
    rows.push_back(std::move(row));
  }
}

}  // namespace bench
