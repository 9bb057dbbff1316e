/* The interface and the host's declarations are C11. */
#include "platform/platform.h"
#include "pm.h"
#include "pm_product.h"

/* A sanity check that the records have the same size to a C compiler. */
const unsigned long g_aulSizesInC[] = {
    sizeof(PtpDynPubData), sizeof(PtpStaticData), sizeof(PmSubAttr),
    sizeof(PmSubLineInfo), sizeof(PmProductMngt),
};
