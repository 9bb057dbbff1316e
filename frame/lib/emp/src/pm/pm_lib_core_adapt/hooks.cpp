// The tables of product hooks and the library's doors to them.
#include "pm_hooks.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"

PM_SOURCE(pm_lib_core_adapt, 42);

PmProductMngt g_stPmProductMngt;

namespace {

u32 copy_table(PmProductMngt *to, const PmProductMngt *from) {
  return static_cast<u32>(memcpy_s(to, sizeof *to, from, sizeof *from));
}

}  // namespace

u32 PM_LibRegProductMngtFuncProc(const PmProductMngt *pstProductMngt) {
  if (pstProductMngt == nullptr) {
    return FAIL(PM_ERR_PARA, 0);
  }
  return copy_table(&g_stPmProductMngt, pstProductMngt);
}

u32 PM_LibRegInstProductMngtFuncProc(const PmProductMngt *pstProductMngt) {
  PmGlobalData *data = pm::current_data();
  if (pstProductMngt == nullptr || data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstInstProductMngt == nullptr) {
    void *table = ALLOCATE(ZEL_kvtBlockMemPtGet(), sizeof(PmProductMngt));
    if (table == nullptr) {
      return FAIL(PM_ERR_MALLOC);
    }
    data->pstInstProductMngt = static_cast<PmProductMngt *>(table);
  }
  return copy_table(data->pstInstProductMngt, pstProductMngt);
}

u32 PM_LibPltZelCfg(void) {
  const auto hook = g_stPmProductMngt.pfnZelCfg;
  return hook == nullptr ? PM_OK : hook();
}

u32 PM_LibPltEventRegister(void) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const auto process_hook = g_stPmProductMngt.pfnEventRegister;
  if (process_hook != nullptr) {
    const u32 ret = process_hook();
    if (ret != PM_OK) {
      RECORD(ret);
    }
  }
  // Fetched only now: the process-wide hook may have registered it.
  const PmProductMngt *table = data->pstInstProductMngt;
  if (table != nullptr && table->pfnEventRegister != nullptr) {
    const u32 ret = table->pfnEventRegister();
    if (ret != PM_OK) {
      return FAIL(ret);
    }
  }
  return PM_OK;
}

u32 PM_LibPltOperCheckRegister(PmWord ulWord1, PmWord ulWord2) {
  const auto hook = g_stPmProductMngt.pfnOperCheckRegister;
  return hook == nullptr ? FAIL(PM_ERR_PARA) : hook(ulWord1, ulWord2);
}

u32 PM_LibPltRegisterPtpCapAttrInitFunc(PmWord ulWord1, PmWord ulWord2) {
  const auto hook = g_stPmProductMngt.pfnRegisterPtpCapAttrInitFunc;
  return hook == nullptr ? FAIL(PM_ERR_PARA) : hook(ulWord1, ulWord2);
}

u32 PM_LibPltSetInstanceDynAttributeDefaultValue(PmWord ulWord1, PmWord ulWord2) {
  const auto hook = g_stPmProductMngt.pfnSetInstanceDynAttributeDefaultValue;
  return hook == nullptr ? FAIL(PM_ERR_PARA) : hook(ulWord1, ulWord2);
}
