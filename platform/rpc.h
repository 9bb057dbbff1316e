/** @file
 * Remote calls by service name. */
#ifndef PLATFORM_RPC_H
#define PLATFORM_RPC_H

#include "platform/base.h"

PM_C_BEGIN

enum {
  RPC_PARA_MAX = 8,
  RPC_RESULT_SIZE = 516 /**< bytes of a synchronous call's result area */
};

/** How a parameter travels. */
enum {
  RPC_KIND_VALUE = 0, /**< the value itself, cast to a pointer-sized word; length 1, 2 or 4 */
  RPC_KIND_INPUT = 1, /**< ulLen bytes are sent */
  RPC_KIND_OUTPUT = 2 /**< ulLen bytes are filled before the call returns */
};

/** The parameters of a call. */
typedef struct RpcPara {
  u32 ulNum; /**< number of parameters in use */
  struct {
    u32 ulKind;            /**< RPC_KIND_... */
    u32 ulLen;             /**< length in bytes */
    void *pValue;          /**< the value or its address, as the kind says */
  } astPara[RPC_PARA_MAX]; /**< by position */
} RpcPara;

/**
 * Begins a parameter list.
 *
 * @param[out] pstPara    the list
 * @param[in]  ulParaNum  number of parameters, at most RPC_PARA_MAX
 * @return 0, or a code that tells why not
 */
u32 RPC_LibParaInit(RpcPara *pstPara, u32 ulParaNum);

/**
 * Sets a parameter of a list.
 *
 * @param pstPara  the list
 * @param ulIndex  position, from 0
 * @param ulKind   RPC_KIND_...
 * @param ulLen    length in bytes
 * @param pValue   the value or its address, as the kind says
 * @return 0, or a code that tells why not
 */
u32 RPC_LibParaSet(RpcPara *pstPara, u32 ulIndex, u32 ulKind, u32 ulLen, void *pValue);

/**
 * Calls a service and waits for its answer.
 *
 * @param[in]  ulDest     destination, 0 = the owner of the PTP database
 * @param[in]  pcService  name
 * @param[in]  pstPara    parameters, outputs are filled
 * @param[out] pResult    RPC_RESULT_SIZE bytes; the first word is the server's answer
 * @return 0 when the call was carried out, whatever the server answered
 */
u32 RPC_LibSyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara, void *pResult);

/**
 * Calls a service without waiting.
 *
 * @param ulDest     destination, 0 = the owner of the PTP database
 * @param pcService  name
 * @param pstPara    parameters; none is an output
 * @return 0 when the call was sent
 */
u32 RPC_LibAyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara);

PM_C_END

#endif
