// A node with one running instance of the library, brought up anew for every input, and the
// questions that are asked when the input has been given to it.
#ifndef FUZZ_RIG_HPP
#define FUZZ_RIG_HPP

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.hpp"
#include "host/host.hpp"
#include "pm.h"

namespace fuzz {

constexpr u32 cid = 0x36;
constexpr u32 partner_cid = 0x37;
constexpr u16 max_ptp = 40;
constexpr u16 type_num = 3;
constexpr u16 max_type = 40;
constexpr u32 desc_len = 32;

// The instance's life up to its start-up's end. The chassis has boards of 8 outer ports and an
// inner one in slots 0 and 2 of frame 0, board indexes 0 and 2; sub-lines 7 and 9 are registered.
class Rig {
 public:
  host::Node node;
  host::Instance *instance = nullptr;

  Rig();
  // Ends the instance: see verdict().
  ~Rig();
  Rig(const Rig &) = delete;
  Rig &operator=(const Rig &) = delete;

  // Port-type records, ports 1 to 8 as PTPs, and their static records.
  void lay_tables();
  // A second instance beside the first.
  host::Instance *start(u32 number);
  void publish_spec();

  // Everything that the tables are asked agrees with itself, and what the host saw is in order.
  void verdict();
  // Calls of booked functions since the start.
  static std::size_t booked_calls();
  static constexpr std::size_t booking_num = 10;

 private:
  std::size_t instances_ = 0;

  void ask_records() const;
  void ask_walks() const;
  void ask_port_types() const;
  void ask_host() const;
};

// Is it success or a code that the library may answer? The other two are of the framework's own.
bool is_known_code(u32 code);

inline PtpDynPubData port_record(u16 board, u16 port) {
  PtpDynPubData record{};
  record.usIndex1 = board;
  record.usIndex2 = port;
  record.ucPtpClass = PM_PTP_CLASS_PORT;
  record.ucExist = 1;
  record.usPtpType = 7;
  record.ulVsMask = 3;
  return record;
}

}  // namespace fuzz

#endif
