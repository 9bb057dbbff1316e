/** @file
 * The library as a component of the host: registration, construction, messages, start-up. */
#ifndef PM_COMPONENT_H
#define PM_COMPONENT_H

#include "pm_base.h"

PM_C_BEGIN

/**
 * Registers the library with the component framework as component type 54, "PM_lib", and
 * PM_LibSpecUpdate with the data distribution. Called once by the process that loads the library.
 *
 * @return the result of ROOT_LibCompRegisterInfo
 */
PM_API u32 PM_LibRegisterInfo(void);

/**
 * Construct entry of an instance.
 *
 * @param ulPhase     0 creates the instance's zeroed data; 1 and 2 have nothing to do
 * @param ulPara      kept with the instance
 * @param ulCid       component identifier of the instance
 * @param ulReserved  not read
 * @retval 0  done
 * @retval 1  the data or the framework handle could not be created, or the phase is above 2
 */
PM_API u32 PM_LibConstructProc(u32 ulPhase, u32 ulPara, u32 ulCid, u32 ulReserved);

/**
 * Destruct entry: gives the framework handle back. The instance's tables are not released.
 *
 * @param pLocalData  the instance's data
 * @retval 0  done
 * @retval 1  the handle could not be finalised, or pLocalData is null
 */
PM_API u32 PM_LibDestructProc(void *pLocalData);

/**
 * Message entry: hands a message on by its interface identifier.
 *
 * @param pMsg        the message
 * @param pLocalData  the instance's data
 * @retval 0   the identifier is above 31: the message is ignored
 * @retval 1   pMsg is null
 * @return otherwise the result of PM_LibProcTulviIIDMsg
 */
PM_API u32 PM_LibMsgProcEntry(void *pMsg, void *pLocalData);

/**
 * Passes a message of interface identifier 4 to the framework's FID/PID dispatcher.
 *
 * @param ulIid       interface identifier
 * @param pMsg        the message
 * @param pLocalData  the instance's data
 * @retval 22  the identifier is not 4, or pLocalData is null
 * @return otherwise the dispatcher's result
 */
PM_API u32 PM_LibProcTulviIIDMsg(u32 ulIid, void *pMsg, void *pLocalData);

/**
 * FID init function: registers the library's PID and message task, lets the product register its
 * sub-lines, registers their PIDs and sets the trace switches off. Must run while the library's
 * instance is current. Failures show in the printout and the error records only.
 *
 * @param ulPhase  0 does the work; any other phase does nothing
 * @retval 0  always
 */
PM_API u32 PM_FidInitProc(u32 ulPhase);

/**
 * Sub-line side of the FID start-up: empties the registration list, calls the product's
 * configuration hook, registers the PIDs of the sub-lines, sets the trace switches off.
 *
 * @return 0, or the code of the step that failed
 */
PM_API u32 PM_LibFidInitProcForMC(void);

/**
 * Start-up function of the library's PID. After the library's own work of the phase it calls the
 * product's phase hook; work that fails ends the phase without it. Of phase 1 only the tables can
 * fail, whatever becomes of the subscriptions and services.
 *
 * @param enPhase  1: tables, subscriptions, services; 2: debug-window commands; 8: registration for
 *                 synchronisation; any other: the hook only
 * @return 0, the code of the step that failed, or the hook's result
 */
PM_API u32 PM_LibPidInitProc(u32 enPhase);

/**
 * Phase 1's allocations: the sub-attribute control block, then the booking table.
 *
 * @retval 0                done
 * @retval PM_ERR_MEM_OPER  no control block
 * @retval PM_ERR_MALLOC    no booking table; the control block stays
 * @retval PM_ERR_PARA      no current instance
 */
PM_API u32 PM_LibMallocInit(void);

PM_C_END

#endif
