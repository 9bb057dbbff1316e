// Model: bookings, delivery of primitives, notifications.
#include <algorithm>
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = core_record;

bool among(u16 type, std::initializer_list<u16> types) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

std::size_t size_of_booking() {
  return sizeof(u16) + 2 * sizeof(void *);
}

std::size_t place_of(const std::vector<Board::Booking> &list, u32 id) {
  std::size_t at = 0;
  while (at < list.size() && list[at].id != id) {
    ++at;
  }
  return at;
}

}  // namespace

// -- Booking

u32 Model::PM_LibMallocBookInit() {
  Board &my = board();
  if (take_block(ZEL_kvtStaticMemPtGet, PM_PRIM_NUM * sizeof(void *)) == nullptr) {
    record(0, {0x689385});
    KVT_Printf("\r\n PM_LibMallocBookInit malloc memory fail.");
    return 0x689385;
  }
  my.has_bookings = true;
  for (auto &list : my.bookings) {
    list.clear();
  }
  return 0;
}

u32 Model::PM_LibBookAddBookFunc(u16 usPrimType, const PmBookRecord *pstRecord) {
  PM_LibDotPrintf(0, 0, "Enter PM_LibBookAddBookFunc, usPrimType = %u", usPrimType);
  if (pstRecord == nullptr) {
    record(0, {0x689380});
    PM_LibDotPrintf(0, 0, "PM_LibBookAddBookFunc fail, input null pointer. usPrimType = %u",
                    usPrimType);
    return 0x689380;
  }
  if (usPrimType > 14) {
    record(0, {0x6908EC});
    PM_LibDotPrintf(0, 0, "PM_LibBookAddBookFunc fail, usPrimType = %u", usPrimType);
    return 0x6908EC;
  }
  Board &my = board();
  if (!my.has_bookings) {
    return record(0x689380, {0x689380});
  }
  void *block = take_block(ZEL_kvtDynamicMemPtGet, size_of_booking());
  if (block == nullptr) {
    record(0, {0x689385});
    PM_LibDotPrintf(0, 0, "PM_LibBookAddBookFunc fail, malloc mem fail. usPrimType = %u",
                    usPrimType);
    return 0x689385;
  }
  const u16 type = pstRecord->usType;
  const PmBookFunc function = pstRecord->pfnBookFunc;
  for (const Board::Booking &booking : my.bookings[usPrimType]) {
    ZEL_ClearWatchDog();
    if (booking.type == type && booking.function == function) {
      record(0, {usPrimType, type, shown(function)});
      KVT_Printf("PM_LibBookAddBookFunc fail, usPrimType = %u, Type = %u, BookFunc = 0x%s",
                 usPrimType, type, as_pointer(function).c_str());
      ZEL_MemFree(PM_COMP_TYPE, block);
      return 0x6908ED;
    }
  }
  my.bookings[usPrimType].push_back({++my.last_booking, type, function, block});
  return 0;
}

u32 Model::PM_LibRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc) {
  if (pfnFunc == nullptr) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibRegPrimaryWordCallback fail, input null pointer. usPrimType = %u, "
                    "usPtpType = %u, pFunc = %u",
                    usPrimType, usPtpType, 0U);
    return record(0x689380, {usPrimType, usPtpType});
  }
  PM_LibDotPrintf(0, 0,
                  "Enter PM_LibRegPrimaryWordCallback, usPrimType = %u, Type = %u, Func = 0x%s",
                  usPrimType, usPtpType, as_pointer(pfnFunc).c_str());
  const PmBookRecord booking{usPtpType, pfnFunc};
  return PM_LibBookAddBookFunc(usPrimType, &booking);
}

u32 Model::PM_LibBookDelBookFunc(u16 usPrimType, const PmBookRecord *pstRecord) {
  if (pstRecord == nullptr) {
    record(0, {0x689380});
    PM_LibDotPrintf(0, 0, "PM_LibBookDelBookFunc fail, input null pointer. usPrimType = %u",
                    usPrimType);
    return 0x689380;
  }
  if (usPrimType > 14) {
    record(0, {0x6908EC});
    PM_LibDotPrintf(0, 0, "PM_LibBookDelBookFunc fail, usPrimType exceed button, usPrimType = %u",
                    usPrimType);
    return 0x6908EC;
  }
  Board &my = board();
  auto &list = my.bookings[usPrimType];
  if (!my.has_bookings) {
    return record(0x689380, {0x689380});
  }
  if (list.empty()) {
    record(0, {0x689380});
    PM_LibDotPrintf(0, 0, "PM_LibBookDelBookFunc fail, PrimeWord is null, usPrimType = %u",
                    usPrimType);
    return 0x689380;
  }
  const u16 type = pstRecord->usType;
  const PmBookFunc function = pstRecord->pfnBookFunc;
  for (std::size_t i = 0; i < list.size(); ++i) {
    ZEL_ClearWatchDog();
    if (list[i].type == type && list[i].function == function) {
      ZEL_MemFree(PM_COMP_TYPE, list[i].block);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
      return 0;
    }
  }
  record(0, {usPrimType, type, shown(function)});
  PM_LibDotPrintf(0, 0,
                  "PM_LibBookDelBookFunc fail, Unregister primeword fail, usPrimType=%u, "
                  "usType=%u, pPrimaryWordFunc=%u",
                  usPrimType, type, shown(function));
  return 0x689383;
}

