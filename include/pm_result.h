/** @file
 * Result codes: 0 is success, and the answer "yes" of a yes/no question. */
#ifndef PM_RESULT_H
#define PM_RESULT_H

#include "pm_base.h"

/** The one list: name, value, meaning. */
#define PM_RESULT_LIST(X)                                                                         \
  X(PM_ERR_VS_CONDITION, 0x68937E, "a virtual-system membership question is answered with no")    \
  X(PM_ERR_MEM_OPER, 0x68937F, "a copy into the library's state or a start-up allocation failed") \
  X(PM_ERR_PARA, 0x689380, "null pointer or unacceptable input; a missing table or function")     \
  X(PM_ERR_DATA_INVALID, 0x689383, "a record or argument failed a consistency check")             \
  X(PM_ERR_NO_MORE, 0x689384, "no further element")                                               \
  X(PM_ERR_MALLOC, 0x689385, "memory allocation failed")                                          \
  X(PM_RET_NOT_CONCERNED, 0x689388, "returned by a booked function; counts as success")           \
  X(PM_ERR_SIZE_ZERO, 0x689389, "the sub-attribute control block is missing or counts no types")  \
  X(PM_ERR_PRIM_CHECK_TYPE, 0x68938E, "a check-type primitive arrived as a message")              \
  X(PM_ERR_PTP_NOT_EXIST, 0x6908AD, "the PTP or its record does not exist")                       \
  X(PM_ERR_NAME_LEN, 0x6908AF, "name buffer shorter than 33 bytes")                               \
  X(PM_ERR_PHYADDR_LEN, 0x6908B0, "physical-address length other than 6")                         \
  X(PM_ERR_LEN, 0x6908B3, "buffer or record shorter than required")                               \
  X(PM_ERR_TYPE_REGISTERED, 0x6908B8, "the port type is already registered")                      \
  X(PM_ERR_DESC_INVALID, 0x6908B9, "description empty or longer than the description length")     \
  X(PM_ERR_FUNC_NULL, 0x6908BB, "the callback needed is null, or the PTP is not a physical port") \
  X(PM_ERR_STR_OPER, 0x6908BC, "a bounded string copy, an index or a count check failed")         \
  X(PM_ERR_LEN_RANGE, 0x6908BD, "a length or value is outside its allowed range")                 \
  X(PM_ERR_PID_CONFLICT, 0x6908BE, "a PID is already registered for another port type")           \
  X(PM_ERR_PTPID_RANGE, 0x6908C2, "PTP ID or synchronisation unit above the maximum PTP ID")      \
  X(PM_ERR_PTPTYPE_INVALID, 0x6908C8, "the port type is not known")                               \
  X(PM_ERR_PTP_INVISIBLE, 0x6908D6, "the PTP is invisible")                                       \
  X(PM_ERR_DB_STATE, 0x6908D9, "database result 4")                                               \
  X(PM_ERR_DB_FAIL, 0x6908DC, "database results 1, 2 and above 5")                                \
  X(PM_ERR_PRIMTYPE_RANGE, 0x6908EC, "primitive type above 14")                                   \
  X(PM_ERR_BOOK_EXIST, 0x6908ED, "the function is already booked for that type and port type")    \
  X(PM_ERR_SUFFIX_INVALID, 0x6909B4, "port-type suffix out of range")                             \
  X(PM_ERR_PTP_NOT_IN_VS, 0x6909C7, "the PTP is not in the asked virtual system")

#ifdef __cplusplus
/** Makes an entry of the list a constant. */
#define PM_RESULT_VALUE(name, value, text) inline constexpr u32 name = (value);
inline constexpr u32 PM_OK = 0;
PM_RESULT_LIST(PM_RESULT_VALUE)
#else
/** Makes an entry of the list a constant. */
#define PM_RESULT_VALUE(name, value, text) name = (value),
enum { PM_OK = 0, PM_RESULT_LIST(PM_RESULT_VALUE) };
#endif
#undef PM_RESULT_VALUE

#endif
