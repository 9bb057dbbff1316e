// From a place to the PTP: the cache's answer, an answer that has gone stale, none at all, and the
// scan behind them.
#include "bench/floor_reverse.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

constexpr double cached_target = 1.3;
constexpr double scan_target = 1.2;
constexpr u16 absent_board = 0x7FFF;

using Find = u32 (*)(u16 board, u8 port, u16 *ptp_id);
using Scan = u32 (*)(u8 ptp_class, u16 index1, u16 index2, u16 *ptp_id);

template <Find find>
u64 ptp_at(u16 board, u16 port) {
  u16 ptp_id = 0;
  return find(board, static_cast<u8>(port), &ptp_id) + u64{ptp_id};
}

// Asks for the place of every PTP.
template <Find find>
Work finding(const World &world) {
  struct Port {
    u16 board;
    u16 port;
  };
  std::vector<Port> places;
  for (const u16 ptp_id : world.ids()) {
    const PtpDynPubData at = dynamic_record(world.ptps(), ptp_id);
    places.push_back({at.usIndex1, at.usIndex2});
  }
  return asking([places = std::move(places)](size_t question) {
    const Port &at = places[question % places.size()];
    return ptp_at<find>(at.board, at.port);
  });
}

// Moves one of two PTPs to the place that the other one leaves, and asks who is there. They are the
// last two, so that the scan has the longest way.
template <Find find>
Work finding_moved(const World &world) {
  const auto last = static_cast<u16>(world.ptps() - 1);
  const PtpDynPubData place = dynamic_record(world.ptps(), last);
  return asking([last, place](size_t question) {
    const bool even = question % 2 == 0;
    const u16 here = even ? place.usIndex2 : absent_board;
    const u16 away = even ? absent_board : place.usIndex2;
    (void)PM_LibSetDynPubDataAttr(last, PM_DYN_ATTR_INDEX2, &here);
    (void)PM_LibSetDynPubDataAttr(static_cast<u16>(last - 1), PM_DYN_ATTR_INDEX2, &away);
    return ptp_at<find>(place.usIndex1, place.usIndex2);
  });
}

template <Scan scan>
u64 scanned(size_t question) {
  u16 ptp_id = 0;
  return scan(PM_PTP_CLASS_PORT, absent_board, static_cast<u16>(question), &ptp_id) + u64{ptp_id};
}

}  // namespace

void add_reverse_rows(World &world, Rivals &rivals, std::vector<Row> &rows) {
  const auto add = [&](const char *name, Work library, Work floor_work) -> Row & {
    Row row;
    row.name = name;
    row.contenders = {{"library", std::move(library)}, {"floor", std::move(floor_work)}};
    row.questions = 64;
    row.batch = 1 + 16'384 / world.ptps();
    rows.push_back(std::move(row));
    return rows.back();
  };
  Row &row = add("reverse lookup, cached", finding<PM_LibGetPtpFromPhyIndex>(world),
                 finding<floor_of::find_port>(world));
  row.target = cached_target;
  row.questions = world.ptps();
  row.batch = 512;
  rivals.add_place(world, row.contenders);
  // Every place has been asked for once before the comparison.
  (void)row.contenders.front().work(0, world.ptps());

  Row &absent =
      add("reverse lookup, absent",
          asking([](size_t) { return ptp_at<PM_LibGetPtpFromPhyIndex>(absent_board, 1); }),
          asking([](size_t) { return ptp_at<floor_of::find_port>(absent_board, 1); }));
  rivals.add_absent_place(world, absent.contenders);

  Row &scan = add("scan, per record", asking(scanned<PM_LibGetPtpFromPhyIndexOnSrvByEnum>),
                  asking(scanned<floor_of::scan>));
  scan.target = scan_target;
  scan.parts = world.ptps();
  scan.part = "record";

  Row &stale = add("reverse lookup, stale", finding_moved<PM_LibGetPtpFromPhyIndex>(world),
                   finding_moved<floor_of::find_port>(world));
  stale.may_allocate = true;
  stale.tear_down = [&world] {
    for (u32 back = 1; back <= 2; ++back) {
      const auto ptp_id = static_cast<u16>(world.ptps() - back);
      (void)world.node.ddm.publish(PM_CLASS_DYNAMIC, ptp_id,
                                   host::view_of(dynamic_record(world.ptps(), ptp_id)));
    }
  };
}

}  // namespace bench
