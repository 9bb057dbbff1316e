// The message function of the library's PID.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_debug_window.h"

PM_SOURCE(pm_lib_init, 30);

void PM_LibMsgProc(void *pMsg) {
  if (pMsg == nullptr) {
    RECORD(PM_ERR_PARA);
    return;
  }
  // No more of the message than this word is certain to be there.
  const u32 type = pm::load<u32>(static_cast<const u8 *>(pMsg) + offsetof(PmDbwinMsg, ulMsgType));
  if (type == PM_DBWIN_MSG_TYPE) {
    PM_LibDebugMsgProc(pMsg);
  }
}
