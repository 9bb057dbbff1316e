/** @file
 * How many ports a board has. Its outer ports are numbered from 0, its inner ports follow without a
 * gap, and together they are at most 255. The counts come from the device layer at every call;
 * nothing is kept. */
#ifndef PM_BOARD_PORTS_H
#define PM_BOARD_PORTS_H

#include "pm_base.h"

PM_C_BEGIN

/**
 * The ports that a board has as hardware. All three outputs are written on success only.
 *
 * @param[in]  usBIndex         board index
 * @param[out] pucOutPortNum    number of outer ports
 * @param[out] pucInnerPortNum  number of inner ports
 * @param[out] pucSumNum        number of ports
 * @retval 0                written
 * @retval PM_ERR_PARA      an output is null
 * @retval PM_ERR_STR_OPER  the device layer reports more than 255 ports
 * @return otherwise the device layer's code
 */
PM_API u32 PM_LibGetHardwarePortNum(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                    u8 *pucSumNum);

/**
 * The ports of a board that have a port type in the device layer. One port whose type can't be read
 * fails the whole count. All three outputs are written on success only.
 *
 * @param[in]  usBIndex         board index
 * @param[out] pucOutPortNum    number of outer ports with a type
 * @param[out] pucInnerPortNum  number of inner ports with a type
 * @param[out] pucSumNum        sum of the two
 * @retval 0                written
 * @retval PM_ERR_PARA      an output is null
 * @retval PM_ERR_STR_OPER  the device layer reports more than 255 ports
 * @return otherwise the device layer's code
 */
PM_API u32 PM_LibGetPortNumFromBIndex(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                      u8 *pucSumNum);

PM_C_END

#endif
