// Model: the debug window.
#include <cstdio>
#include <cstring>
#include <string>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = dbg_record;

struct Help {
  u32 command;
  const char *text;
};
constexpr Help kHelp[] = {
    {0, "Print help information of PM dbwin"},
    {1, "Display or set dot switch"},
    {2,
     "Query subline information registered, ulSubCmd=0x00 Query all type, ulSubCmd=PortType Query "
     "specificated port type"},
    {3, "Query PTP information by PTPID\xA3\xACulSubCmd=PTPID"},
    {4,
     "Query PTP information by F/S/P\xA3\xACulSubCmd=FrameID\xA3\xACulPara1=SlotID\xA3\xAC"
     "ulPara2=PortID"},
    {5, "Query PTP specification"},
    {6, "Query subline info"},
    {9, "Display PM primaryWords functions, ulSubCmd=PrimType"},
};

void help(u32 command, u32 level) {
  for (const Help &entry : kHelp) {
    if (entry.command == command && (level == 0 || level == 255)) {
      DBG_PrintHelpInfoLevel0(54, command, entry.text);
    }
  }
  if (command == 1 && level != 0) {
    DBG_PrintHelpInfo(54, 1, 1, 0, 0, "Display dot switch", 0, 0);
    DBG_PrintHelpInfo(54, 1, 1, 1, 0, "Set dot switch", 0, 0);
  }
}

constexpr const char *kSwitchTexts[] = {"Function trace switch", "General error switch",
                                        "Data modification supervision switch",
                                        "Synchronization and smooth information switch"};

// Frame and slot of a board index; 0xFFFF and 0xFF when it has none.
void place_of(u16 board, u16 &frame, u8 &slot) {
  u16 of_frame = 0;
  u8 of_slot = 0;
  const bool known = DEV_LibGetFrameIDSlotIDFromBIndex(board, &of_frame, &of_slot) == 0;
  frame = known ? of_frame : u16{0xFFFF};
  slot = known ? of_slot : u8{0xFF};
}

std::string type_text(u16 type) {
  char text[32] = {};
  Model::PM_LibDbgGetPtpTypeDesc(type, text, sizeof text);
  return text;
}

void static_block(const PtpStaticData &data) {
  u16 frame = 0;
  u8 slot = 0;
  place_of(data.usBIndex, frame, slot);
  const u32 room = Model::description_room();
  const std::string description(data.szDescription, strnlen(data.szDescription, room));
  const u16 type = data.usType;
  const std::string of_type = type_text(type);
  DBG_InnerPrintReltime(54, "\r\n  PTP  static data:");
  DBG_InnerPrintReltime(54, "\r\n    PTPID          : %u", u32{data.usPtpID});
  DBG_InnerPrintReltime(54, "\r\n    BIndex         : %u (Frame:%u, Slot:%u)", u32{data.usBIndex},
                        u32{frame}, u32{slot});
  DBG_InnerPrintReltime(54, "\r\n    PortID         : %u", u32{data.ucPortID});
  DBG_InnerPrintReltime(54, "\r\n    Type           : %u (%s)", u32{type}, of_type.c_str());
  DBG_InnerPrintReltime(54, "\r\n    LinkUpDownTrap : %u (%s)", u32{data.ucLinkUpDownTrap},
                        data.ucLinkUpDownTrap == 1 ? "on" : "off");
  DBG_InnerPrintReltime(54, "\r\n    Visible        : %u (%s)", u32{data.ucVisible},
                        data.ucVisible == 0 ? "visible" : "invisible");
  DBG_InnerPrintReltime(54, "\r\n    Description    : %s", description.c_str());
  std::string dump;
  for (u32 i = 0; i < 120; ++i) {
    char byte[4];
    static_cast<void>(std::snprintf(byte, sizeof byte, "%02x ",
                                    reinterpret_cast<const u8 *>(&data)[14 + room + i]));
    dump += byte;
  }
  DBG_InnerPrintReltime(54, "\r\n    aucPriData     : 0x %s", dump.c_str());
  DBG_InnerPrintReltime(54, "\r\n    ulVsMask       : 0x%8x", u32{data.ulVsMask});
  DBG_InnerPrintReltime(54, "\r\n");
}

