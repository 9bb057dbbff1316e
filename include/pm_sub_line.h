/** @file
 * Registration of sub-lines: the product code that owns a port type. */
#ifndef PM_SUB_LINE_H
#define PM_SUB_LINE_H

#include "pm_attributes.h"
#include "pm_base.h"

PM_C_BEGIN

/** A callback that the library keeps and returns but never calls. */
typedef u32 (*PmSubLineFunc)(void);

/** The callback table of a sub-line: how the library reads the live attributes of the PTPs of one
 * port type.
 *
 * Life cycle. A product fills a table inside its PmSubLineInfo and registers it from its
 * configuration hook, once per port type and instance. Registration copies the table into the
 * instance's registration list. When the first port-type record arrives from data distribution, the
 * instance's callback table is built from that list in registration order, up to the number of port
 * types; from then on lookups and accessors see only this second copy. A registration that comes
 * later stays in the list and serves nobody. Registrations are neither replaced nor withdrawn, so
 * the functions must stay loaded as long as the instance lives.
 *
 * Order. Callback entry and port-type record of the same position are handed out together by
 * PM_LibGetSubInfo, and nothing checks that they carry the same type: register the sub-lines in
 * the order of their suffixes.
 *
 * Threads. A callback runs in the task of whoever asked, inside the call, with no lock held,
 * and possibly for several instances at once. It may call the library's queries, but not the
 * accessor that is asking it for the same PTP.
 *
 * Ownership. The record a callback fills belongs to the caller: an accessor of pm_attributes.h
 * hands over a cleared one of its own, valid until the callback returns. A callback writes nothing
 * beyond it and keeps no pointer to it. Fields it leaves alone are read as zeros.
 *
 * Results. 0 is success. What a failure means differs per slot and is said there.
 *
 * Empty slots. Any slot may be null; an accessor that needs a null slot answers PM_ERR_FUNC_NULL
 * and calls nothing. A port type without sub-line is different: it has no entry at all, and
 * accessors answer PM_ERR_PTPTYPE_INVALID.
 *
 *   pfnSetAdmin            SET_ADMIN_FUNC. Never called, so it may be empty.
 *   pfnSetPromiscuousMode  SET_PROMISCOUS_MODE_FUNC. Never called, so it may be empty.
 *   pfnGetStats            GET_STATS_FUNC. Called by PM_LibGetSubStatsFromPTP, so for the
 *                          statistics. Its failure is passed on.
 *   pfnGetAttr             GET_ATTR_FUNC. Called by PM_LibGetSubAttrFromPTP, so for name, physical
 *                          address, specific words, administrative status, promiscuous mode and
 *                          counter discontinuity time; fills the whole record. Its failure is
 *                          recorded and not passed on: what it has written is read.
 *   pfnGetAttrPriv         GET_ATTR_PRIV_FUNC. Called by PM_LibGetSubAttrFromPTPNEW, so for MTU,
 *                          speeds, link state and transmit queue length; fills at least the fields
 *                          of its selector. Its failure is recorded and not passed on. Empty does
 *                          not fall back on pfnGetAttr.
 *   pfnSynExtract          SYN_EXTRACT_FUNC. Never called, so it may be empty.
 *   pfnSynRestore          SYN_RESTORE_FUNC. Never called, so it may be empty.
 *   pfnGetActiveSpeed      GET_ACTIVE_SPEED_FUNC. Called by PM_LibGetSubActiveSpeedFromPTP, so for
 *                          the active speeds. Its failure is passed on.
 *   pfnGetReplaceType      GET_REPLACE_TYPE_FUNC. Registration stores null here whatever is given,
 *                          and lookups always answer null.
 *
 * The functions that are never called are kept and returned by the lookups of pm_sub_lookup.h. */
typedef struct PmSubCallBack {
  PmSubLineFunc pfnSetAdmin;              /**< not called by the library */
  PmSubLineFunc pfnSetPromiscuousMode;    /**< not called by the library */
  PmGetStatsFunc pfnGetStats;             /**< statistics */
  PmGetAttrFunc pfnGetAttr;               /**< general attributes */
  PmGetAttrPrivFunc pfnGetAttrPriv;       /**< one attribute by selector */
  PmSubLineFunc pfnSynExtract;            /**< not called by the library */
  PmSubLineFunc pfnSynRestore;            /**< not called by the library */
  PmGetActiveSpeedFunc pfnGetActiveSpeed; /**< speeds in use */
  PmSubLineFunc pfnGetReplaceType;        /**< not called by the library */
} PmSubCallBack;

PM_PIN_SIZE32(PmSubCallBack, 36);

/** What a product hands over to register a sub-line. Copied whole, the unread words included; the
 * caller keeps ownership. */
