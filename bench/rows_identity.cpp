// What one PTP is: an attribute, existence, type, place.
#include "bench/floor_identity.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr double query_target = 1.5;

u32 library_vs_mask(u16 ptp_id, u32 *mask) {
  return PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_VS_MASK, mask);
}

template <u32 (*ask)(u16, u32 *)>
u64 word_of(u16 ptp_id) {
  u32 value = 0;
  return ask(ptp_id, &value) + u64{value};
}

template <u32 (*ask)(u16, u16 *)>
u64 type_of(u16 ptp_id) {
  u16 type = 0;
  return ask(ptp_id, &type) + u64{type};
}

template <u32 (*ask)(u16, u16 *, u8 *)>
u64 position_of(u16 ptp_id) {
  u16 board = 0;
  u8 port = 0;
  return ask(ptp_id, &board, &port) + (u64{board} << 8) + port;
}

template <u32 (*ask)(u16, u16 *, u8 *, u8 *)>
u64 place_of(u16 ptp_id) {
  u16 frame = 0;
  u8 slot = 0;
  u8 port = 0;
  return ask(ptp_id, &frame, &slot, &port) + (u64{frame} << 16) + (u64{slot} << 8) + port;
}

}  // namespace

void add_identity_rows(World &world, Rivals &rivals, std::vector<Row> &rows) {
  const auto add = [&](const char *name, double target, auto library, auto floor_work,
                       const char *field) {
    Row row;
    row.name = name;
    row.target = target;
    row.questions = world.ptps();
    row.contenders = {{"library", asking_ptps(world, library)},
                      {"floor", asking_ptps(world, floor_work)}};
    if (field != nullptr) {
      rivals.add_field(world, field, row.contenders);
    }
    rows.push_back(std::move(row));
  };
  add("one dynamic attribute", query_target, word_of<library_vs_mask>, word_of<floor_of::vs_mask>,
      "vs");
  add("existence", query_target, PM_LibIfPtpExist, floor_of::exists, nullptr);
  add("port type", query_target, type_of<PM_LibGetTypeFromPTP>, type_of<floor_of::type>, "type");
  add("physical position", 0, position_of<PM_LibGetPhyIndexFromPTP>,
      position_of<floor_of::position>, nullptr);
  add("frame, slot, port", 0, place_of<PM_LibGetFSPFromPtp>, place_of<floor_of::frame_slot_port>,
      nullptr);
}

}  // namespace bench
