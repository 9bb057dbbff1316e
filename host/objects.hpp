// Object configuration per virtual system, and the capability and attribute services.
#ifndef HOST_OBJECTS_HPP
#define HOST_OBJECTS_HPP

#include <array>
#include <functional>
#include <map>
#include <tuple>
#include <vector>

#include "host/fn.hpp"

namespace host {

struct Node;

struct ObjectId {
  u32 vs = 0;
  u32 type = 0;
  u32 ptp = 0;
  bool operator<(const ObjectId &other) const {
    return std::tie(vs, type, ptp) < std::tie(other.vs, other.type, other.ptp);
  }
};

struct ObjectChange {
  bool added = false;  // otherwise deleted
  ObjectId id;
  std::array<u32, 2> flags{};  // one word when added
};

// Adding what is there changes its flag; deleting what is absent is accepted. Both are logged.
class ObjectCfg {
 public:
  const std::map<ObjectId, u32> &objects() const { return objects_; }
  bool has(u32 vs, u32 ptp, u32 type = 2) const { return objects_.count({vs, type, ptp}) != 0; }
  // Virtual systems in which the PTP has configuration; bit n = virtual system n.
  u32 vs_mask(u32 ptp, u32 type = 2) const;
  const std::vector<ObjectChange> &log() const { return log_; }
  void clear_log() { log_.clear(); }

  // For the host functions themselves.
  u32 add(const ObjectId &id, u32 flag);
  u32 remove(const ObjectId &id, const std::array<u32, 2> &flags);

 private:
  std::map<ObjectId, u32> objects_;
  std::vector<ObjectChange> log_;
};

// The registration record of a class as it is handed over; the pointer is copied out of it.
struct ClassRegistration {
  u32 (*get_ptp_type)(u32 value, u16 ptp, u16 *type) = nullptr;
  u16 module = 0;
  u16 class_value = 0;
};

// A query of a class that is not registered answers code_unknown. Unless a function is set, the
// query asks the registered function for the PTP's port type (with value 0xFFFFFFFF, which selects
// the PTP's own) and answers its code; an attribute query writes the type to the buffer, two bytes
// little-endian, the rest zero.
class ClassServices {
 public:
  const std::map<u32, ClassRegistration> &capability_classes() const { return capabilities_; }
  const std::map<u32, ClassRegistration> &attribute_classes() const { return attributes_; }

  std::function<u32(u32 class_id, u32 ptp, u32 capability)> capability;
  std::function<u32(u32 class_id, u32 ptp, u32 attribute, u8 *buffer, u16 length)> attribute;

  // For the host functions themselves.
  u32 register_capabilities(u32 class_id, const void *record);
  u32 register_attributes(u32 class_id, const void *record);
  u32 get_capability(u32 class_id, u32 ptp, u32 value) const;
  u32 get_attribute(u32 class_id, u32 ptp, u32 value, void *buffer, u16 length) const;

 private:
  std::map<u32, ClassRegistration> capabilities_;
  std::map<u32, ClassRegistration> attributes_;
};

}  // namespace host

#endif