typedef struct PmSubLineInfo {
  u16 usPtpType;                   /**< port type, unique among the registered sub-lines */
  u32 ulPID;                       /**< PM_PID_NONE: the sub-line has no process of its own */
  u32 aulReserved1[2];             /**< not read by the library */
  u32 (*pfnInitFunc)(u32 enPhase); /**< start-up function of the PID; unused without one */
  void (*pfnMainProc)(void *pMsg); /**< message function of the PID; unused without one */
  u32 aulReserved2[2];             /**< not read by the library */
  PmSubCallBack stCallBack;        /**< kept for the callback table */
} PmSubLineInfo;

PM_PIN_SIZE32(PmSubLineInfo, 68);
PM_PIN_OFFSET32(PmSubLineInfo, stCallBack, 32);

/** ulPID of a sub-line without a process of its own. */
#define PM_PID_NONE 0xFFFFFFFFu

/** A registration held by the library. */
typedef struct PmSubInfoNode {
  PmSubLineInfo stInfo;          /**< as registered */
  struct PmSubInfoNode *pstNext; /**< the next registration; null = the last */
} PmSubInfoNode;

PM_PIN_SIZE32(PmSubInfoNode, 72);

/**
 * Registers a sub-line with the current instance. Called by product code, at best from its
 * configuration hook: what was registered before the FID start-up is dropped there, and a later
 * sub-line gets no PID.
 *
 * @param pstSubLineInfo  the registration, copied
 * @retval 0                       registered
 * @retval PM_ERR_PARA             pstSubLineInfo is null, or no current instance
 * @retval PM_ERR_TYPE_REGISTERED  the port type is already registered
 * @retval PM_ERR_PID_CONFLICT     another port type has registered the PID
 * @retval PM_ERR_MALLOC           no memory
 *
 * A refused registration leaves the list as it was.
 */
PM_API u32 PM_LibRegSubLineInfo(const PmSubLineInfo *pstSubLineInfo);

/**
 * Checks a registration against the registered sub-lines; the first step of PM_LibRegSubLineInfo.
 * Of a node that has both the type and the PID, the type is reported.
 *
 * @param pstSubLineInfo  the registration
 * @retval 0                       it may be registered
 * @retval PM_ERR_PARA             pstSubLineInfo is null, or no current instance
 * @retval PM_ERR_TYPE_REGISTERED  the port type is already registered
 * @retval PM_ERR_PID_CONFLICT     another port type has registered the PID
 */
PM_API u32 PM_LibCfgIsInputValid(const PmSubLineInfo *pstSubLineInfo);

/**
 * Copies a registration to the end of the list, without the check and with pfnGetReplaceType null;
 * the second step of PM_LibRegSubLineInfo.
 *
 * @param pstSubLineInfo  the registration, copied
 * @retval 0              added
 * @retval PM_ERR_MALLOC  no memory
 * @retval PM_ERR_PARA    pstSubLineInfo is null, or no current instance
 */
PM_API u32 PM_LibCfgAddSubInfoNode(const PmSubLineInfo *pstSubLineInfo);

/**
 * Links a node to the end of the list and counts it.
 *
 * @param pstNode  node whose pstNext is null, from the host's allocator; the list owns it from now
 *                 on. Null is ignored.
 * @retval 0            done
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibCfgAddSubInfoNodeToCB(PmSubInfoNode *pstNode);

/**
 * One step of a walk over the registered sub-lines, in registration order.
 *
 * @param[in]  pstCurrent  node to go on from; null for the first
 * @param[out] ppstNext    the next node, owned by the list; null at the end
 * @retval 0               there is a node
 * @retval PM_ERR_NO_MORE  the end of the list, or ppstNext is null
 * @retval PM_ERR_PARA     no current instance; nothing is written
 */
PM_API u32 PM_LibLibCfgGetNextSubInfoNode(PmSubInfoNode *pstCurrent, PmSubInfoNode **ppstNext);

/**
 * Number of registered sub-lines of the current instance.
 *
 * @param[out] pusPtpTypeNum  the number; null is ignored
 * @retval 0            done
 * @retval PM_ERR_PARA  no current instance; nothing is written
 */
PM_API u32 PM_LibCfgGetPtpTypeNum(u16 *pusPtpTypeNum);

/**
 * Empties the list without releasing its nodes. Called once, by the FID start-up before the
 * product's configuration hook. Does nothing outside an instance.
 */
PM_API void PM_LibCfgVarInit(void);

/**
 * Registers the PID of every registered sub-line that has one. Called once, by the FID start-up
 * after the product's configuration hook. A refused PID is printed and recorded, and the next one
 * follows.
 *
 * @retval 0            done
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibCfgRegSubLinePid(void);

PM_C_END

#endif
