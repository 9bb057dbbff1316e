/** @file
 * Component framework: registration, instances, the current instance, message dispatch by PID and
 * publication of services. Every u32 result is 0 for success unless a comment says otherwise. */
#ifndef PLATFORM_ROOT_H
#define PLATFORM_ROOT_H

#include "platform/base.h"

PM_C_BEGIN

/** The framework's record of one component instance. A component reads the identifier and the
 * pointer to its own local data, and writes neither. */
typedef struct PmInstance {
  u32 ulReserved;      /**< the framework's own */
  u32 ulCid;           /**< component identifier of the instance */
  u8 aucReserved[224]; /**< the framework's own */
  void *pLocalData;    /**< the component's own data; null before it is created */
} PmInstance;

PM_PIN_OFFSET(PmInstance, ulCid, 4);
PM_PIN_OFFSET(PmInstance, pLocalData, 232);

/** Construct entry: called with each phase of an instance; returns 0 for success. */
typedef u32 (*RootConstructFunc)(u32 ulPhase, u32 ulPara, u32 ulCid, u32 ulReserved);

/** Destruct entry: called with the instance's data; returns 0 for success. */
typedef u32 (*RootDestructFunc)(void *pLocalData);

/** Message entry: called with the message and the instance's data; returns 0 for success. */
typedef u32 (*RootMsgFunc)(void *pMsg, void *pLocalData);

/** What a component says of itself when it registers. */
typedef struct RootCompRegisterInfo {
  u32 ulCompType;                 /**< component type */
  char acName[16];                /**< name, padded with zeros */
  RootConstructFunc pfnConstruct; /**< called once per phase of an instance */
  RootDestructFunc pfnDestruct;   /**< called when an instance ends */
  RootMsgFunc pfnMsgProc;         /**< called with every message to an instance */
  u32 ulReserved1;                /**< zero */
  u32 ulReserved2;                /**< zero */
} RootCompRegisterInfo;

PM_PIN_SIZE32(RootCompRegisterInfo, 40);
PM_PIN_OFFSET(RootCompRegisterInfo, acName, 4);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnConstruct, 20);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnDestruct, 24);
PM_PIN_OFFSET32(RootCompRegisterInfo, pfnMsgProc, 28);
PM_PIN_OFFSET32(RootCompRegisterInfo, ulReserved1, 32);

/**
 * Registers a component type. The host keeps a copy of the record and from then on can construct
 * instances of the type.
 *
 * @param pstRegisterRecord  RootCompRegisterInfo, any alignment
 * @return 0, or a code that tells why not
 */
u32 ROOT_LibCompRegisterInfo(const void *pstRegisterRecord);

/**
 * Creates an instance's local data, cleared, and links it to pLocalData of the instance's
 * PmInstance. Called from the construct entry.
 *
 * @param ulCid       component identifier of the instance
 * @param ulCompType  component type
 * @param ulSize      size in bytes
 * @return the data; null on failure
 */
void *ROOT_LibCompLocalCreate(u32 ulCid, u32 ulCompType, u32 ulSize);

/**
 * Creates the framework handle of an instance. Called from the construct entry.
 *
 * @param[in]  ulCompType  component type
 * @param[in]  ulCid       component identifier
 * @param[out] pulHandle   the handle, not 0
 * @return 0, or a code that tells why not
 */
u32 ROOT_LibCompHandleInit(u32 ulCompType, u32 ulCid, Handle *pulHandle);

/**
 * Gives a handle of ROOT_LibCompHandleInit back.
 *
 * @param ulHandle  the handle
 * @return 0, or a code that tells why not
 */
u32 ZEL_HandleFinalize(Handle ulHandle);

/**
 * The instance that runs on this thread. The host makes an instance current before it calls into
 * the library on its behalf.
 *
 * @return the instance; null when none runs
 */
PmInstance *ROOT_LibGetCurrentThis(void);

/**
 * The identifier of the instance that runs on this thread.
 *
 * @return the identifier (not a result code)
 */
u32 ROOT_LibGetCurrentCID(void);

/**
 * Delivers a message to the message function of the PID it is addressed to.
 *
 * @param ulCid       component identifier of the instance
 * @param pMsg        the message
 * @param pLocalData  the instance's data
 * @return 0, or a code that tells why not
 */
u32 ROOT_LibProcFidPidMsg(u32 ulCid, void *pMsg, void *pLocalData);

/**
 * Does the instance depend on a PID?
 *
 * @param ulPid    PID
 * @param pstThis  the instance
 * @return 1 if it does, any other value if not
 */
u32 ROOT_LibIsPidDepend(u32 ulPid, PmInstance *pstThis);

/**
 * Publishes the function of that name as a service, which other processes reach by name.
 *
 * @param pcServiceName  name of an exported function
 * @param ulCid          component identifier of the instance that offers it
 * @return 0, or a code that tells why not
 */
u32 ROOT_LibSrvmPubishSapi(const char *pcServiceName, u32 ulCid);

/**
 * The interface identifier of a message.
 *
 * @param pMsg  the message
 * @return the identifier (not a result code)
 */
u32 DMS_MsgRecvIidGet(const void *pMsg);

PM_C_END

#endif