u32 Model::PM_LibUnRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc) {
  if (pfnFunc == nullptr) {
    record(0, {usPrimType, usPtpType});
    PM_LibDotPrintf(0, 0,
                    "PM_LibRegPrimaryWordCallback fail, input null pointer. usPrimType = %u, "
                    "usPtpType = %u, pFunc = %u",
                    usPrimType, usPtpType, 0U);
    return 0x689380;
  }
  const PmBookRecord booking{usPtpType, pfnFunc};
  return PM_LibBookDelBookFunc(usPrimType, &booking);
}

u32 Model::PM_LibIsCheckPrimaryWord(u16 usPrimType) {
  return among(usPrimType, {0, 2, 8, 9, 11, 12}) ? 1 : 0;
}

u32 Model::PM_LibIsPrimaryNeedReturn(u16 usPrimType) {
  return among(usPrimType, {0, 2, 3, 8, 9, 11, 12}) ? 0 : 0x689383;
}

// -- Delivery

u32 Model::PM_LibBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara) {
  PM_LibDotPrintf(0, 0, "Enter PM_LibBookCallBookedFuncs, usPrimType = %d, PtpID= %u, Para = 0x%s",
                  usPrimType, usPtpID, as_pointer(pPara).c_str());
  Board &my = board();
  if (!my.has_bookings) {
    return record(1, {usPrimType});
  }
  u16 type = 0xFFFF;
  if (usPtpID != 0xFFFF) {
    const u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
    if (ret != 0) {
      PM_LibDotPrintf(0, 0, "PM_LibGetTypeFromPTP fail, Ret = %#x, PtpID = %u", ret, usPtpID);
      return record(ret, {ret, usPtpID});
    }
  }
  if (usPrimType > 14) {
    record(0, {usPrimType});
    PM_LibDotPrintf(0, 0, "PM_LibBookAddBookFunc fail, usPrimType = %u", usPrimType);
    return 0x6908EC;
  }
  auto &list = my.bookings[usPrimType];
  u32 passed = 0;
  for (std::size_t at = 0; at < list.size(); ++passed) {
    const Board::Booking booking = list[at];
    const u32 after = at + 1 < list.size() ? list[at + 1].id : 0;
    if ((booking.type != 0xFFFF && booking.type != type) || booking.function == nullptr) {
      ++at;
      continue;
    }
    if (passed % 8 == 0) {
      ZEL_ClearWatchDog();
    }
    const u32 began = ZEL_GetTick();
    const u32 ret = booking.function(usPtpID, usPrimType, pPara);
    const u32 ticks = ZEL_GetTick() - began;
    if (ticks >= 100) {
      record(0, {ticks, usPrimType, shown(booking.function)});
      DEV_LibRecLongTimeCostPrimaryWordLog(core_record.file, 0, ticks, usPrimType,
                                           reinterpret_cast<const void *>(booking.function));
    }
    PM_LibDotPrintf(0, 0,
                    "PM_LibBookCallBookedFuncs trace: pPrimProc=0x%s, usPrimType=%d, usPtpID=%d, "
                    "usPtpType=%d, ulRet=0x%x, used Ticks=%d",
                    as_pointer(booking.function).c_str(), usPrimType, usPtpID, type, ret,
                    static_cast<int>(ticks));
    if (ret != 0 && ret != 0x689388) {
      PM_LibDotPrintf(0, 0,
                      "pPrimaryWordFunc fail, Ret = %#x,Func = 0x%s, PtpID=%u, usPrimType = %u, "
                      "Para = 0x%s",
                      ret, as_pointer(booking.function).c_str(), usPtpID, usPrimType,
                      as_pointer(pPara).c_str());
      record(0, {usPrimType, usPtpID, ret});
      if (PM_LibIsPrimaryNeedReturn(usPrimType) == 0) {
        return ret;
      }
    }
    // The function may have unbooked itself or its neighbour.
    const std::size_t here = place_of(list, booking.id);
    at = here < list.size() ? here + 1 : place_of(list, after);
  }
  return 0;
}

u32 Model::PM_LibEventPtpLinkUp(u16 usPtpID) {
  PM_LibBookCallBookedFuncs(6, usPtpID, nullptr);
  return 0;
}

u32 Model::PM_LibEventPtpLinkDown(u16 usPtpID) {
  PM_LibBookCallBookedFuncs(7, usPtpID, nullptr);
  return 0;
}

