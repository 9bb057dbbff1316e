// Capability and attribute services.
#include <cstring>

#include "host/call.hpp"

namespace host {

namespace {

using Classes = std::map<u32, ClassRegistration>;

u32 register_class(Classes &classes, u32 class_id, const void *record) {
  if (record == nullptr) {
    return code_null;
  }
  // A pointer and two u16 behind it, without gaps.
  const auto *bytes = static_cast<const u8 *>(record);
  ClassRegistration info;
  std::memcpy(&info.get_ptp_type, bytes, sizeof info.get_ptp_type);
  std::memcpy(&info.module, bytes + sizeof info.get_ptp_type, sizeof info.module);
  std::memcpy(&info.class_value, bytes + sizeof info.get_ptp_type + sizeof info.module,
              sizeof info.class_value);
  classes[class_id] = info;
  return 0;
}

u32 own_type(const Classes &classes, u32 class_id, u32 ptp, u16 &type) {
  constexpr u32 type_of_the_ptp = 0xFFFFFFFF;
  const auto found = classes.find(class_id);
  if (found == classes.end()) {
    return code_unknown;
  }
  return found->second.get_ptp_type == nullptr
             ? u32{code_null}
             : found->second.get_ptp_type(type_of_the_ptp, static_cast<u16>(ptp), &type);
}

}  // namespace

u32 ClassServices::register_capabilities(u32 class_id, const void *record) {
  return register_class(capabilities_, class_id, record);
}

u32 ClassServices::register_attributes(u32 class_id, const void *record) {
  return register_class(attributes_, class_id, record);
}

u32 ClassServices::get_capability(u32 class_id, u32 ptp, u32 value) const {
  u16 type = 0;
  if (capability && capabilities_.count(class_id) != 0) {
    return capability(class_id, ptp, value);
  }
  return own_type(capabilities_, class_id, ptp, type);
}

u32 ClassServices::get_attribute(u32 class_id, u32 ptp, u32 value, void *buffer, u16 length) const {
  auto *bytes = static_cast<u8 *>(buffer);
  u16 type = 0;
  if (bytes == nullptr) {
    return code_null;
  }
  if (attribute && attributes_.count(class_id) != 0) {
    return attribute(class_id, ptp, value, bytes, length);
  }
  const u32 code = own_type(attributes_, class_id, ptp, type);
  if (code != 0) {
    return code;
  }
  if (length < sizeof type) {
    return code_length;
  }
  std::memset(bytes, 0, length);
  std::memcpy(bytes, &type, sizeof type);
  return 0;
}

}  // namespace host

using namespace host;

u32 CAP_LibRegCapMngtProc(u32 ulClass, const void *pstClassMngtReg) {
  return call<Fn::CAP_LibRegCapMngtProc>(
      [&](Node &node) { return node.classes.register_capabilities(ulClass, pstClassMngtReg); },
      ulClass);
}

u32 CAP_LibGetCapability(u32 ulClass, u32 usPtpID, u32 ulCapability) {
  return call<Fn::CAP_LibGetCapability>(
      [&](Node &node) { return node.classes.get_capability(ulClass, usPtpID, ulCapability); },
      ulClass, usPtpID, ulCapability);
}

u32 ATTR_LibRegClassMngtProc(u32 ulClass, const void *pstClassMngtReg) {
  return call<Fn::ATTR_LibRegClassMngtProc>(
      [&](Node &node) { return node.classes.register_attributes(ulClass, pstClassMngtReg); },
      ulClass);
}

u32 ATTR_LibGetAttribute(u32 ulClass, u32 usPtpID, u32 ulAttribute, void *pBuf, u16 usLen) {
  return call<Fn::ATTR_LibGetAttribute>(
      [&](Node &node) {
        return node.classes.get_attribute(ulClass, usPtpID, ulAttribute, pBuf, usLen);
      },
      ulClass, usPtpID, ulAttribute, usLen);
}
