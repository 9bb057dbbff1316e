/** @file
 * Fixed-width names, packing and linkage shared by the host's declarations and the library's. */
#ifndef PLATFORM_BASE_H
#define PLATFORM_BASE_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

typedef uint8_t u8;   /**< 8 bits, unsigned */
typedef uint16_t u16; /**< 16 bits, unsigned */
typedef uint32_t u32; /**< 32 bits, unsigned */

/** A value that the library carries without reading it and that may hold a pointer: one machine
 * word, so 32 bits on the target. */
typedef uintptr_t PmWord;

/** A host object named by number; 0 names none. */
typedef u32 Handle;

#ifdef __cplusplus
#define PM_C_BEGIN extern "C" {
#define PM_C_END }
#define PM_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
/** Begins declarations of C linkage. */
#define PM_C_BEGIN
/** Ends them. */
#define PM_C_END
/** A check while compiling. */
#define PM_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

#if defined(__GNUC__)
#define PM_PRINTF(format_index, first_argument) \
  __attribute__((format(printf, format_index, first_argument)))
#else
/** Has the compiler check a format against the arguments behind it. */
#define PM_PRINTF(format_index, first_argument)
#endif

/** Pins a record's size. */
#define PM_PIN_SIZE(type, size) PM_STATIC_ASSERT(sizeof(type) == (size), "size of " #type)
/** Pins the size of a record that holds pointers, on the 32-bit target only. */
#define PM_PIN_SIZE32(type, size) \
  PM_STATIC_ASSERT(sizeof(void *) != 4 || sizeof(type) == (size), "size of " #type)
/** Pins the offset of a record's field. */
#define PM_PIN_OFFSET(type, field, offset) \
  PM_STATIC_ASSERT(offsetof(type, field) == (offset), "offset of " #type "." #field)
/** Pins the offset of a field behind pointers, on the 32-bit target only. */
#define PM_PIN_OFFSET32(type, field, offset)                                 \
  PM_STATIC_ASSERT(sizeof(void *) != 4 || offsetof(type, field) == (offset), \
                   "offset of " #type "." #field)

#endif