u32 Model::PM_PrimMsgProc(const PmPrimMsg *pstMsg) {
  if (pstMsg == nullptr) {
    return init_record(0x689380, {0x689380});
  }
  const u16 type = pstMsg->usPrimaryWord;
  if (PM_LibIsCheckPrimaryWord(type) == 1) {
    return init_record(0x68938E, {type});
  }
  if (among(type, {3, 4, 5, 6, 7})) {
    u8 para[2] = {pstMsg->aucPara[0], pstMsg->aucPara[1]};
    return init_record.code(
        PM_LibBookCallBookedFuncs(type, pstMsg->usPtpID, type == 5 ? para : nullptr));
  }
  PM_LibDotPrintf(
      0, 1, "PM_PrimMsgProc exception, input usPrimaryWord is invalid, usPrimaryWord  = %u", type);
  return init_record(0, {type});
}

u32 Model::PM_LibPrimNotifyRtRestore(const PmDevDdmTlv *pstDevDdmTlv) {
  if (pstDevDdmTlv == nullptr) {
    return init_record(0x689380, {0x689380});
  }
  const u32 length = pstDevDdmTlv->ulLength;
  if (length == 28) {
    return PM_PrimMsgProc(&pstDevDdmTlv->stValue);
  }
  init_record(0, {length});
  DEV_LibPrintf(0x80000000, "PM_LibPrimNotifyRtRestore-> pstDevDdmTlv->ulLength=%u error !",
                length);
  return 1;
}

// -- Notifications

namespace {

// Whether the batch of the dynamic records is over; false when it cannot be told.
bool ask_batch(bool &finished) {
  u8 flag = 0;
  const u32 ret = DDM_LibScribeIsClassBtFinished(0x360011, &flag);
  finished = flag != 0;
  return init_record.code(ret) == 0;
}

// False when there is no slot for the PTP; an empty one will do.
bool current(u16 ptp, PtpDynPubData &data) {
  const u32 ret = Model::PM_LibGetAllDynDataFromPtpID(ptp, &data);
  return ret == 0 || ret == 0x6908AD;
}

void raise(u16 type, u16 ptp, void *para = nullptr) {
  init_record.code(Model::PM_LibBookCallBookedFuncs(type, ptp, para));
}

bool depends() {
  return ROOT_LibIsPidDepend(407, ROOT_LibGetCurrentThis()) == 1;
}

u32 object_flag(u16 ptp) {
  return Model::PM_LibIfPortBelongMultiVs(ptp) == 0 ? 2 : 1;
}

}  // namespace

void Model::PM_LibEventPrimNotify(u16 usPtpID, const PtpDynPubData *pstOldData) {
  bool finished = false;
  PtpDynPubData now{};
  if (!ask_batch(finished) || !current(usPtpID, now)) {
    return;
  }
  const bool exists = now.ucExist != 0;
  const bool existed = finished && pstOldData->ucExist != 0;
  if (exists && !existed) {
    raise(3, usPtpID);
  } else if (finished && existed && !exists) {
    raise(4, usPtpID);
  }
}

void Model::PM_LibPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData) {
  PM_LibPtpVsPrimaryNotifyBefore(usPtpID, pstNewData);
}

void Model::PM_LibPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData) {
  bool finished = false;
  PtpDynPubData now{};
  if (!ask_batch(finished)) {
    return;
  }
  if (finished) {
    PM_LibPtpVsPrimaryNotifyAfter(usPtpID, pstOldData);
  } else if (current(usPtpID, now) && now.ucExist != 0) {
    raise(3, usPtpID);
  }
}

void Model::PM_LibPtpVsPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData) {
  PtpDynPubData data{};
  if (!depends() || !current(usPtpID, data)) {
    return;
  }
  const u32 now = data.ulVsMask;
  const u32 later = pstNewData->ulVsMask;
  if (now == later) {
    return;
  }
  u32 flags[2] = {object_flag(usPtpID), 0};
  for (u16 vs = 1; vs <= 8; ++vs) {
    if (((now >> vs) & 1) == 1 && ((later >> vs) & 1) == 0) {
      raise(14, usPtpID, &vs);
      PUB_LibDelObjAllCfg(vs, 2, usPtpID, flags);
    }
  }
}

void Model::PM_LibPtpVsPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData) {
  PtpDynPubData data{};
  if (!depends() || !current(usPtpID, data)) {
    return;
  }
  const u32 before = pstOldData->ulVsMask;
  const u32 now = data.ulVsMask;
  if (before == now) {
    return;
  }
  u32 flags[2] = {object_flag(usPtpID), 0};
  for (u16 vs = 1; vs <= 8; ++vs) {
    if (((now >> vs) & 1) == 0 || ((before >> vs) & 1) == 1) {
      continue;
    }
    const u32 ret = PUB_LibAddObjAllCfg(vs, 2, usPtpID, flags);
    if (ret == 0) {
      raise(13, usPtpID, &vs);
      continue;
    }
    init_record(0, {vs, 2, usPtpID});
    DBG_InnerPrintInfo(0x7C, "\r\n PUB_LibAddObjCfg fail, ulRet=%u, usVsID=%u", ret, vs);
    PUB_LibDelObjAllCfg(vs, 2, usPtpID, flags);
    return;
  }
}

}  // namespace soak
