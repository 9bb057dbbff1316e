/** @file
 * What a product has to offer to be loaded into a node: one function, in a shared object. The
 * library does not know it, so pm.h leaves it out.
 *
 * The node loads each product before it starts its instances, asks it for its table of hooks and
 * registers that table process-wide; everything else happens from inside the hooks:
 *
 *  pfnZelCfg         FID start-up of an instance: register the sub-lines (PM_LibRegSubLineInfo), in
 *                    the order of the port types' suffixes
 *  pfnPhaseProc(1)   phase 1 of an instance, its tables are there: book functions
 *                    (PM_LibRegPrimaryWordCallback), register class functions
 *                    (PM_LibRegPtpClassFunc)
 *  pfnEventRegister  the first dynamic record of an instance has arrived
 *
 * The words of the two mapping hooks are a matter between product and caller. The console's
 * commands give pfnGetCoIndexByFspOntid the ONTs (PmFspOntid *), their number, and u32 pointers to
 * where co-indexes, co-types and the number of translated ONTs go; pfnGetFspOntidByCoIndex a
 * co-index, a co-type and where the ONT goes.
 *
 * Every hook runs with its instance current and may be called for several instances of the process.
 * With several products, each one's hook is called in the order in which they were loaded, and the
 * first failure is the answer.
 *
 * What a product prints with xPrintf under a component type other than the library's
 * (PM_COMP_TYPE) is kept as an event of the instance it ran in. */
#ifndef PM_PRODUCT_H
#define PM_PRODUCT_H

#include "pm.h"

PM_C_BEGIN

/**
 * The product's hooks, asked for once, before any instance is started.
 *
 * @return the table, valid as long as the product is loaded; null when the product cannot run here,
 *         which is then refused
 */
PM_API const PmProductMngt *pm_product_hooks(void);

PM_C_END

#endif
