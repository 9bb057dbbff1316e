// Model: board ports and walks.
#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = core_record;

}  // namespace

u32 Model::PM_LibGetHardwarePortNum(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                    u8 *pucSumNum) {
  if (pucOutPortNum == nullptr || pucInnerPortNum == nullptr || pucSumNum == nullptr) {
    return record(0x689380, {0x689380});
  }
  u16 counts[2] = {0, 0};  // inner, outer
  for (u32 i = 0; i < 2; ++i) {
    const u32 ret = DEV_LibGetBoardAttribute(usBIndex, 0x10007 + i, 2, &counts[i]);
    if (ret != 0) {
      PM_LibDotPrintf(
          0, 0,
          "DEV_LibGetBoardAttribute fail, get inner port num fail, ulRet = 0x%x, usBIndex = %u",
          ret, usBIndex);
      return record(ret, {ret, usBIndex});
    }
  }
  const u32 inner = counts[0];
  const u32 outer = counts[1];
  const u32 total = (inner + outer) % 65536;
  if (total < inner || total < outer) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibGetHardwarePortNum fail, usTotalPortNum = %u, pucOutPortNum = %u, "
                    "usInnerPortNum = %u",
                    total, outer, inner);
    return record(0x6908BC, {total, outer, inner});
  }
  if (total > 255) {
    PM_LibDotPrintf(0, 0, "PM_LibGetHardwarePortNum fail, total num is invalid, Total = %u", total);
    return record(0x6908BC, {outer, inner});
  }
  *pucOutPortNum = static_cast<u8>(outer);
  *pucInnerPortNum = static_cast<u8>(inner);
  *pucSumNum = static_cast<u8>(total);
  PM_LibDotPrintf(0, 0,
                  "PM_LibGetHardwarePortNum result: *pucOutPortNum = %u, *pucInnerPortNum = %u, "
                  "*pucSumNum = %u",
                  outer, inner, total);
  return 0;
}

u32 Model::PM_LibGetPortNumFromBIndex(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                      u8 *pucSumNum) {
  if (pucOutPortNum == nullptr || pucInnerPortNum == nullptr || pucSumNum == nullptr) {
    PM_LibDotPrintf(0, 1,
                    "PM_GetPortNumFromBIndex fail, input pointer is null, usBIndex = %u, "
                    "pucOutPortNum = 0x%x, pucInnerPortNum = 0x%x, pucSumNum = 0x%x",
                    usBIndex, shown(pucOutPortNum), shown(pucInnerPortNum), shown(pucSumNum));
    return record(0x689380, {usBIndex, is_null(pucOutPortNum), is_null(pucInnerPortNum)});
  }
  u8 outer = 0;
  u8 inner = 0;
  u8 total = 0;
  u32 ret = PM_LibGetHardwarePortNum(usBIndex, &outer, &inner, &total);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_GetHardwarePortNum Get VisibleNum fail, ulRet = 0x%x, usBIndex = %u",
                    ret, usBIndex);
    return record(ret, {ret, usBIndex});
  }
  u32 usable[2] = {0, 0};  // outer, inner
  for (u32 port = 0; port < total; ++port) {
    u8 type = 0;
    ret = DEV_LibGetPortTypeOfBoard(usBIndex, static_cast<u8>(port), &type);
    if (ret != 0 && port < outer) {
      PM_LibDotPrintf(
          0, 1,
          "DEV_GetPortTypeOfBoard Get InvisibleNum fail, ulRet = 0x%x, usBIndex = %u, ucLoop = %u",
          ret, usBIndex, port);
    } else if (ret != 0) {
      PM_LibDotPrintf(0, 1, "DEV_GetPortTypeOfBoard fail, ulRet = 0x%x, usBIndex = %u, ucLoop = %u",
                      ret, usBIndex, port);
    }
    if (ret != 0) {
      return record(ret, {ret, usBIndex, port});
    }
    usable[port < outer ? 0 : 1] += type != 0xFF ? 1 : 0;
  }
  *pucOutPortNum = static_cast<u8>(usable[0]);
  *pucInnerPortNum = static_cast<u8>(usable[1]);
  *pucSumNum = static_cast<u8>(usable[0] + usable[1]);
  PM_LibDotPrintf(0, 0,
                  "PM_GetPortNumFromBIndex result: *pucOutPortNum = %u, *pucInnerPortNum = %u, "
                  "*pucSumNum = %u",
                  usable[0], usable[1], usable[0] + usable[1]);
  return 0;
}

