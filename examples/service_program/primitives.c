/* A program in C that links the library: which primitives a service may raise as messages. It needs
 * no instance; a question about a PTP, which does, is refused. */
#include <stdio.h>

#include "pm.h"

int main(void) {
  u16 type;
  u32 mtu = 0;
  for (type = 0; type < PM_PRIM_NUM; ++type) {
    printf("primitive %u: %s, %s\n", (unsigned)type,
           PM_LibIsCheckPrimaryWord(type) == 1 ? "a check, raised by a call" : "a message",
           PM_LibIsPrimaryNeedReturn(type) == PM_OK ? "the first failure ends it"
                                                    : "everybody is called");
  }
  return PM_LibGetMtuFromPTP(17, &mtu) == PM_OK || mtu != 0;
}
