// The walk over the whole chassis: one step, warm and cold, and from end to end.
#include "bench/floor_walk.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr u32 cold_steps = 8;

using Next = u32 (*)(u16 ptp_id, u16 *next_ptp_id);

u32 library_next(u16 ptp_id, u16 *next_ptp_id) {
  return PM_LibGetNextPtpFromPTP(PM_BINDEX_ALL, ptp_id, PM_PTP_TYPE_ALL, next_ptp_id);
}

template <Next next>
u64 step(u16 ptp_id) {
  u16 next_ptp_id = 0;
  return next(ptp_id, &next_ptp_id) + u64{next_ptp_id};
}

template <Next next>
u64 whole_walk(size_t /*question*/) {
  u64 sum = 0;
  for (u16 ptp_id = PM_PTP_ID_NONE; next(ptp_id, &ptp_id) == PM_OK;) {
    sum += ptp_id;
  }
  return sum;
}

// Steps from the middle of the chassis on, so that a scan goes over half of the records.
template <Next next>
Contender from_the_middle(const char *name, World &world) {
  Contender contender;
  contender.name = name;
  contender.set_up = [&world] { world.forget_places(); };
  contender.work = asking([middle = world.ptps() / 2](size_t question) {
    return step<next>(static_cast<u16>(middle + question));
  });
  return contender;
}

}  // namespace

void add_walk_rows(World &world, Rivals &rivals, std::vector<Row> &rows) {
  // Every place has been asked for once before the walk is warm.
  (void)whole_walk<library_next>(0);

  Row warm;
  warm.name = "walk, one step, warm";
  warm.questions = world.ptps();
  warm.contenders = {{"library", asking_ptps(world, step<library_next>)},
                     {"floor", asking_ptps(world, step<floor_of::next_port>)}};
  rivals.add_next(world, warm.contenders);
  rows.push_back(std::move(warm));

  Row whole;
  whole.name = "walk, whole chassis";
  whole.questions = 1;
  whole.batch = 1;
  whole.contenders = {{"library", asking(whole_walk<library_next>)},
                      {"floor", asking(whole_walk<floor_of::next_port>)}};
  rows.push_back(std::move(whole));

  Row cold;
  cold.name = "walk, one step, cold";
  cold.questions = cold_steps;
  cold.batch = cold_steps;
  cold.fixed_batch = true;
  cold.may_allocate = true;
  cold.contenders = {from_the_middle<library_next>("library", world),
                     from_the_middle<floor_of::next_port>("floor", world)};
  rows.push_back(std::move(cold));
}

}  // namespace bench
