/** @file
 * Object configuration per virtual system. */
#ifndef PLATFORM_PUB_H
#define PLATFORM_PUB_H

#include "platform/base.h"

PM_C_BEGIN

/**
 * Adds the configuration of an object in a virtual system.
 *
 * @param ulVsID     virtual system
 * @param ulObjType  object type
 * @param usPtpID    the object's PTP ID
 * @param pulFlag    one u32
 * @return 0, or a code that tells why not
 */
u32 PUB_LibAddObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *pulFlag);

/**
 * Deletes the configuration of an object in a virtual system.
 *
 * @param ulVsID     virtual system
 * @param ulObjType  object type
 * @param usPtpID    the object's PTP ID
 * @param paulFlag   two u32
 * @return 0, or a code that tells why not
 */
u32 PUB_LibDelObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *paulFlag);

PM_C_END

#endif
