// Addresses that steps show: the product's functions and the rooms of arguments. They stand in what
// is said by number, so that a life says the same in every process and on every machine.
#ifndef NODE_SOAK_ADDRESS_HPP
#define NODE_SOAK_ADDRESS_HPP

#include <string>

#include "platform/base.h"

namespace soak {

// 0 for what is none of them.
u32 address_number(u32 low_word);
// The text with "&N" for every address in it.
std::string with_numbers(const std::string &text);

}  // namespace soak

#endif
