// A product that crashes where the environment says.
#include <cstdlib>
#include <cstring>

#include "pm.h"
#include "pm_product.h"

namespace {

__attribute__((no_sanitize("undefined"))) void crash_if(const char *place) {
  const char *wanted = std::getenv("CRASH_IN");
  if (wanted != nullptr && std::strcmp(wanted, place) == 0) {
    volatile int *volatile nowhere = nullptr;
    *nowhere = 1;
  }
}

u32 light_switched(u16, u16, void *) {
  return crash_if("booking"), PM_OK;
}

u32 phase(u32 number) {
  crash_if("hook");
  return number == 1 ? PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_UP, 20, light_switched) : PM_OK;
}

}  // namespace

const PmProductMngt *pm_product_hooks(void) {
  static PmProductMngt hooks{};
  hooks.pfnPhaseProc = phase;
  return std::getenv("CRASH_IN") != nullptr ? &hooks : nullptr;
}
