/* Component framework: registration, instances, the current instance, message dispatch by PID and
 * publication of services. Every u32 result is 0 for success unless a comment says otherwise. */
#ifndef PLATFORM_ROOT_H
#define PLATFORM_ROOT_H

#include "platform/base.h"

PM_C_BEGIN

/* The framework's record of one component instance. A component reads the identifier and the
 * pointer to its own local data, and writes neither. */
typedef struct PmInstance {
  u32 ulReserved;
  u32 ulCid;
  u8 aucReserved[224];
  void *pLocalData;
} PmInstance;

PM_PIN_OFFSET(PmInstance, ulCid, 4);
PM_PIN_OFFSET(PmInstance, pLocalData, 232);

typedef u32 (*RootConstructFunc)(u32 ulPhase, u32 ulPara, u32 ulCid, u32 ulReserved);
typedef u32 (*RootDestructFunc)(void *pLocalData);
typedef u32 (*RootMsgFunc)(void *pMsg, void *pLocalData);

/* What a component says of itself when it registers. */
typedef struct RootCompRegisterInfo {
  u32 ulCompType;
  char acName[16];
  RootConstructFunc pfnConstruct;
  RootDestructFunc pfnDestruct;
  RootMsgFunc pfnMsgProc;
  u32 ulReserved1;
  u32 ulReserved2;
} RootCompRegisterInfo;

PM_PIN_SIZE32(RootCompRegisterInfo, 40);
PM_PIN_OFFSET(RootCompRegisterInfo, acName, 4);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnConstruct, 20);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnDestruct, 24);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnMsgProc, 28);
PM_PIN_OFFSET32(RootCompRegisterInfo, ulReserved1, 32);

/* Registers a component from a RootCompRegisterInfo. */
u32 ROOT_LibCompRegisterInfo(const void *pstRegisterRecord);
/* Creates an instance's local data and links it to the PmInstance; null on failure. */
void *ROOT_LibCompLocalCreate(u32 ulCid, u32 ulCompType, u32 ulSize);
u32 ROOT_LibCompHandleInit(u32 ulCompType, u32 ulCid, Handle *pulHandle);
u32 ZEL_HandleFinalize(Handle ulHandle);
/* The instance that runs on this thread; null when none does. */
PmInstance *ROOT_LibGetCurrentThis(void);
/* The identifier of that instance, not a result code. */
u32 ROOT_LibGetCurrentCID(void);
/* Delivers a message to the message function of the PID it is addressed to. */
u32 ROOT_LibProcFidPidMsg(u32 ulCid, void *pMsg, void *pLocalData);
/* 1 = the instance depends on the PID. */
u32 ROOT_LibIsPidDepend(u32 ulPid, PmInstance *pstThis);
u32 ROOT_LibSrvmPubishSapi(const char *pcServiceName, u32 ulCid);
/* The interface identifier of a message, not a result code. */
u32 DMS_MsgRecvIidGet(const void *pMsg);

PM_C_END

#endif
