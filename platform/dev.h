/** @file
 * Device layer (frames, boards, ports) and port topology. */
#ifndef PLATFORM_DEV_H
#define PLATFORM_DEV_H

#include "platform/base.h"

PM_C_BEGIN

/**
 * The number of frames; frame IDs are below it.
 *
 * @return the number (not a result code)
 */
u16 DEV_GetMaxFrameNum(void);

/**
 * Does the frame exist?
 *
 * @param usFrameID  frame ID
 * @return 0 if it does
 */
u32 DEV_LibIfFrameExist(u16 usFrameID);

/**
 * Reads an attribute of a frame. The library asks for 5, the number of slots, a u8.
 *
 * @param[in]  usFrameID  frame ID
 * @param[in]  ulAttr     attribute
 * @param[in]  ulLen      size of the attribute in bytes
 * @param[out] pOut       the attribute
 * @return 0, or a code that tells why not
 */
u32 DEV_LibGetFrameAttribute(u16 usFrameID, u32 ulAttr, u32 ulLen, void *pOut);

/**
 * Is there a board?
 *
 * @param usBIndex  board index
 * @return 0 if there is
 */
u32 DEV_LibIfBoardExist(u16 usBIndex);

/**
 * Reads an attribute of a board. The library asks for 0x10007 and 0x10008, the numbers of inner and
 * of outer ports, each a u16.
 *
 * @param[in]  usBIndex  board index
 * @param[in]  ulAttr    attribute
 * @param[in]  ulLen     size of the attribute in bytes
 * @param[out] pOut      the attribute
 * @return 0, or a code that tells why not
 */
u32 DEV_LibGetBoardAttribute(u16 usBIndex, u32 ulAttr, u32 ulLen, void *pOut);

/**
 * Reads the device layer's type of a port, 0xFF = none.
 *
 * @param[in]  usBIndex  board index
 * @param[in]  ucPort    port number on the board
 * @param[out] pucType   the type
 * @return 0, or a code that tells why not
 */
u32 DEV_LibGetPortTypeOfBoard(u16 usBIndex, u8 ucPort, u8 *pucType);

/**
 * The board index of a slot; the slot may be empty.
 *
 * @param[in]  usFrameID  frame ID
 * @param[in]  ucSlotID   slot ID
 * @param[out] pusBIndex  board index
 * @return 0, or a code that tells why not
 */
u32 DEV_LibGetBIndexFromFrameIDSlotID(u16 usFrameID, u8 ucSlotID, u16 *pusBIndex);

/**
 * The slot of a board index.
 *
 * @param[in]  usBIndex    board index
 * @param[out] pusFrameID  frame ID
 * @param[out] pucSlotID   slot ID
 * @return 0, or a code that tells why not
 */
u32 DEV_LibGetFrameIDSlotIDFromBIndex(u16 usBIndex, u16 *pusFrameID, u8 *pucSlotID);

/**
 * Prints a trace line of the start-up.
 *
 * @param ulLevel   level word
 * @param pcFormat  as printf's
 */
void DEV_LibPrintf(u32 ulLevel, const char *pcFormat, ...) PM_PRINTF(2, 3);

/**
 * Logs a booked function that took long.
 *
 * @param pcFile      source name
 * @param ulLine      line
 * @param ulTicks     how long it took
 * @param ulPrimType  primitive type
 * @param pfnFunc     the function
 */
void DEV_LibRecLongTimeCostPrimaryWordLog(const char *pcFile, u32 ulLine, u32 ulTicks,
                                          u32 ulPrimType, const void *pfnFunc);

/**
 * The hardware identifiers of a port that is wired to its board's LAN switch.
 *
 * @param[in]  usFrameID  frame ID
 * @param[in]  ucSlotID   slot ID
 * @param[in]  ucPortID   port number
 * @param[out] pucHard1   first identifier
 * @param[out] pucHard2   second identifier
 * @return 0 if the port is wired to the LAN switch
 */
u32 PTOPO_LibGetHardPhyIDFromPortId(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u8 *pucHard1,
                                    u8 *pucHard2);

/**
 * Is the port an e-switch port?
 *
 * @param usFrameID  frame ID
 * @param ucSlotID   slot ID
 * @param ucPortID   port number
 * @return any value but 0 if it is
 */
u32 PTOPO_ESWITCH_IsEswitchPort(u16 usFrameID, u8 ucSlotID, u8 ucPortID);

PM_C_END

#endif
