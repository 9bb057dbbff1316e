// The read access to the static database.
#include "pm_static_data.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "pm_dynamic_data.h"
#include "static_record.hpp"

PM_SOURCE(pm_lib_core_adapt, 10);

namespace {

constexpr u32 not_readable = 1;
constexpr u32 db_found = 0;
constexpr u32 db_not_found = 3;

}  // namespace

u32 PM_LibStaticDataGetDataFromPTP(u16 usPtpID, PtpStaticData *pstStaticData) {
  const PmGlobalData *data = pm::current_data();
  if (pstStaticData == nullptr || data == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (data->ulStaticDbHash == 0) {
    return FAIL(not_readable, usPtpID);
  }
  if (usPtpID > PM_LibGetMaxPtpID()) {
    return FAIL(not_readable, usPtpID);
  }
  const PmStaticDBNode *node = PM_LibFindStaticDBNode(usPtpID);
  u32 db_ret = db_found;
  if (node != nullptr) {
    *pstStaticData = node->stData;
  } else {
    *pstStaticData = pm::absent_static_record();
    db_ret = db_not_found;
  }
  const u32 ret = PM_LibConverDbErrorCode(db_ret);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "DB_Query fail, usDbRet = %u, usPtpID = %u", db_ret, usPtpID);
    return FAIL(ret, db_ret, usPtpID);
  }
  return PM_OK;
}
