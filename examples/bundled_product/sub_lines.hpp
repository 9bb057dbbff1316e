// The product's sub-lines: one per port type, each with callbacks that read a port's live state.
#ifndef BUNDLED_PRODUCT_SUB_LINES_HPP
#define BUNDLED_PRODUCT_SUB_LINES_HPP

#include "pm.h"

namespace product {

// Values of the port types, as the chassis files define them.
enum : u16 { kTypeUplink = 10, kTypeEthernet = 20, kTypePon = 30, kTypeOnt = 40 };

// Registers every sub-line, in the order of the port types' suffixes: the library pairs the records
// of the port types with the callbacks by position. Called from the configuration hook.
u32 register_sub_lines();

}  // namespace product

#endif
