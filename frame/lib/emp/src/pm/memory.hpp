// Blocks from the host's partitions.
#ifndef PM_MEMORY_HPP
#define PM_MEMORY_HPP

#include <cstring>

#include "platform/bounded.h"
#include "platform/zel.h"
#include "pm_base.h"

namespace pm {

// Clears a record. What the host's function refuses is cleared all the same: pointers are read from
// it.
inline void clear(void *record, size_t size) {
  if (memset_s(record, size, 0, size) != 0) {
    std::memset(record, 0, size);
  }
}

// A cleared block; null when the partition has no room. Callers store the pointer only after this,
// so no reader ever sees an uncleared block.
inline void *allocate(u32 partition, u32 size, const char *file, u32 line) {
  void *block = ZEL_MemAlloc_F(PM_COMP_TYPE, partition, size, file, line);
  if (block != nullptr) {
    clear(block, size);
  }
  return block;
}

}  // namespace pm

// A cleared block of a partition, allocated in the name of this place.
#define ALLOCATE(partition, size) pm::allocate((partition), (size), pm_source.name, PM_LINE)

#endif
