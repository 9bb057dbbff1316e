/** @file
 * Capability and attribute services of managed object classes. */
#ifndef PLATFORM_CAP_H
#define PLATFORM_CAP_H

#include "platform/base.h"

PM_C_BEGIN

/**
 * Registers an object class with the capability service.
 *
 * @param ulClass          object class
 * @param pstClassMngtReg  PmClassMngtReg, copied
 * @return 0, or a code that tells why not
 */
u32 CAP_LibRegCapMngtProc(u32 ulClass, const void *pstClassMngtReg);

/**
 * Asks for a capability of an object.
 *
 * @param ulClass       object class
 * @param usPtpID       the object's PTP ID
 * @param ulCapability  capability
 * @return the service's answer, handed through
 */
u32 CAP_LibGetCapability(u32 ulClass, u32 usPtpID, u32 ulCapability);

/**
 * Registers an object class with the attribute service.
 *
 * @param ulClass          object class
 * @param pstClassMngtReg  PmClassMngtReg, copied
 * @return 0, or a code that tells why not
 */
u32 ATTR_LibRegClassMngtProc(u32 ulClass, const void *pstClassMngtReg);

/**
 * Reads an attribute of an object.
 *
 * @param[in]  ulClass      object class
 * @param[in]  usPtpID      the object's PTP ID
 * @param[in]  ulAttribute  attribute
 * @param[out] pBuf         the attribute
 * @param[in]  usLen        size of pBuf in bytes
 * @return the service's answer, handed through
 */
u32 ATTR_LibGetAttribute(u32 ulClass, u32 usPtpID, u32 ulAttribute, void *pBuf, u16 usLen);

PM_C_END

#endif