namespace {

// The rest of a board from a port on; ports are numbered beyond a byte here.
u32 rest_of_board(u16 board, u32 port, u16 type, u8 filter, u16 *next) {
  u8 outer = 0;
  u8 inner = 0;
  u8 total = 0;
  u32 ret = Model::PM_LibGetHardwarePortNum(board, &outer, &inner, &total);
  if (ret != 0) {
    return record(ret, {ret, board});
  }
  for (; port < total; ++port) {
    if (port % 32 == 0) {
      ZEL_ClearWatchDog();
    }
    u16 ptp = 0;
    if (Model::PM_LibGetPtpFromPhyIndex(board, static_cast<u8>(port), &ptp) != 0) {
      continue;
    }
    PtpDynPubData data{};
    ret = Model::PM_LibGetAllDynDataFromPtpID(ptp, &data);
    if (ret != 0) {
      record(0, {ptp, ret});
      continue;
    }
    if (data.ucPtpClass == 0 && data.usIndex1 == board &&
        (type == 0xFFFF || data.usPtpType == type) && (filter == 2 || data.ucInvisible == filter)) {
      *next = ptp;
      return 0;
    }
  }
  return 0x689384;
}

}  // namespace

u32 Model::PM_LibGetNextPtpIdInBoardByPort(u16 usBIndex, u8 ucPort, u16 usPtpType, u8 ucFilter,
                                           u16 *pusNextPtpID) {
  return rest_of_board(usBIndex, ucPort, usPtpType, ucFilter, pusNextPtpID);
}

u32 Model::PM_LibGetNextPtpIdByBIndex(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                      u16 *pusNextPtpID) {
  u32 ret = DEV_LibIfBoardExist(usBIndex);
  if (ret != 0) {
    return ret;
  }
  u32 from = 0;
  if (usPtpID != 0xFFFF) {
    u16 board = 0;
    u8 port = 0;
    ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
    if (ret != 0) {
      return record(ret, {usPtpID, ret});
    }
    if (board != usBIndex) {
      return record(0x689383, {usPtpID});
    }
    from = port + 1U;
  }
  if (from > 254) {
    return 0x689384;
  }
  return rest_of_board(usBIndex, from, usPtpType, ucFilter, pusNextPtpID);
}

u32 Model::PM_LibGetNextPtpIdByPtpID(u16 usPtpID, u16 usPtpType, u8 ucFilter, u16 *pusNextPtpID) {
  u32 first_frame = 0;
  u32 first_slot = 0;
  if (usPtpID != 0xFFFF) {
    u16 board = 0;
    u8 port = 0;
    u32 ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
    if (ret != 0) {
      return record(ret, {usPtpID, ret});
    }
    if (port < 254 && rest_of_board(board, port + 1U, usPtpType, ucFilter, pusNextPtpID) == 0) {
      return 0;
    }
    u16 frame = 0;
    u8 slot = 0;
    ret = DEV_LibGetFrameIDSlotIDFromBIndex(board, &frame, &slot);
    if (ret != 0) {
      return record(ret, {usPtpID});
    }
    first_frame = frame;
    first_slot = slot + 1U;
  }
  const u32 frames = DEV_GetMaxFrameNum();
  for (u32 frame = first_frame; frame < frames; ++frame) {
    if (frame % 32 == 0) {
      ZEL_ClearWatchDog();
    }
    if (DEV_LibIfFrameExist(static_cast<u16>(frame)) != 0) {
      continue;
    }
    u8 slots = 0;
    const u32 ret = DEV_LibGetFrameAttribute(static_cast<u16>(frame), 5, 1, &slots);
    if (ret != 0) {
      record(0, {ret, frame});
      continue;
    }
    for (u32 slot = frame == first_frame ? first_slot : 0; slot < slots; ++slot) {
      u16 board = 0;
      if (DEV_LibGetBIndexFromFrameIDSlotID(static_cast<u16>(frame), static_cast<u8>(slot),
                                            &board) == 0 &&
          DEV_LibIfBoardExist(board) == 0 &&
          rest_of_board(board, 0, usPtpType, ucFilter, pusNextPtpID) == 0) {
        return 0;
      }
    }
  }
  return 0x689384;
}

