/* Registration of sub-lines: the product code that owns a port type. */
#ifndef PM_SUB_LINE_H
#define PM_SUB_LINE_H

#include "pm_attributes.h"
#include "pm_base.h"

PM_C_BEGIN

/* A callback that the library keeps and returns but never calls. */
typedef u32 (*PmSubLineFunc)(void);

/* The callback table of one sub-line. It is copied at registration. A slot may be null: an accessor
 * that needs it then answers PM_ERR_FUNC_NULL. The callbacks run in the task of the accessor's
 * caller and return 0 for success. */
typedef struct PmSubCallBack {
  PmSubLineFunc pfnSetAdmin;              /* SET_ADMIN_FUNC, not called by the library */
  PmSubLineFunc pfnSetPromiscuousMode;    /* SET_PROMISCOUS_MODE_FUNC, not called by the library */
  PmGetStatsFunc pfnGetStats;             /* GET_STATS_FUNC */
  PmGetAttrFunc pfnGetAttr;               /* GET_ATTR_FUNC */
  PmGetAttrPrivFunc pfnGetAttrPriv;       /* GET_ATTR_PRIV_FUNC */
  PmSubLineFunc pfnSynExtract;            /* SYN_EXTRACT_FUNC, not called by the library */
  PmSubLineFunc pfnSynRestore;            /* SYN_RESTORE_FUNC, not called by the library */
  PmGetActiveSpeedFunc pfnGetActiveSpeed; /* GET_ACTIVE_SPEED_FUNC */
  PmSubLineFunc pfnGetReplaceType;        /* GET_REPLACE_TYPE_FUNC, stored as null */
} PmSubCallBack;

PM_PIN_SIZE32(PmSubCallBack, 36);

/* What a product hands over to register a sub-line. Copied; the caller keeps ownership. */
typedef struct PmSubLineInfo {
  u16 usPtpType; /* port type, unique among the registered sub-lines */
  u32 ulPID;     /* PM_PID_NONE: the sub-line has no process of its own */
  u32 aulReserved1[2];
  u32 (*pfnInitFunc)(u32 enPhase); /* start-up function of the PID */
  void (*pfnMainProc)(void *pMsg); /* message function of the PID */
  u32 aulReserved2[2];
  PmSubCallBack stCallBack;
} PmSubLineInfo;

PM_PIN_SIZE32(PmSubLineInfo, 68);
PM_PIN_OFFSET32(PmSubLineInfo, stCallBack, 32);

#define PM_PID_NONE 0xFFFFFFFFu

/* A registration held by the library. */
typedef struct PmSubInfoNode {
  PmSubLineInfo stInfo;
  struct PmSubInfoNode *pstNext;
} PmSubInfoNode;

PM_PIN_SIZE32(PmSubInfoNode, 72);

PM_API u32 PM_LibRegSubLineInfo(const PmSubLineInfo *pstSubLineInfo);
PM_API u32 PM_LibCfgIsInputValid(const PmSubLineInfo *pstSubLineInfo);
PM_API u32 PM_LibCfgAddSubInfoNode(const PmSubLineInfo *pstSubLineInfo);
PM_API u32 PM_LibCfgAddSubInfoNodeToCB(PmSubInfoNode *pstNode);
PM_API u32 PM_LibLibCfgGetNextSubInfoNode(PmSubInfoNode *pstCurrent, PmSubInfoNode **ppstNext);
PM_API u32 PM_LibCfgGetPtpTypeNum(u16 *pusPtpTypeNum);
PM_API void PM_LibCfgVarInit(void);
PM_API u32 PM_LibCfgRegSubLinePid(void);

PM_C_END

#endif
