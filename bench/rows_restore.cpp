// What arrives: all dynamic and static records, one live change, the units of the standby, and the
// search through the descriptions.
#include <cstring>

#include "bench/floor_restore.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr double restore_target = 1.5;
constexpr u32 changed_num = 64;
constexpr u8 batch_running = 0;
constexpr u8 batch_finished = 1;

using RestoreDynamic = u32 (*)(u16 ptp_id, const PtpDynPubData &record);
using RestoreStatic = u32 (*)(const PtpStaticData &record);
using Extract = u32 (*)(u32 unit, void *buffer, u32 room, u32 *length);
using RestoreUnit = u32 (*)(u32 unit, const void *record, u32 length);
using Search = u32 (*)(const char *text, u32 ptps, u16 *ptp_id);

u32 library_dynamic(u16 ptp_id, const PtpDynPubData &record) {
  const u32 key = ptp_id;
  return PM_LibScribeRestore_DynamicCB(PM_CLASS_DYNAMIC, 0, &key, &record, sizeof record);
}
u32 floor_dynamic(u16 ptp_id, const PtpDynPubData &record) {
  const u32 key = ptp_id;
  return floor_of::restore_dynamic(PM_CLASS_DYNAMIC, &key, &record, sizeof record);
}
u32 library_static(const PtpStaticData &record) {
  return PM_LibScribeRestore_StaticDB(PM_CLASS_STATIC, 0, nullptr, &record, sizeof record);
}
u32 floor_static(const PtpStaticData &record) {
  return floor_of::restore_static(PM_CLASS_STATIC, &record, sizeof record);
}
u32 library_unit(u32 unit, const void *record, u32 length) {
  return PM_LibSynRestoreStaticData(unit, record, length, 0);
}
u32 library_search(const char *text, u32 /*ptps*/, u16 *ptp_id) {
  return PM_LibGetPtpFromDesc(text, ptp_id);
}

// All records of the owner, as they lie in its messages.
struct Records {
  std::vector<PtpDynPubData> dynamic;
  std::vector<PtpStaticData> fixed;
};

template <RestoreDynamic restore>
Work restoring_dynamic(const std::shared_ptr<Records> &from) {
  return asking([from](size_t question) {
    return restore(static_cast<u16>(question), from->dynamic[question]);
  });
}

template <RestoreStatic restore>
Work restoring_static(const std::shared_ptr<Records> &from) {
  return asking([from](size_t question) { return restore(from->fixed[question]); });
}

// Changes of the same 64 PTPs whatever the number of PTPs, from one end of the store to the other:
// each takes a new tick.
template <RestoreDynamic restore>
Work changing(const World &world, const std::shared_ptr<Records> &from) {
  return asking([from, stride = world.ptps() / changed_num](size_t question) {
    const size_t ptp_id = question % changed_num * stride;
    PtpDynPubData record = from->dynamic[ptp_id];
    record.LastChangeTick = static_cast<u32>(question);
    return restore(static_cast<u16>(ptp_id), record);
  });
}

template <Extract extract>
u64 extracted(size_t unit) {
  PmSynRecord record;
  u32 length = 0;
  const u32 ret = extract(static_cast<u32>(unit), &record, sizeof record, &length);
  return u64{ret} + length + record.stData.usPtpID + record.stData.ucPortID;
}

template <RestoreUnit restore>
Work restoring_units(const std::shared_ptr<Records> &from) {
  return asking([from](size_t unit) {
    const PmSynRecord record = {0, PM_SYN_MODULE, sizeof(PtpStaticData), 0, from->fixed[unit]};
    return restore(static_cast<u32>(unit), &record, sizeof record);
  });
}

template <Search search>
Work searching(const World &world) {
  return asking_ptps(world, [ptps = world.ptps()](u16 ptp_id) {
    u16 found = 0;
    const u32 ret = search(description_of(ptp_id).c_str(), ptps, &found);
    return u64{ret} + found;
  });
}

}  // namespace

void add_restore_rows(World &world, Rivals &rivals, std::vector<Row> &rows) {
  auto from = std::make_shared<Records>();
  for (u32 i = 0; i < world.ptps(); ++i) {
    from->dynamic.push_back(dynamic_record(world.ptps(), static_cast<u16>(i)));
    from->fixed.push_back(static_record(world.ptps(), static_cast<u16>(i)));
  }
  const auto add = [&](const char *name, double target, Work library, Work floor_work,
                       const std::function<void()> &set_up) -> Row & {
    Row row;
    row.name = name;
    row.target = target;
    row.questions = world.ptps();
    row.batch = world.ptps();
    row.fixed_batch = true;
    row.contenders = {{"library", std::move(library)}, {"floor", std::move(floor_work)}};
    for (Contender &contender : row.contenders) {
      contender.set_up = set_up;
    }
    rows.push_back(std::move(row));
    return rows.back();
  };
  const auto in_batch = [&world] {
    world.node.ddm.forced_batch_state = batch_running;
    world.forget_dynamic_records();
  };
  const auto live = [&world] { world.node.ddm.forced_batch_state = batch_finished; };

  Row &batch = add(dynamic_batch_row, restore_target, restoring_dynamic<library_dynamic>(from),
                   restoring_dynamic<floor_dynamic>(from), in_batch);
  rivals.add_fill(world, batch.contenders);
  add("dynamic records, live", restore_target, restoring_dynamic<library_dynamic>(from),
      restoring_dynamic<floor_dynamic>(from), live);
  Row &change = add("one live change", 0, changing<library_dynamic>(world, from),
                    changing<floor_dynamic>(world, from), live);
  change.questions = changed_num;
  change.batch = 4096;
  rivals.add_change(world, change.contenders);
  add(static_batch_row, restore_target, restoring_static<library_static>(from),
      restoring_static<floor_static>(from), [&world] { world.forget_static_records(); })
      .may_allocate = true;
  add("units, extract all", 0, asking(extracted<PM_LibSynExtractStaticData>),
      asking(extracted<floor_of::extract_unit>), {});
  add("units, restore all", 0, restoring_units<library_unit>(from),
      restoring_units<floor_of::restore_unit>(from), {});
  Row &search = add("description search", 0, searching<library_search>(world),
                    searching<floor_of::find_description>(world), {});
  search.questions = 8;
  search.batch = 1 + 4096 / world.ptps();
  search.fixed_batch = false;
  rivals.add_search(world, search.contenders);
}

}  // namespace bench