u32 Model::PM_LibPtpIdGetNextFromPortPtp(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                         u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    return record(0x689380, {usPtpID});
  }
  if (usPtpID != 0xFFFF) {
    u8 ptp_class = 0;
    const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 2, &ptp_class);
    if (ret != 0) {
      return record(ret, {usPtpID, ret});
    }
    if (ptp_class != 0) {
      return 0x689384;
    }
  }
  return usBIndex == 0xFFFF
             ? PM_LibGetNextPtpIdByPtpID(usPtpID, usPtpType, ucFilter, pusNextPtpID)
             : PM_LibGetNextPtpIdByBIndex(usBIndex, usPtpID, usPtpType, ucFilter, pusNextPtpID);
}

namespace {

u32 failed_walk(u32 ret, u16 board, u16 ptp, u16 type) {
  if (ret != 0x689384) {
    record(0, {ret, board, ptp, type});
  }
  return 0x689384;
}

}  // namespace

u32 Model::PM_LibGetNextPtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType, u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibGetNextPtpFromPTP fail, usBIndex = %u, usPtpID = %u, usPtpType = %u",
                    usBIndex, usPtpID, usPtpType);
    return record(0x689380, {usBIndex, usPtpID, usPtpType});
  }
  const u32 ret = PM_LibPtpIdGetNextFromPortPtp(usBIndex, usPtpID, usPtpType, 2, pusNextPtpID);
  if (ret == 0) {
    return 0;
  }
  PM_LibDotPrintf(0, 0, "PM_LibGetNextPtpFromPTP fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u",
                  ret, usPtpID, usPtpType);
  return failed_walk(ret, usBIndex, usPtpID, usPtpType);
}

u32 Model::PM_LibGetNextVisiblePtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                          u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    PM_LibDotPrintf(
        0, 0, "PM_LibGetNextVisiblePtpFromPTP fail, usBIndex = %u, usPtpID = %u, usPtpType = %u",
        usBIndex, usPtpID, usPtpType);
    return record(0x689380, {usBIndex, usPtpID, usPtpType});
  }
  const u32 ret = PM_LibPtpIdGetNextFromPortPtp(usBIndex, usPtpID, usPtpType, 0, pusNextPtpID);
  if (ret == 0) {
    return 0;
  }
  PM_LibDotPrintf(0, 0,
                  "PM_LibGetNextVisiblePtpFromPTP fail, ulRet = 0x%x, usPtpID = %u, usPortType = "
                  "%u",
                  ret, usPtpID, usPtpType);
  return failed_walk(ret, usBIndex, usPtpID, usPtpType);
}

u32 Model::PM_LibGetNextPtpFromVS(u32 ulVsID, u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                  u16 *pusNextPtpID) {
  if (ulVsID == 0xFFFF) {
    return PM_LibGetNextPtpFromPTP(usBIndex, usPtpID, usPtpType, pusNextPtpID);
  }
  if (pusNextPtpID == nullptr) {
    return record(0x689380, {usPtpID});
  }
  if (ulVsID > 8) {
    return record(0x689383, {usPtpID});
  }
  for (u16 ptp = usPtpID;;) {
    ZEL_TaskRunClearDog(20);
    u16 next = 0;
    const u32 ret = PM_LibGetNextPtpFromPTP(usBIndex, ptp, usPtpType, &next);
    if (ret != 0) {
      return ret;
    }
    if (PM_LibIfPtpInVs(next, ulVsID) == 0) {
      *pusNextPtpID = next;
      return 0;
    }
    ptp = next;
  }
}

}  // namespace soak
