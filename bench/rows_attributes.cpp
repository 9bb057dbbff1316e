// Live attributes: through a sub-line's callback, one field and the whole record.
#include "bench/floor_attributes.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr double attribute_target = 1.5;

template <u32 (*ask)(u16, u32 *)>
u64 mtu_of(u16 ptp_id) {
  u32 mtu = 0;
  return ask(ptp_id, &mtu) + u64{mtu};
}

template <u32 (*ask)(u16, u32, char *)>
u64 name_of(u16 ptp_id) {
  char name[PM_NAME_LEN + 1];
  const u32 ret = ask(ptp_id, sizeof name, name);
  constexpr u32 place_of_letter = 16;
  return u64{ret} + static_cast<u8>(name[0]) + static_cast<u8>(name[place_of_letter]);
}

}  // namespace

void add_attribute_rows(World &world, Rivals & /*rivals*/, std::vector<Row> &rows) {
  Row row;
  row.name = "live attribute (MTU)";
  row.target = attribute_target;
  row.questions = world.ptps();
  row.contenders = {{"library", asking_ptps(world, mtu_of<PM_LibGetMtuFromPTP>)},
                    {"floor", asking_ptps(world, mtu_of<floor_of::mtu>)}};
  rows.push_back(row);
  row.name = "live whole record (name)";
  row.contenders = {{"library", asking_ptps(world, name_of<PM_LibGetNameFromPTP>)},
                    {"floor", asking_ptps(world, name_of<floor_of::name>)}};
  rows.push_back(row);
}

}  // namespace bench
