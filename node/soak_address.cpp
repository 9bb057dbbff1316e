#include "node/soak_address.hpp"

#include <cctype>
#include <cstring>
#include <map>

#include "node/soak_ops.hpp"

namespace soak {

namespace {

std::map<u32, u32> known_addresses() {
  std::map<u32, u32> known;
  const auto enter = [&known](PmWord address) {
    known.emplace(static_cast<u32>(address), static_cast<u32>(known.size() + 1));
  };
  const auto enter_table = [&enter](const auto &table) {
    PmWord words[sizeof table / sizeof(PmWord)];
    std::memcpy(words, &table, sizeof words);
    for (const PmWord word : words) {
      enter(word);
    }
  };
  for (u32 number = 1; number <= Product::kFunctions; ++number) {
    enter(reinterpret_cast<PmWord>(booked_function(number)));
  }
  constexpr u32 all = 0xFFFF;
  for (u32 variant = 0; variant < Product::kVariants; ++variant) {
    enter_table(callbacks_of(variant, all));
    enter_table(class_functions(variant));
  }
  enter_table(hooks_of(all));
  enter(completion_function());
  const PmSubLineInfo info = sub_line_of(0, 0, 0, all);
  enter(reinterpret_cast<PmWord>(info.pfnInitFunc));
  enter(reinterpret_cast<PmWord>(info.pfnMainProc));
  for (const Room &room : rooms) {
    enter(reinterpret_cast<PmWord>(room.bytes));
  }
  known.erase(0);
  return known;
}

}  // namespace

u32 address_number(u32 low_word) {
  static const std::map<u32, u32> known = known_addresses();
  const auto found = known.find(low_word);
  return found == known.end() ? 0 : found->second;
}

std::string with_numbers(const std::string &text) {
  constexpr std::size_t shortest = 5;  // no address has fewer digits
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    if (text.compare(at, 4, "0x0x") == 0) {
      result += "0x";
      at += 2;
    }
    const bool hex = text.compare(at, 2, "0x") == 0;
    std::size_t end = at + (hex ? 2 : 0);
    while (end < text.size() && (hex ? std::isxdigit(static_cast<u8>(text[end])) != 0
                                     : std::isdigit(static_cast<u8>(text[end])) != 0)) {
      ++end;
    }
    if (end - at < shortest) {
      end = std::max(end, at + 1);
      result.append(text, at, end - at);
    } else {
      const auto value =
          std::stoull(text.substr(at, std::min<std::size_t>(end - at, 18)), nullptr, hex ? 16 : 10);
      const u32 number = address_number(static_cast<u32>(value));
      result += number == 0 ? text.substr(at, end - at) : "&" + std::to_string(number);
    }
    at = end;
  }
  return result;
}

}  // namespace soak
