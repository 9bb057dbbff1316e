// Port counts of a board, asked of the device layer anew at every call.
#include "diag.hpp"
#include "platform/dev.h"
#include "pm_board_ports.h"

PM_SOURCE(pm_lib_core_adapt, 21);

namespace {

constexpr u32 board_attr_inner_ports = 0x10007;
constexpr u32 board_attr_outer_ports = 0x10008;
constexpr u8 port_type_none = 0xFF;
constexpr u16 port_total_max = 255;

// One text serves both counts.
u32 read_port_count(u16 board, u32 attribute, u16 *count) {
  const u32 ret = DEV_LibGetBoardAttribute(board, attribute, sizeof *count, count);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION,
          "DEV_LibGetBoardAttribute fail, get inner port num fail, ulRet = 0x%x, usBIndex = %u",
          ret, board);
    return FAIL(ret, ret, board);
  }
  return PM_OK;
}

struct TypedPorts {
  u32 ret;      // of the read that ended the count, 0 when every port was read
  u8 end_port;  // the port of that read, else one past the last
  u8 num;       // ports with a type
};

TypedPorts count_typed_ports(u16 board, u8 first_port, u8 end_port) {
  TypedPorts ports = {PM_OK, first_port, 0};
  for (; ports.end_port < end_port; ++ports.end_port) {
    u8 type = 0;
    ports.ret = DEV_LibGetPortTypeOfBoard(board, ports.end_port, &type);
    if (ports.ret != PM_OK) {
      break;
    }
    if (type != port_type_none) {
      ++ports.num;
    }
  }
  return ports;
}

}  // namespace

u32 PM_LibGetHardwarePortNum(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum, u8 *pucSumNum) {
  if (pucOutPortNum == nullptr || pucInnerPortNum == nullptr || pucSumNum == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  u16 inner_num = 0;
  u32 ret = read_port_count(usBIndex, board_attr_inner_ports, &inner_num);
  if (ret != PM_OK) {
    return ret;
  }
  u16 outer_num = 0;
  ret = read_port_count(usBIndex, board_attr_outer_ports, &outer_num);
  if (ret != PM_OK) {
    return ret;
  }
  // A sum that does not fit is below both numbers.
  const u16 total = static_cast<u16>(inner_num + outer_num);
  if (total < inner_num) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetHardwarePortNum fail, usTotalPortNum = %u, pucOutPortNum = %u, "
          "usInnerPortNum = %u",
          total, outer_num, inner_num);
    return FAIL(PM_ERR_STR_OPER, total, outer_num, inner_num);
  }
  if (total > port_total_max) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetHardwarePortNum fail, total num is invalid, Total = %u",
          total);
    return FAIL(PM_ERR_STR_OPER, outer_num, inner_num);
  }
  *pucOutPortNum = static_cast<u8>(outer_num);
  *pucInnerPortNum = static_cast<u8>(inner_num);
  *pucSumNum = static_cast<u8>(total);
  TRACE(PM_SWITCH_FUNCTION,
        "PM_LibGetHardwarePortNum result: *pucOutPortNum = %u, *pucInnerPortNum = %u, "
        "*pucSumNum = %u",
        outer_num, inner_num, total);
  return PM_OK;
}

u32 PM_LibGetPortNumFromBIndex(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                               u8 *pucSumNum) {
  if (pucOutPortNum == nullptr || pucInnerPortNum == nullptr || pucSumNum == nullptr) {
    TRACE(PM_SWITCH_ERROR,
          "PM_GetPortNumFromBIndex fail, input pointer is null, usBIndex = %u, "
          "pucOutPortNum = 0x%x, pucInnerPortNum = 0x%x, pucSumNum = 0x%x",
          usBIndex, pm::word(pucOutPortNum), pm::word(pucInnerPortNum), pm::word(pucSumNum));
    return FAIL(PM_ERR_PARA, usBIndex, pm::is_null(pucOutPortNum), pm::is_null(pucInnerPortNum));
  }
  u8 outer_num = 0;
  u8 inner_num = 0;
  u8 total = 0;
  const u32 ret = PM_LibGetHardwarePortNum(usBIndex, &outer_num, &inner_num, &total);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "PM_GetHardwarePortNum Get VisibleNum fail, ulRet = 0x%x, usBIndex = %u",
          ret, usBIndex);
    return FAIL(ret, ret, usBIndex);
  }
  const TypedPorts outer = count_typed_ports(usBIndex, 0, outer_num);
  if (outer.ret != PM_OK) {
    TRACE(PM_SWITCH_ERROR,
          "DEV_GetPortTypeOfBoard Get InvisibleNum fail, ulRet = 0x%x, usBIndex = %u, ucLoop = %u",
          outer.ret, usBIndex, outer.end_port);
    return FAIL(outer.ret, outer.ret, usBIndex, outer.end_port);
  }
  const TypedPorts inner = count_typed_ports(usBIndex, outer_num, total);
  if (inner.ret != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "DEV_GetPortTypeOfBoard fail, ulRet = 0x%x, usBIndex = %u, ucLoop = %u",
          inner.ret, usBIndex, inner.end_port);
    return FAIL(inner.ret, inner.ret, usBIndex, inner.end_port);
  }
  const u8 sum = static_cast<u8>(outer.num + inner.num);
  *pucOutPortNum = outer.num;
  *pucInnerPortNum = inner.num;
  *pucSumNum = sum;
  TRACE(PM_SWITCH_FUNCTION,
        "PM_GetPortNumFromBIndex result: *pucOutPortNum = %u, *pucInnerPortNum = %u, "
        "*pucSumNum = %u",
        outer.num, inner.num, sum);
  return PM_OK;
}
