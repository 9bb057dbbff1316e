// The standard hash map as a rival.
#ifndef BENCH_RIVAL_MAP_HPP
#define BENCH_RIVAL_MAP_HPP

#include <string>
#include <unordered_map>

#include "bench/world.hpp"

namespace bench {

constexpr u32 place_key(const PtpDynPubData &record) {
  return u32{record.usIndex1} << 16 | record.usIndex2;
}

class HashMap {
 public:
  HashMap() = default;
  explicit HashMap(const World &world) {
    for (u32 i = 0; i < world.ptps(); ++i) {
      const auto id = static_cast<u16>(i);
      put(id, dynamic_record(world.ptps(), id));
      descriptions_[description_of(id)] = id;
    }
  }
  void put(u16 ptp_id, const PtpDynPubData &record) {
    records_[ptp_id] = record;
    places_[place_key(record)] = ptp_id;
  }
  void change(u16 ptp_id, u32 tick) { records_[ptp_id].LastChangeTick = tick; }
  // Null when there is no such PTP.
  const PtpDynPubData *find(u16 ptp_id) const {
    const auto found = records_.find(ptp_id);
    return found == records_.end() ? nullptr : &found->second;
  }
  const u16 *find_place(u32 key) const {
    const auto found = places_.find(key);
    return found == places_.end() ? nullptr : &found->second;
  }
  const u16 *find_description(const std::string &text) const {
    const auto found = descriptions_.find(text);
    return found == descriptions_.end() ? nullptr : &found->second;
  }

 private:
  std::unordered_map<u16, PtpDynPubData> records_;
  std::unordered_map<u32, u16> places_;
  std::unordered_map<std::string, u16> descriptions_;
};

}  // namespace bench

#endif