void dynamic_block(const PtpDynPubData &data, bool visible) {
  u16 frame = 0;
  u8 slot = 0;
  place_of(data.usIndex1, frame, slot);
  const u16 type = data.usPtpType;
  const std::string of_type = type_text(type);
  DBG_InnerPrintReltime(54, "\r\n  PTP dynamic data:");
  DBG_InnerPrintReltime(54, "\r\n    ucPtpClass         : %u", u32{data.ucPtpClass});
  DBG_InnerPrintReltime(54, "\r\n    usIndex1         : %u", u32{data.usIndex1});
  DBG_InnerPrintReltime(54, "\r\n    usIndex2         : %u (Frame:%u, Slot:%u)", u32{data.usIndex2},
                        u32{frame}, u32{slot});
  DBG_InnerPrintReltime(54, "\r\n    Type           : %u (%s)", u32{type}, of_type.c_str());
  DBG_InnerPrintReltime(54, "\r\n    Visible        : %u (%s)", u32{data.ucInvisible},
                        visible ? "visible" : "invisible");
  DBG_InnerPrintReltime(54, "\r\n    PrivDynDataID  : %u", u32{data.PrivDynDataID});
  DBG_InnerPrintReltime(54, "\r\n    LastChangeTick : %u", u32{data.LastChangeTick});
  DBG_InnerPrintReltime(54, "\r\n    ulVsMask : 0x%8x", u32{data.ulVsMask});
  DBG_InnerPrintReltime(54, "\r\n");
}

}  // namespace

void Model::PM_LibInitPmDbWinCfg() {
  board().window = true;
}

void Model::PM_LibMsgProc(void *pMsg) {
  u32 type = 0;
  if (pMsg == nullptr) {
    init_record(0, {0x689380});
    return;
  }
  std::memcpy(&type, static_cast<const u8 *>(pMsg) + 4, sizeof type);
  if (type == 0x4C) {
    PM_LibDebugMsgProc(pMsg);
  }
}

void Model::PM_LibDebugMsgProc(const void *pMsg) {
  u32 words[4];
  std::memcpy(words, static_cast<const u8 *>(pMsg) + 20, sizeof words);
  void (*const handlers[])(u32, u32, u32, u32) = {PM_LibDbgPrintHelp,
                                                  PM_LibDbgSwitchControl,
                                                  PM_LibDbgShowRegedLineInfo,
                                                  PM_LibDbgShowPtpFromPtpID,
                                                  PM_LibDbgShowPtpFromFSP,
                                                  PM_LibDbgShowPTPSpec,
                                                  PM_LibShowSubLineInfo,
                                                  nullptr,
                                                  nullptr,
                                                  PM_LibDbgShowPrimFuncsByPrimType};
  if (board().window && words[0] < 10 && handlers[words[0]] != nullptr) {
    handlers[words[0]](words[0], words[1], words[2], words[3]);
  } else {
    DBG_InnerPrintReltime(54, "\r\n  unknown DBWIN command: %#x", words[0]);
  }
}

// -- Help

void Model::PM_LibDbgPrintHelp(u32, u32, u32, u32) {
  PM_LibShowDebugHelp(255, 0, 0, 0);
}

void Model::PM_LibShowDebugHelp(u32 ulLevel, u32 ulCommand, u32, u32) {
  if (ulLevel == 0 || ulLevel == 255) {
    PM_LibShowAllHelpFunc(ulLevel, 0, 0, 0);
  } else {
    PM_LibShowOneHelpFunc(ulCommand, 0, 0, 0);
  }
}

void Model::PM_LibShowAllHelpFunc(u32 ulLevel, u32, u32, u32) {
  for (const Help &entry : kHelp) {
    help(entry.command, ulLevel);
  }
}

void Model::PM_LibShowOneHelpFunc(u32 ulCommand, u32, u32, u32) {
  help(ulCommand, 1);
}

void Model::PM_LibHelpFunCmd1(u32 ulLevel, u32, u32, u32) {
  help(0, ulLevel);
}

void Model::PM_LibHelpFunCmd2(u32 ulLevel, u32, u32, u32) {
  help(1, ulLevel);
}

void Model::PM_LibHelpFunCmd3(u32 ulLevel, u32, u32, u32) {
  help(2, ulLevel);
}

void Model::PM_LibHelpFunCmd4(u32 ulLevel, u32, u32, u32) {
  help(3, ulLevel);
}

void Model::PM_LibHelpFunCmd5(u32 ulLevel, u32, u32, u32) {
  help(4, ulLevel);
}

void Model::PM_LibHelpFunCmd6(u32 ulLevel, u32, u32, u32) {
  help(5, ulLevel);
}

void Model::PM_LibHelpFunCmd7(u32 ulLevel, u32, u32, u32) {
  help(6, ulLevel);
}

void Model::PM_LibHelpFunCmd10(u32 ulLevel, u32, u32, u32) {
  help(9, ulLevel);
}

// -- Switches

