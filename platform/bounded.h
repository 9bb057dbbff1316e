/* Bounded memory and strings. A bounded copy fails with a non-zero code on a null pointer or a
 * zero or too small destination, and writes nothing beyond the destination. */
#ifndef PLATFORM_BOUNDED_H
#define PLATFORM_BOUNDED_H

#include "platform/base.h"

PM_C_BEGIN

int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount);
int memcpy_s(void *pDest, size_t ulDestMax, const void *pSrc, size_t ulCount);
/* Copies at most ulCount characters and always terminates. */
int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount);
/* The number of characters written; the output is cut to fit; -1 on failure. */
int snprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...) PM_PRINTF(3, 4);
int vsnprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list args)
    PM_PRINTF(3, 0);

PM_C_END

#endif
