#include "node/numerals.hpp"

#include <charconv>
#include <iterator>

namespace node {
namespace {

template <class Number>
std::optional<Number> parsed(std::string_view digits, int base) {
  Number number{};
  const char *end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

std::optional<u32> number_of(std::string_view text) {
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  return parsed<u32>(text.substr(hex ? 2 : 0), hex ? 16 : 10);
}

std::optional<host::Bytes> bytes_of_hex(std::string_view text) {
  if (text.size() % 2 != 0) {
    return std::nullopt;
  }
  host::Bytes bytes;
  for (; !text.empty(); text.remove_prefix(2)) {
    const auto byte = parsed<u8>(text.substr(0, 2), 16);
    if (!byte) {
      return std::nullopt;
    }
    bytes.push_back(*byte);
  }
  return bytes;
}

std::string hex_of_bytes(host::ByteView bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const u8 byte : bytes) {
    text += {kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
  return text;
}

std::string hex(u32 value) {
  char digits[8];
  char *end = std::to_chars(std::begin(digits), std::end(digits), value, 16).ptr;
  return "0x" + std::string(std::begin(digits), end);
}

}  // namespace node