void Model::PM_LibDbgSwitchControl(u32, u32 ulSubCmd, u32 ulPara1, u32 ulPara2) {
  Board &my = board();
  const auto row = [&](u32 number) {
    DBG_InnerPrintReltime(54, "\r\n  0x%-8x 0x%-8x  %s", number, my.switches[number],
                          my.described ? kSwitchTexts[number] : "");
  };
  if (ulSubCmd == 0) {
    DBG_InnerPrintReltime(54, "\r\n  Dot Controlling switch info of PM module:");
    DBG_InnerPrintReltime(54, "\r\n  Switch No.    Switch value  Switch desc");
    for (u32 number = 0; number < 4; ++number) {
      row(number);
    }
    DBG_InnerPrintReltime(
        54,
        "\r\n\r\n  use ulSubCmd=0x01, ulPara1=Switch No., ulPara2=Switch value, Switch modified "
        "value");
  } else if (ulSubCmd != 1) {
    DBG_InnerPrintReltime(54, "\r\n Unknown error: 0x%x", ulSubCmd);
  } else if (ulPara1 > 3) {
    DBG_InnerPrintInfo(54, "\r\n  Switch No. is error");
  } else {
    my.switches[ulPara1] = ulPara2;
    DBG_InnerPrintReltime(54, "\r\n  Set switch Successful:");
    DBG_InnerPrintReltime(54, "\r\n  Swtich No.    Switch value  Switch desc");
    row(ulPara1);
  }
}

// -- Sub-lines

void Model::PM_LibDbgShowRegedLineInfo(u32, u32 ulSubCmd, u32, u32) {
  if (ulSubCmd == 0) {
    PM_LibDbgShowAllRegedLineSummary();
  } else {
    PM_LibDbgShowOneRegedLineDetail(static_cast<u16>(ulSubCmd));
  }
}

void Model::PM_LibDbgShowAllRegedLineSummary() {
  const Board &my = board();
  DBG_InnerPrintReltime(54, "\r\n  type number  visible flag  type description ");
  DBG_InnerPrintReltime(54, "\r\n  ----------    ----------    -------------");
  const u32 count = my.counted ? my.type_count : 0;
  for (u32 index = 0; index < count; ++index) {
    if (index % 128 == 0) {
      ZEL_ClearWatchDog();
    }
    PmSubInnerSubInfo *info = nullptr;
    if (PM_LibGetSubInfoFromSuffix(static_cast<u16>(index), &info) != 0) {
      DBG_InnerPrintReltime(54, "\r\n  fails to get registration parameter whose index is %d.",
                            static_cast<int>(index));
    } else {
      DBG_InnerPrintReltime(54, "\r\n  0x%04x    %02x ", u32{info->usPtpType},
                            u32{info->ucVisible});
    }
  }
}

void Model::print_callbacks(const PmSubCallBack &slots) {
  constexpr const char *names[] = {
      "SET_ADMIN_FUNC            ", "SET_PROMISCOUS_MODE_FUNC  ", "GET_STATS_FUNC            ",
      "GET_ATTR_FUNC             ", "GET_ATTR_PRIV_FUNC        ", "SYN_EXTRACT_FUNC          ",
      "SYN_RESTORE_FUNC          ", "GET_ACTIVE_SPEED_FUNC     ", "GET_REPLACE_TYPE_FUNC     "};
  const void *functions[std::size(names)];
  static_assert(sizeof functions == sizeof slots);
  std::memcpy(functions, &slots, sizeof functions);
  for (std::size_t i = 0; i < std::size(names); ++i) {
    xPrintf(54, "\r\n    %s: 0x%p", names[i], functions[i]);
  }
}

void Model::PM_LibDbgPrintSubCallBackInfo(const PmSubCallBackEntry *pstCallBack) {
  const PmSubCallBack slots = pstCallBack->stCallBack;  // which need not be aligned
  print_callbacks(slots);
}

void Model::PM_LibDbgPrintSubLineInfo(const PmSubInnerSubInfo *pstSubInfo,
                                      const PmSubCallBackEntry *pstCallBack) {
  DBG_InnerPrintReltime(54, "\r\n  visible flag                   : %u",
                        u32{pstSubInfo->ucVisible});
  DBG_InnerPrintReltime(54, "\r\n  subline callback function:");
  if (pstCallBack != nullptr) {
    PM_LibDbgPrintSubCallBackInfo(pstCallBack);
  }
}

void Model::PM_LibDbgShowOneRegedLineDetail(u16 usPtpType) {
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *entry = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &entry);
  if (ret != 0) {
    DBG_InnerPrintReltime(54, "\r\n  fail to get line registration information! error code: %#x",
                          ret);
    return;
  }
  PM_LibDbgPrintSubLineInfo(info, entry);
}

