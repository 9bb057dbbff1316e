/** @file
 * Remote services: the two that the library publishes, and the link event that it sends to the
 * process that owns the PTP database. The other calls of that process are in pm_virtual_ptp.h and
 * pm_object_deletion.h. */
#ifndef PM_SAPI_H
#define PM_SAPI_H

#include "pm_base.h"
#include "pm_object_deletion.h"

PM_C_BEGIN

/**
 * Publishes the services "PM_SapiBookCallBookedFuncs" and "PM_SapiNotifyDelObjectCfgResult" for the
 * current instance. Called once, in start-up phase 1.
 *
 * @retval 0            both were tried; a refused one is recorded
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibPrimarySapiPublish(void);

/**
 * Handler of the published service of the same name: lets another process raise a primitive here.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param usPtpID     PTP ID; PM_PTP_ID_NONE = no particular PTP
 * @param pPara       parameter of the primitive, handed to the booked functions; may be null
 * @return as PM_LibBookCallBookedFuncs
 */
PM_API u32 PM_SapiBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara);

/**
 * Handler of the published service of the same name: the owner reports how a deletion that
 * PM_LibDelObjectCfg requested has ended.
 *
 * @param pfnCompletion  completion function, as requested
 * @param pstKey         the object
 * @param ulResult       result of the deletion, 0 = deleted
 * @return as PM_LibNotifyDelObjectCfgResult, 0
 */
PM_API u32 PM_SapiNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                           PmFspOntid *pstKey, u32 ulResult);

/**
 * Sends a link event of a PTP to the owner and does not wait for it.
 *
 * @param usPtpID  PTP ID, sent as it is
 * @param ucEvent  event, sent as it is
 * @retval 0  the call is on its way
 * @return otherwise the code of the remote-call layer
 */
PM_API u32 PM_LibLinkEventNotify(u16 usPtpID, u8 ucEvent);

PM_C_END

#endif
