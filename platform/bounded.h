/** @file
 * Bounded memory and strings. A bounded copy fails with a non-zero code on a null pointer or a
 * zero or too small destination, and writes nothing beyond the destination. */
#ifndef PLATFORM_BOUNDED_H
#define PLATFORM_BOUNDED_H

#include "platform/base.h"

PM_C_BEGIN

/**
 * Fills memory.
 *
 * @param[out] pDest      what is filled
 * @param[in]  ulDestMax  its size in bytes
 * @param[in]  iValue     the byte
 * @param[in]  ulCount    bytes to fill
 * @return 0, or a code that tells why nothing has been filled
 */
int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount);

/**
 * Copies memory.
 *
 * @param[out] pDest      the copy
 * @param[in]  ulDestMax  its size in bytes
 * @param[in]  pSrc       what is copied
 * @param[in]  ulCount    bytes to copy
 * @return 0, or a code that tells why nothing has been copied
 */
int memcpy_s(void *pDest, size_t ulDestMax, const void *pSrc, size_t ulCount);

/**
 * Copies at most ulCount characters and always terminates.
 *
 * @param[out] pcDest     the copy
 * @param[in]  ulDestMax  its size in bytes
 * @param[in]  pcSrc      what is copied
 * @param[in]  ulCount    characters to copy at most
 * @return 0, or a code that tells why the string is not there
 */
int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount);

/**
 * Prints into a buffer. The output is cut to fit and terminated.
 *
 * @param[out] pcDest     the buffer
 * @param[in]  ulDestMax  its size in bytes
 * @param[in]  pcFormat   as printf's
 * @return characters written; -1 on failure
 */
int snprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...) PM_PRINTF(3, 4);

/**
 * Prints into a buffer. The output is cut to fit and terminated.
 *
 * @param[out] pcDest     the buffer
 * @param[in]  ulDestMax  its size in bytes
 * @param[in]  pcFormat   as printf's
 * @param[in]  args       the values
 * @return characters written; -1 on failure
 */
int vsnprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list args)
    PM_PRINTF(3, 0);

PM_C_END

#endif
