/** @file
 * Static records: the configuration of every PTP that does not change with its link state.
 *
 * Every instance holds a replica in a hash table of its own, which its first record creates and
 * which lives as long as the instance. Only the restore paths write it: data distribution and
 * active/standby synchronisation. All functions work on the current instance; nothing is locked. */
#ifndef PM_STATIC_DATA_H
#define PM_STATIC_DATA_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** Static record of one PTP, as data distribution and synchronisation carry it. A record of 214
 * bytes of 0xFF means that the PTP has no static data.
 *
 * The description takes as many bytes as the description length L (PmSpec, 1 to 80) plus one for
 * its terminator, and the private data of the sub-line follows directly behind it, at offset
 * 14 + L. The two last fields below stand where L = 80 puts them; read the private data with
 * PM_LibGetPrivStaticDataFromPTP, which knows L. */
typedef struct PtpStaticData {
  u16 usPtpID;            /**< PTP ID */
  u16 usBIndex;           /**< board index */
  u8 ucPortID;            /**< port number on the board */
  u8 ucLinkUpDownTrap;    /**< 1 = on, any other value = off */
  u16 usType;             /**< port type */
  u8 ucVisible;           /**< 0 = visible, any other value = invisible */
  u32 ulVsMask;           /**< bit n set = member of virtual system n */
  char szDescription[81]; /**< may lack a terminator */
  u8 aucPriData[120];     /**< private data */
} PtpStaticData;

/** A record in the static database; the link words belong to the host's hash table. */
typedef struct PmStaticDBNode {
  PmWord aulLink[3];    /**< the host's hash table's own */
  PtpStaticData stData; /**< the record */
} PmStaticDBNode;

#pragma pack(pop)

PM_PIN_SIZE(PtpStaticData, 214);
PM_PIN_OFFSET(PtpStaticData, usBIndex, 2);
PM_PIN_OFFSET(PtpStaticData, ucPortID, 4);
PM_PIN_OFFSET(PtpStaticData, ucLinkUpDownTrap, 5);
PM_PIN_OFFSET(PtpStaticData, usType, 6);
PM_PIN_OFFSET(PtpStaticData, ucVisible, 8);
PM_PIN_OFFSET(PtpStaticData, ulVsMask, 9);
PM_PIN_OFFSET(PtpStaticData, szDescription, 13);
PM_PIN_OFFSET(PtpStaticData, aucPriData, 94);
PM_PIN_SIZE32(PmStaticDBNode, 226);

enum {
  PM_PRI_DATA_SIZE = 120 /**< bytes of private static data in a static record */
};

/**
 * Compare function of the static database.
 *
 * @param pKey   u16 PTP ID, any alignment
 * @param pNode  PmStaticDBNode
 * @retval 0  the node carries that PTP ID
 * @retval 1  it does not, or a pointer is null
 */
PM_API u32 PM_LibCmpStaticDBNode(const void *pKey, const void *pNode);

/**
 * Finds a PTP's node.
 *
 * @param usPtpID  PTP ID
 * @return the node, owned by the database and valid until it is deleted; null when there is none,
 * no database yet or no current instance
 */
PM_API PmStaticDBNode *PM_LibFindStaticDBNode(u16 usPtpID);

/**
 * Adds a node whose record is cleared but for its PTP ID; the first call creates the database. The
 * caller fills the record.
 *
 * @param usPtpID  PTP ID that has no node yet
 * @return the node, owned by the database; null when the table or the node can't be allocated, or
 *         outside an instance
 */
PM_API PmStaticDBNode *PM_LibCreateStaticDBNode(u16 usPtpID);

/**
 * Inserts or replaces a PTP's record, all 214 bytes of it. Called by the restore paths.
 *
 * @param pstStaticData  the record; its usPtpID is the key and may be above the maximum PTP ID,
 *                       where no reader reaches it
 * @retval 0                    stored
 * @retval PM_ERR_DATA_INVALID  the PTP has no node and none could be created
 * @retval PM_ERR_MEM_OPER      the copy failed; a new node stays, cleared but for its PTP ID
 * @retval PM_ERR_PARA          pstStaticData is null, or no current instance
 */
PM_API u32 PM_LibUpdateStaticDBNode(const PtpStaticData *pstStaticData);

/**
 * Deletes a PTP's record and releases its node. Called by the restore paths.
 *
 * @param usPtpID  PTP ID
 * @retval 0  always; deleting an absent record is recorded
 */
PM_API u32 PM_LibDeleteStaticDBNode(u16 usPtpID);

/**
 * Copies a PTP's static record: the one read access to the database.
 *
 * @param[in]  usPtpID        PTP ID, 0 to the maximum PTP ID
 * @param[out] pstStaticData  receives the 214 bytes
 * @retval 0                     the PTP has a record
 * @retval 1                     no database yet, or usPtpID above the maximum; nothing is written
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP has none; the output is filled with 0xFF
 * @retval PM_ERR_PARA           pstStaticData is null, or no current instance
 */
PM_API u32 PM_LibStaticDataGetDataFromPTP(u16 usPtpID, PtpStaticData *pstStaticData);

PM_C_END

#endif
