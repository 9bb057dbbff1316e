/* Active/standby synchronisation of the static data. */
#ifndef PM_SYNC_H
#define PM_SYNC_H

#include "pm_base.h"
#include "pm_static_data.h"

PM_C_BEGIN

#pragma pack(push, 1)

/* One unit: the static data of one PTP; the unit index is the PTP ID. */
typedef struct PmSynRecord {
  u8 ucReserved;
  u8 ucModule;
  u16 usLen;     /* 214 */
  u16 usVersion; /* 0 */
  PtpStaticData stData;
} PmSynRecord;

#pragma pack(pop)

PM_PIN_SIZE(PmSynRecord, 220);
PM_PIN_OFFSET(PmSynRecord, usLen, 2);
PM_PIN_OFFSET(PmSynRecord, usVersion, 4);
PM_PIN_OFFSET(PmSynRecord, stData, 6);

enum { PM_SYN_MODULE = 5 };

PM_API u32 PM_LibSynRegister(void);
PM_API u32 PM_LibSynExtractStaticData(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen);
PM_API u32 PM_LibSynRestoreStaticData(u32 ulUnit, const void *pRecord, u32 ulLen, u32 ulReserved);
PM_API u32 PM_LibSynRestoreStaticDataV0(u16 usPtpID, const void *pRecord, u32 ulLen);
PM_API void PM_LibSynResetAllBitTable(void);
PM_API u32 PM_SynSetDynPrivAttrBitTable(void);

PM_C_END

#endif
