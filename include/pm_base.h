/** @file
 * What every header of the library's interface needs. */
#ifndef PM_BASE_H
#define PM_BASE_H

#include "platform/base.h"

#if defined(__GNUC__)
#define PM_API __attribute__((visibility("default")))
#else
#define PM_API
#endif

enum {
  PM_COMP_TYPE = 54,        /**< component type, module number and PID of the library */
  PM_PTP_ID_NONE = 0xFFFF,  /**< no particular PTP; the start of a walk */
  PM_PTP_TYPE_ALL = 0xFFFF, /**< every port type, in bookings and walks */
  PM_BINDEX_ALL = 0xFFFF    /**< the whole chassis, in walks */
};

#endif