void Model::PM_LibShowSubLineInfo(u32, u32, u32, u32) {
  const Board &my = board();
  constexpr const char *rule = "----------------------------------------------------";
  const u32 count = callbacks_there(my);
  if (count == 0) {
    xPrintf(54, "No subline info!");
    return;
  }
  xPrintf(54, "%s", rule);
  for (u32 i = 0; i < count; ++i) {
    if (i % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    if (my.callbacks[i].type == 0) {
      continue;
    }
    xPrintf(54, "\r\n    Subline type              : 0x%x", my.callbacks[i].type);
    print_callbacks(my.callbacks[i].slots);
    xPrintf(54, "%s", rule);
  }
}

// -- PTPs

void Model::PM_LibDbgGetPtpTypeDesc(u16 usPtpType, char *pcBuf, u32 ulBufLen) {
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *entry = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &entry);
  if (ret != 0) {
    DBG_InnerPrintInfo(54, "\r\n  fails to get line registration information! error code: %#x",
                       ret);
  }
  static_cast<void>(
      std::snprintf(pcBuf, ulBufLen, "%s", ret == 0 ? "No support Desc" : "unknown type"));
}

void Model::PM_LibDbgShowPtpFromPtpID(u32, u32 ulSubCmd, u32, u32) {
  PM_LibDbgShowPtpDetails(static_cast<u16>(ulSubCmd));
}

void Model::PM_LibDbgShowPtpFromFSP(u32, u32 ulSubCmd, u32 ulPara1, u32 ulPara2) {
  u16 index = 0xFFFF;
  u32 ret = DEV_LibGetBIndexFromFrameIDSlotID(static_cast<u16>(ulSubCmd), static_cast<u8>(ulPara1),
                                              &index);
  if (ret != 0) {
    DBG_InnerPrintReltime(54, "\r\n  fail to get BIndex, error code: %#x", ret);
  }
  u16 ptp = 0;
  ret = PM_LibGetPtpFromPhyIndex(index, static_cast<u8>(ulPara2), &ptp);
  if (ret != 0) {
    DBG_InnerPrintReltime(54, "\r\n  fail to get PTPID, error code: %#x", ret);
    return;
  }
  PM_LibDbgShowPtpDetails(ptp);
}

void Model::PM_LibDbgShowPtpDetails(u16 usPtpID) {
  PtpStaticData fixed{};
  PtpDynPubData dynamic{};
  const bool has_fixed = PM_LibStaticDataGetDataFromPTP(usPtpID, &fixed) == 0;
  const bool has_dynamic = PM_LibGetAllDynDataFromPtpID(usPtpID, &dynamic) == 0;
  if (has_fixed) {
    static_block(fixed);
  } else {
    DBG_InnerPrintReltime(54, "\r\n  fail to get PTP static data!");
  }
  if (has_dynamic) {
    dynamic_block(dynamic, !has_fixed || fixed.ucVisible == 0);
  } else {
    DBG_InnerPrintReltime(54, "\r\n  fail to get PTP dynamic data!");
  }
}

void Model::PM_LibDbgShowPTPSpec(u32, u32, u32, u32) {
  DBG_InnerPrintReltime(54, "\r\n  PTP config standard:");
  DBG_InnerPrintReltime(54, "\r\n  total PTP number:    %d",
                        static_cast<int>(PM_LibGetPtpMaxNum()));
  DBG_InnerPrintReltime(54, "\r\n  visible PTP number:  %d", int{numbers.usVisiblePtpNum});
  DBG_InnerPrintReltime(54, "\r\n  virtual PTP number:  %d", int{numbers.usVirtualPtpNum});
  DBG_InnerPrintReltime(54, "\r\n  size of PTP extended area :  %d", int{numbers.usExtAreaSize});
}

void Model::PM_LibDbgShowPrimFuncsByPrimType(u32, u32 ulSubCmd, u32, u32) {
  const u32 prim = ulSubCmd % 65536;
  if (prim > 14) {
    DBG_InnerPrintReltime(54, "\r\n The primType is invalid!");
    return;
  }
  DBG_InnerPrintReltime(54, "\r\n The port types and function addresses of primType %u are:", prim);
  const auto &list = board().bookings[prim];
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i % 8 == 0) {
      ZEL_TaskDelay(10);
    }
    DBG_InnerPrintReltime(54, "\r\n PortType = %u, FunctionAddr = 0x%08x", u32{list[i].type},
                          shown(list[i].function));
  }
  DBG_InnerPrintReltime(54, "\r\n The number of primayword functions of primType %u is: %d", prim,
                        static_cast<int>(list.size()));
}

}  // namespace soak
