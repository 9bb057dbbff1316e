#include "node/ptp_text.hpp"

#include "node/console.hpp"

namespace node {

std::string place_of(u16 ptp) {
  u16 frame = 0;
  u8 slot = 0;
  u8 port = 0;
  if (const u32 code = PM_LibGetFSPFromPtp(ptp, &frame, &slot, &port)) {
    return result_text(code);
  }
  return std::to_string(frame) + "/" + std::to_string(slot) + "/" + std::to_string(port);
}

std::string description_of(u16 ptp) {
  char text[PM_DESC_LEN_MAX + 1] = "";
  const u32 code = PM_LibGetDescFromPTP(ptp, sizeof text, text);
  if (code == PM_ERR_FUNC_NULL) {
    return "-";  // only physical ports have one
  }
  return code == PM_OK ? text : result_text(code);
}

std::string type_name_of(const Chassis &chassis, u16 value) {
  const PortType *type = chassis.port_type(value);
  return type == nullptr ? "?" : type->name;
}

std::string type_name_of_ptp(const Chassis &chassis, u16 ptp) {
  u16 type = 0;
  const u32 code = PM_LibGetTypeFromPTP(ptp, &type);
  return code == PM_OK ? type_name_of(chassis, type) : result_text(code);
}

std::string systems_of(u32 mask) {
  std::string text;
  for (unsigned id = 0; id < PM_VS_NUM; ++id) {
    if (mask >> id & 1) {
      text += (text.empty() ? "" : ", ") + std::to_string(id);
    }
  }
  return text.empty() ? "none" : text;
}

}  // namespace node
