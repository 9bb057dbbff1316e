/** @file
 * Virtual PTPs and descriptions: requests to the process that owns the PTP database. Each blocks
 * the caller until the owner has answered. Pointers and lengths are handed to the remote-call layer
 * unchecked. */
#ifndef PM_VIRTUAL_PTP_H
#define PM_VIRTUAL_PTP_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** The PTP to create as a virtual PTP, as it travels to the owner. */
typedef struct PmVirtualPtpDesc {
  u8 ucPtpClass; /**< PM_PTP_CLASS_... */
  u8 ucReserved; /**< sent, not read by the library */
  u16 usIndex1;  /**< first physical index */
  u16 usIndex2;  /**< second physical index */
  u16 usPtpType; /**< port type */
} PmVirtualPtpDesc;

#pragma pack(pop)

PM_PIN_SIZE(PmVirtualPtpDesc, 8);
PM_PIN_OFFSET(PmVirtualPtpDesc, usIndex1, 2);
PM_PIN_OFFSET(PmVirtualPtpDesc, usIndex2, 4);
PM_PIN_OFFSET(PmVirtualPtpDesc, usPtpType, 6);

/**
 * Creates a virtual PTP. On success the class, indexes, type and existence of its dynamic record in
 * this process are set at once, so that the caller finds it without waiting for the data
 * distribution; a failure of that is recorded and does not undo the creation.
 *
 * @param[in]  pstDesc      the PTP
 * @param[out] pusNewPtpID  PTP ID that the owner has chosen
 * @retval 0  created
 * @return otherwise the code of the remote-call layer or the owner's answer; no dynamic record has
 * changed
 */
PM_API u32 PM_LibAddVirtualPtp(PmVirtualPtpDesc *pstDesc, u16 *pusNewPtpID);

/**
 * Deletes a virtual PTP. Its dynamic record in this process changes only when the data distribution
 * delivers the deletion.
 *
 * @param usPtpID  PTP ID
 * @retval 0  deleted
 * @return otherwise the code of the remote-call layer or the owner's answer
 */
PM_API u32 PM_LibDelVirtualPtp(u16 usPtpID);

/**
 * Sets the description of a PTP. Its static record in this process changes only when the data
 * distribution delivers it.
 *
 * @param usPtpID   PTP ID
 * @param pucDesc   the description, not terminated
 * @param ulLength  its length in bytes
 * @retval 0  set
 * @return otherwise the code of the remote-call layer or the owner's answer
 */
PM_API u32 PM_LibSetDescFromPTP(u16 usPtpID, u8 *pucDesc, u32 ulLength);

PM_C_END

#endif
