// The booking table: which functions want to hear of which primitive on which port type. Delivery
// to them is with the events.
#include "pm_booking.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"
#include "platform/kvt.h"

PM_SOURCE(pm_lib_core_adapt, 40);

namespace {

// Sets of primitive types, a bit for each of the types 0 to 12.
constexpr u32 check_types = 0x1B05;
constexpr u32 stop_at_failure_types = 0x1B0D;
constexpr u16 last_classified_type = 12;

constexpr u32 is_check_type = 1;

bool type_in(u32 set, u16 prim_type) {
  return prim_type <= last_classified_type && ((set >> prim_type) & 1U) != 0;
}

bool same_booking(const PmBookRecord &one, const PmBookRecord &other) {
  return one.usType == other.usType && one.pfnBookFunc == other.pfnBookFunc;
}

// Puts a node behind the last one of its list, unless the list holds the same booking already.
bool link_at_tail(PmGlobalData *data, u16 prim_type, PmBookNode *added) {
  PmBookTable *table = data->pstBookTable;
  PmBookNode *last = nullptr;
  for (PmBookNode *node = table->apstHead[prim_type]; node != nullptr; node = node->pstNext) {
    ZEL_ClearWatchDog();
    if (same_booking(node->stRecord, added->stRecord)) {
      return false;
    }
    last = node;
  }
  if (last == nullptr) {
    table->apstHead[prim_type] = added;
  } else {
    last->pstNext = added;
  }
  ++data->aulBookChange[prim_type];
  return true;
}

// Takes the booking's node out of its list; null when there is none.
PmBookNode *unlink_booking(PmGlobalData *data, u16 prim_type, const PmBookRecord &record) {
  PmBookTable *table = data->pstBookTable;
  PmBookNode *previous = nullptr;
  for (PmBookNode *node = table->apstHead[prim_type]; node != nullptr; node = node->pstNext) {
    ZEL_ClearWatchDog();
    if (same_booking(node->stRecord, record)) {
      if (previous == nullptr) {
        table->apstHead[prim_type] = node->pstNext;
      } else {
        previous->pstNext = node->pstNext;
      }
      ++data->aulBookChange[prim_type];
      return node;
    }
    previous = node;
  }
  return nullptr;
}

}  // namespace

u32 PM_LibMallocBookInit(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  void *table = ALLOCATE(ZEL_kvtStaticMemPtGet(), sizeof(PmBookTable));
  if (table == nullptr) {
    RECORD(PM_ERR_MALLOC);
    KVT_Printf("\r\n PM_LibMallocBookInit malloc memory fail.");
    return PM_ERR_MALLOC;
  }
  data->pstBookTable = static_cast<PmBookTable *>(table);
  return PM_OK;
}

u32 PM_LibBookAddBookFunc(u16 usPrimType, const PmBookRecord *pstRecord) {
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibBookAddBookFunc, usPrimType = %u", usPrimType);
  if (pstRecord == nullptr) {
    RECORD(PM_ERR_PARA);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookAddBookFunc fail, input null pointer. usPrimType = %u",
          usPrimType);
    return PM_ERR_PARA;
  }
  if (usPrimType >= PM_PRIM_NUM) {
    RECORD(PM_ERR_PRIMTYPE_RANGE);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookAddBookFunc fail, usPrimType = %u", usPrimType);
    return PM_ERR_PRIMTYPE_RANGE;
  }
  PmGlobalData *data = pm::current_data();
  if (data == nullptr || data->pstBookTable == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  void *block = ALLOCATE(ZEL_kvtDynamicMemPtGet(), sizeof(PmBookNode));
  if (block == nullptr) {
    RECORD(PM_ERR_MALLOC);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookAddBookFunc fail, malloc mem fail. usPrimType = %u",
          usPrimType);
    return PM_ERR_MALLOC;
  }
  auto *node = static_cast<PmBookNode *>(block);
  const PmBookRecord record = *pstRecord;
  *node = {record, nullptr};
  if (!link_at_tail(data, usPrimType, node)) {
    RECORD(usPrimType, record.usType, record.pfnBookFunc);
    KVT_Printf("PM_LibBookAddBookFunc fail, usPrimType = %u, Type = %u, BookFunc = 0x%p",
               usPrimType, record.usType, pm::address(record.pfnBookFunc));
    (void)ZEL_MemFree(PM_COMP_TYPE, node);
    return PM_ERR_BOOK_EXIST;
  }
  return PM_OK;
}

u32 PM_LibRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc) {
  if (pfnFunc == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibRegPrimaryWordCallback fail, input null pointer. usPrimType = %u, usPtpType = %u, "
          "pFunc = %u",
          usPrimType, usPtpType, pm::word(pfnFunc));
    return FAIL(PM_ERR_PARA, usPrimType, usPtpType);
  }
  TRACE(PM_SWITCH_FUNCTION,
        "Enter PM_LibRegPrimaryWordCallback, usPrimType = %u, Type = %u, Func = 0x%p", usPrimType,
        usPtpType, pm::address(pfnFunc));
  const PmBookRecord record = {usPtpType, pfnFunc};
  return PM_LibBookAddBookFunc(usPrimType, &record);
}

u32 PM_LibBookDelBookFunc(u16 usPrimType, const PmBookRecord *pstRecord) {
  if (pstRecord == nullptr) {
    RECORD(PM_ERR_PARA);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookDelBookFunc fail, input null pointer. usPrimType = %u",
          usPrimType);
    return PM_ERR_PARA;
  }
  if (usPrimType >= PM_PRIM_NUM) {
    RECORD(PM_ERR_PRIMTYPE_RANGE);
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibBookDelBookFunc fail, usPrimType exceed button, usPrimType = %u", usPrimType);
    return PM_ERR_PRIMTYPE_RANGE;
  }
  PmGlobalData *data = pm::current_data();
  if (data == nullptr || data->pstBookTable == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstBookTable->apstHead[usPrimType] == nullptr) {
    RECORD(PM_ERR_PARA);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookDelBookFunc fail, PrimeWord is null, usPrimType = %u",
          usPrimType);
    return PM_ERR_PARA;
  }
  const PmBookRecord record = *pstRecord;
  PmBookNode *node = unlink_booking(data, usPrimType, record);
  if (node == nullptr) {
    RECORD(usPrimType, record.usType, record.pfnBookFunc);
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibBookDelBookFunc fail, Unregister primeword fail, usPrimType=%u, usType=%u, "
          "pPrimaryWordFunc=%u",
          usPrimType, record.usType, pm::word(record.pfnBookFunc));
    return PM_ERR_DATA_INVALID;
  }
  (void)ZEL_MemFree(PM_COMP_TYPE, node);
  return PM_OK;
}

u32 PM_LibUnRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc) {
  if (pfnFunc == nullptr) {
    RECORD(usPrimType, usPtpType);
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibRegPrimaryWordCallback fail, input null pointer. usPrimType = %u, usPtpType = %u, "
          "pFunc = %u",
          usPrimType, usPtpType, pm::word(pfnFunc));
    return PM_ERR_PARA;
  }
  const PmBookRecord record = {usPtpType, pfnFunc};
  return PM_LibBookDelBookFunc(usPrimType, &record);
}

u32 PM_LibIsCheckPrimaryWord(u16 usPrimType) {
  return type_in(check_types, usPrimType) ? is_check_type : 0;
}

u32 PM_LibIsPrimaryNeedReturn(u16 usPrimType) {
  return type_in(stop_at_failure_types, usPrimType) ? PM_OK : PM_ERR_DATA_INVALID;
}
