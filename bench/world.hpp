// One node with a running instance of the library and that many PTPs: what the questions are about.
//
// The chassis is as full as it can be: boards of 16 ports at 64 PTPs, 128 at 4,096 and 255 at
// 65,535, sixteen slots per frame. PTP n is port n % ports of board n / ports; eight port types
// take turns. Every PTP exists, has a static record and a description of its own.
#ifndef BENCH_WORLD_HPP
#define BENCH_WORLD_HPP

#include <memory>
#include <string>
#include <vector>

#include "bench/row.hpp"
#include "host/host.hpp"
#include "pm.h"

namespace bench {

constexpr u32 type_num = 8;
constexpr u16 first_type = 20;
constexpr u32 desc_len = 32;

// The records of one PTP as the data owner has them.
PtpDynPubData dynamic_record(u32 ptps, u16 ptp_id);
PtpStaticData static_record(u32 ptps, u16 ptp_id);
std::string description_of(u16 ptp_id);

// One call of the sub-lines' callbacks: a live attribute that depends on the PTP.
u32 sub_line_attr(u16 ptp_id, PmSubAttr *attr);
u32 sub_line_attr_priv(u16 ptp_id, u32 selector, PmSubAttr *attr);

class World {
 public:
  enum class Fill {
    nothing,  // up to the end of the start-up phases: no data class has arrived
    all       // every batch delivered
  };
  World(u32 ptps, Fill fill);
  World(const World &) = delete;
  World &operator=(const World &) = delete;

  u32 ptps() const { return ptps_; }
  // All PTP IDs in a shuffled order, the same on every run.
  u16 id(size_t question) const { return ids_[question % ptps_]; }
  const std::vector<u16> &ids() const { return ids_; }

  host::Node node;
  host::Instance *instance = nullptr;

  // The owner's records into the data distribution, and from there to the instance.
  void lay_records();
  void deliver_batches();

  // What has arrived or was remembered is gone, as if it had not come yet.
  void forget_places();
  void forget_dynamic_records();
  void forget_static_records();

  // Makes this world the one that the process-wide specification speaks of. A world is entered when
  // it is made; with several, before one of them is used.
  void publish_spec();

 private:
  void lay_chassis();
  void empty_table(Handle table);
  u32 ptps_;
  std::vector<u16> ids_;
  std::unique_ptr<host::Scope> scope_;
};

}  // namespace bench

#endif
