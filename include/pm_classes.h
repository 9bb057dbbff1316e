/** @file
 * PTPs as an object class of the host's capability and attribute services. */
#ifndef PM_CLASSES_H
#define PM_CLASSES_H

#include "pm_base.h"

PM_C_BEGIN

enum { PM_OBJECT_CLASS = 3 };

/** What a class hands to the two services when it registers. */
typedef struct PmClassMngtReg {
  u32 (*pfnGetPtpType)(u32 ulValue, u16 usPtpID, u16 *pusPtpType); /**< PM_LibGetPtpTypeForAttm */
  u16 usModuleID;                                                  /**< PM_COMP_TYPE */
  u16 usClassValue; /**< 32 for capabilities; that of the specification for attributes */
} PmClassMngtReg;

PM_PIN_SIZE32(PmClassMngtReg, 8);
PM_PIN_OFFSET32(PmClassMngtReg, usModuleID, 4);
PM_PIN_OFFSET32(PmClassMngtReg, usClassValue, 6);

/**
 * Registers PTPs with the capability service as object class 3. Called once, by whoever starts the
 * class; the library does not.
 *
 * @return 0, or the result of CAP_LibRegCapMngtProc
 */
PM_API u32 PM_LibRegCapClassMngt(void);

/**
 * Registers PTPs with the attribute service as object class 3. Called once, by whoever starts the
 * class, after the general specification has been delivered: its value 5, cut to 16 bits, is the
 * class value.
 *
 * @return 0, or the result of ATTR_LibRegClassMngtProc
 */
PM_API u32 PM_LibRegAttrClassMngt(void);

/**
 * Asks the capability service about a PTP.
 *
 * @param usPtpID       PTP ID
 * @param ulCapability  capability value; 0xFFFFFFFF is reserved
 * @retval PM_ERR_DATA_INVALID   the capability value is the reserved one
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist; the service has not been asked
 * @return otherwise the service's result
 */
PM_API u32 PM_LibGetPtpCapability(u16 usPtpID, u32 ulCapability);

/**
 * Asks the attribute service for an attribute of a PTP.
 *
 * @param[in]  usPtpID              PTP ID
 * @param[in]  ulPtpAttributeValue  attribute value; 0xFFFFFFFF is reserved
 * @param[in]  usLen                length of the buffer in bytes, not 0
 * @param[out] pBuf                 filled by the service
 * @retval PM_ERR_DATA_INVALID   the attribute value is the reserved one, the length is 0, or pBuf
 * is null
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist; the service has not been asked
 * @return otherwise the service's result
 */
PM_API u32 PM_LibGetPtpAttributeCluster(u16 usPtpID, u32 ulPtpAttributeValue, u16 usLen,
                                        void *pBuf);

/**
 * Capability type of a port type.
 *
 * @param[in]  ulValue     port type; a value above the highest port type selects the PTP's own type
 * @param[in]  usPtpID     PTP ID, used for the PTP's own type only
 * @param[out] pusCapType  capability type
 * @retval 0                    written
 * @retval PM_ERR_DATA_INVALID  pusCapType is null
 * @return otherwise the code of PM_LibGetTypeFromPTP or PM_LibGetLogicPtpType
 */
PM_API u32 PM_LibGetPtpCapType(u32 ulValue, u16 usPtpID, u16 *pusCapType);

/**
 * The attribute database function of the class; there is nothing for it to do.
 *
 * @retval 0  always
 */
PM_API u32 PM_AttrDbFunc(void);

/**
 * Port type for the two services, which are given this function when the class registers.
 *
 * @param[in]  ulValue     port type; a value above the highest port type selects the PTP's own type
 * @param[in]  usPtpID     PTP ID, used for the PTP's own type only
 * @param[out] pusPtpType  port type
 * @retval 0                    written
 * @retval PM_ERR_DATA_INVALID  pusPtpType is null
 * @return otherwise the code of PM_LibGetTypeFromPTP
 */
PM_API u32 PM_LibGetPtpTypeForAttm(u32 ulValue, u16 usPtpID, u16 *pusPtpType);

PM_C_END

#endif
