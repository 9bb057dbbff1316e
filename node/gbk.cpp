#include "node/gbk.hpp"

#include <cstdint>

namespace node {
namespace {

using Byte = std::uint8_t;

// GBK has full-width ASCII in one row, in ASCII's order but for two signs of money and measure.
constexpr Byte kFullWidthRow = 0xA3;

bool is_full_width(std::string_view bytes) {
  if (bytes.size() < 2 || static_cast<Byte>(bytes[0]) != kFullWidthRow) {
    return false;
  }
  const auto cell = static_cast<Byte>(bytes[1]);
  return cell > 0xA0 && cell < 0xFE && cell != 0xA4;
}

// U+FF00 and the cell's distance, in three bytes.
std::string full_width(char cell) {
  const unsigned code = 0xFF00U + static_cast<Byte>(cell) - 0xA0U;
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
          static_cast<char>(0x80 | (code & 0x3F))};
}

// Length of the UTF-8 character of several bytes that the text begins with; 0 if it does not.
std::size_t utf8_length(std::string_view bytes) {
  const auto first = static_cast<Byte>(bytes[0]);
  const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  if (length > bytes.size()) {
    return 0;
  }
  for (std::size_t position = 1; position < length; ++position) {
    if ((static_cast<Byte>(bytes[position]) & 0xC0) != 0x80) {
      return 0;
    }
  }
  return length;
}

std::string escaped(char byte) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const auto value = static_cast<Byte>(byte);
  return {'\\', 'x', kDigits[value >> 4], kDigits[value & 0xF]};
}

bool is_plain(char byte) {
  return (byte >= ' ' && byte <= '~') || byte == '\t';
}

}  // namespace

std::string as_utf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    std::size_t taken = 1;
    if (is_plain(bytes[0])) {
      text += bytes[0];
    } else if (is_full_width(bytes)) {
      text += full_width(bytes[1]);
      taken = 2;
    } else if (const std::size_t length = utf8_length(bytes)) {
      text += bytes.substr(0, length);
      taken = length;
    } else {
      text += escaped(bytes[0]);
    }
    bytes.remove_prefix(taken);
  }
  return text;
}

}  // namespace node
