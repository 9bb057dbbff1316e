/* How many ports a board has. */
#ifndef PM_BOARD_PORTS_H
#define PM_BOARD_PORTS_H

#include "pm_base.h"

PM_C_BEGIN

PM_API u32 PM_LibGetHardwarePortNum(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                    u8 *pucSumNum);
PM_API u32 PM_LibGetPortNumFromBIndex(u16 usBIndex, u8 *pucOutPortNum, u8 *pucInnerPortNum,
                                      u8 *pucSumNum);

PM_C_END

#endif
