/* Co-classes of port types, and the product's mapping between ONTs and co-indexes. */
#ifndef PM_CO_CLASS_H
#define PM_CO_CLASS_H

#include "pm_base.h"

PM_C_BEGIN

PM_API u32 PM_LibGetPtpCoClass(u16 usPtpType, u16 *pusCoClass);
PM_API u32 PM_LibGetCoClassFromPtpID(u16 usPtpID, u16 *pusCoClass);
PM_API u32 PM_LibGetCoIndexAndCotypeByFspOntid(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3,
                                               PmWord ulWord4, PmWord ulWord5);
PM_API u32 PM_LibGetFspOntidByCoIndexAndCotype(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3);

PM_C_END

#endif
