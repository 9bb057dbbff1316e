/** @file
 * What a product adds to the library: the table of product hooks.
 *
 * There is one process-wide table and, optionally, one per instance. A table is copied whole when
 * it is registered; a later registration replaces it; neither is ever cleared. Registration is
 * expected once, before an instance uses the table: the tables are not locked. Hooks run in the
 * task of the call that needs them and return 0 for success. An empty slot is null. */
#ifndef PM_HOOKS_H
#define PM_HOOKS_H

#include "pm_base.h"

PM_C_BEGIN

/** The product hooks. */
typedef struct PmProductMngt {
  /** After the library's own work of each start-up phase. Empty: skipped. */
  u32 (*pfnPhaseProc)(u32 enPhase);
  /** Not called by the library. */
  u32 (*pfnReserved1)(void);
  /** Not called by the library. */
  u32 (*pfnReserved2)(void);
  /** Co-index and co-type of an ONT; the five words of PM_LibGetCoIndexAndCotypeByFspOntid. Empty:
   * that function answers PM_ERR_PARA. */
  u32 (*pfnGetCoIndexByFspOntid)(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3, PmWord ulWord4,
                                 PmWord ulWord5);
  /** Back again; the three words of PM_LibGetFspOntidByCoIndexAndCotype. Empty: PM_ERR_PARA. */
  u32 (*pfnGetFspOntidByCoIndex)(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3);
  /** In the FID start-up, with the registration list empty: the product registers its sub-lines
   * here. Empty: success. */
  u32 (*pfnZelCfg)(void);
  /** Once per instance, when its first dynamic record has created the store; the only slot that is
   * also taken from the instance's own table. Empty: skipped. */
  u32 (*pfnEventRegister)(void);
  /** The two words of PM_LibPltOperCheckRegister. Empty: PM_ERR_PARA. */
  u32 (*pfnOperCheckRegister)(PmWord ulWord1, PmWord ulWord2);
  /** The two words of PM_LibPltRegisterPtpCapAttrInitFunc. Empty: PM_ERR_PARA. */
  u32 (*pfnRegisterPtpCapAttrInitFunc)(PmWord ulWord1, PmWord ulWord2);
  /** The two words of PM_LibPltSetInstanceDynAttributeDefaultValue. Empty: PM_ERR_PARA. */
  u32 (*pfnSetInstanceDynAttributeDefaultValue)(PmWord ulWord1, PmWord ulWord2);
  /** Not called by the library. */
  u32 (*pfnReserved10)(void);
} PmProductMngt;

PM_PIN_SIZE32(PmProductMngt, 44);
PM_PIN_OFFSET32(PmProductMngt, pfnGetCoIndexByFspOntid, 12);
PM_PIN_OFFSET32(PmProductMngt, pfnZelCfg, 20);
PM_PIN_OFFSET32(PmProductMngt, pfnSetInstanceDynAttributeDefaultValue, 36);

/**
 * Registers the process-wide table, which all instances of the process use.
 *
 * @param pstProductMngt  the hooks, copied
 * @retval 0            registered
 * @retval PM_ERR_PARA  pstProductMngt is null
 * @return otherwise the result of the bounded copy
 */
PM_API u32 PM_LibRegProductMngtFuncProc(const PmProductMngt *pstProductMngt);

/**
 * Registers the current instance's own table, of which pfnEventRegister only is used. To be called
 * before the instance's first dynamic record arrives.
 *
 * @param pstProductMngt  the hooks, copied
 * @retval 0              registered
 * @retval PM_ERR_PARA    pstProductMngt is null, or no current instance
 * @retval PM_ERR_MALLOC  no memory for the table
 * @return otherwise the result of the bounded copy
 */
PM_API u32 PM_LibRegInstProductMngtFuncProc(const PmProductMngt *pstProductMngt);

/**
 * Calls pfnZelCfg. Called by the FID start-up, which its failure stops.
 *
 * @return the hook's result; 0 for an empty slot
 */
PM_API u32 PM_LibPltZelCfg(void);

/**
 * Calls pfnEventRegister of the process-wide table, whose failure is recorded only, and then of the
 * instance's table. Called by the restore that has created the store of dynamic records.
 *
 * @retval 0            both done or empty
 * @retval PM_ERR_PARA  no current instance; nothing has been called
 * @return otherwise the result of the instance's hook
 */
PM_API u32 PM_LibPltEventRegister(void);

/**
 * Calls pfnOperCheckRegister of the process-wide table.
 *
 * @param ulWord1  handed to the hook unchanged
 * @param ulWord2  handed to the hook unchanged
 * @retval PM_ERR_PARA  the slot is empty
 * @return otherwise the hook's result
 */
PM_API u32 PM_LibPltOperCheckRegister(PmWord ulWord1, PmWord ulWord2);

/**
 * Calls pfnRegisterPtpCapAttrInitFunc of the process-wide table.
 *
 * @param ulWord1  handed to the hook unchanged
 * @param ulWord2  handed to the hook unchanged
 * @retval PM_ERR_PARA  the slot is empty
 * @return otherwise the hook's result
 */
PM_API u32 PM_LibPltRegisterPtpCapAttrInitFunc(PmWord ulWord1, PmWord ulWord2);

/**
 * Calls pfnSetInstanceDynAttributeDefaultValue of the process-wide table.
 *
 * @param ulWord1  handed to the hook unchanged
 * @param ulWord2  handed to the hook unchanged
 * @retval PM_ERR_PARA  the slot is empty
 * @return otherwise the hook's result
 */
PM_API u32 PM_LibPltSetInstanceDynAttributeDefaultValue(PmWord ulWord1, PmWord ulWord2);

PM_C_END

#endif
