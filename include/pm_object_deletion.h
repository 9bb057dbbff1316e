/** @file
 * Deletion of the configuration of objects. The process that owns the PTP database does it and
 * reports the result later; the library asks, requests, delivers the result, and knows how many
 * deletions are under way. Questions and requests block the caller until the owner has answered. */
#ifndef PM_OBJECT_DELETION_H
#define PM_OBJECT_DELETION_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** An object addressed by frame, slot, port and ONT, as it travels to and from the owner. */
typedef struct PmFspOntid {
  u16 usFrameID; /**< frame ID */
  u8 ucSlotID;   /**< slot ID */
  u8 ucPortID;   /**< port number */
  u32 ulOntID;   /**< ONT ID */
} PmFspOntid;

#pragma pack(pop)

PM_PIN_SIZE(PmFspOntid, 8);
PM_PIN_OFFSET(PmFspOntid, ucSlotID, 2);
PM_PIN_OFFSET(PmFspOntid, ucPortID, 3);
PM_PIN_OFFSET(PmFspOntid, ulOntID, 4);

enum {
  PM_DEL_TEXT_LEN_MAX = 255 /**< longest text of a deletion request, in characters */
};

/** Learns the result of a deletion, 0 = deleted. Runs in the task in which the framework delivers
 * the published service; any result but 0 is recorded. */
typedef u32 (*PmDelObjectCompletionFunc)(PmFspOntid *pstKey, u32 ulResult);

/**
 * The number of objects whose deletion is under way.
 *
 * @return the number (not a result code); 0 outside an instance
 */
PM_API u32 PM_LibGetObjectNumInDelete(void);

/**
 * Sets the number of objects whose deletion is under way. Called by the restore of that number; the
 * library itself counts nothing.
 *
 * @param ulObjNum  number of objects
 * @retval 0  always
 */
PM_API u32 PM_LibSetObjectNumInDelete(u32 ulObjNum);

/**
 * Does an object accept service configuration? While no deletion is under way every object does,
 * and the owner is not asked.
 *
 * @param pstKey  the object
 * @retval 0  yes, or the owner could not be asked
 * @return otherwise the owner's answer
 */
PM_API u32 PM_LibIsObjSupportSrvCfg(PmFspOntid *pstKey);

/**
 * May a PTP be deleted?
 *
 * @param usPtpID  PTP ID
 * @retval 0  yes
 * @retval 1  the owner could not be asked
 * @return otherwise the owner's answer
 */
PM_API u32 PM_LibOperCheckCanDelPTP(u16 usPtpID);

/**
 * Requests the deletion of an object's configuration. The result arrives later at the completion
 * function, by way of the service "PM_SapiNotifyDelObjectCfgResult" of the current instance.
 *
 * @param pstKey        the object
 * @param pcText        text that goes with the request, at most 255 characters; null = none
 * @param ulCompletion  address of the completion function, a PmDelObjectCompletionFunc; it must
 *                      stay callable until the result has arrived
 * @retval 0                 the owner has accepted the request
 * @retval PM_ERR_LEN_RANGE  the text is too long; nothing is requested
 * @return otherwise the code of the remote-call layer or the owner's answer
 */
PM_API u32 PM_LibDelObjectCfg(PmFspOntid *pstKey, char *pcText, PmWord ulCompletion);

/**
 * Delivers the result of a deletion: prints it on the debug output and calls the completion
 * function.
 *
 * @param pfnCompletion  completion function; null: only recorded
 * @param pstKey         the object; null: only recorded
 * @param ulResult       result of the deletion
 * @retval 0  always
 */
PM_API u32 PM_LibNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                          PmFspOntid *pstKey, u32 ulResult);

PM_C_END

#endif
