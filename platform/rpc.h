/* Remote calls by service name. */
#ifndef PLATFORM_RPC_H
#define PLATFORM_RPC_H

#include "platform/base.h"

PM_C_BEGIN

enum {
  RPC_PARA_MAX = 8,
  RPC_RESULT_SIZE = 516 /* bytes of a synchronous call's result area */
};

/* How a parameter travels. */
enum {
  RPC_KIND_VALUE = 0, /* the value itself, cast to a pointer-sized word; length 1, 2 or 4 */
  RPC_KIND_INPUT = 1, /* ulLen bytes are sent */
  RPC_KIND_OUTPUT = 2 /* ulLen bytes are filled before the call returns */
};

typedef struct RpcPara {
  u32 ulNum;
  struct {
    u32 ulKind;
    u32 ulLen;
    void *pValue;
  } astPara[RPC_PARA_MAX];
} RpcPara;

u32 RPC_LibParaInit(RpcPara *pstPara, u32 ulParaNum);
u32 RPC_LibParaSet(RpcPara *pstPara, u32 ulIndex, u32 ulKind, u32 ulLen, void *pValue);
/* The server's 32-bit answer is stored in the first word of the RPC_RESULT_SIZE bytes at pResult.
 */
u32 RPC_LibSyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara, void *pResult);
u32 RPC_LibAyncCall(u32 ulDest, const char *pcService, RpcPara *pstPara);

PM_C_END

#endif
