// Numbers and bytes as people write them in commands and feeds.
#ifndef NODE_NUMERALS_HPP
#define NODE_NUMERALS_HPP

#include <optional>
#include <string>
#include <string_view>

#include "host/distribution.hpp"

namespace node {

// "17" or "0x11"; nothing when the text is anything else or needs more than 32 bits.
std::optional<u32> number_of(std::string_view text);
// Pairs of hexadecimal digits.
std::optional<host::Bytes> bytes_of_hex(std::string_view text);

std::string hex_of_bytes(host::ByteView bytes);

// "0x360011"
std::string hex(u32 value);

}  // namespace node

#endif
