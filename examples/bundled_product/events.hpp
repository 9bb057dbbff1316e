// The product's bookings: what it does when something happens to a PTP.
#ifndef BUNDLED_PRODUCT_EVENTS_HPP
#define BUNDLED_PRODUCT_EVENTS_HPP

#include "pm.h"

namespace product {

// Component type under which this product prints.
enum : u32 { kComponentType = 0x700 };

// Books the functions below. The booking table exists from phase 1 on.
u32 book_functions();

}  // namespace product

#endif
