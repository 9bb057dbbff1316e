// Bounded memory and strings. What the contract leaves open is settled so:
//  - Any null pointer fails, also when nothing is to be copied or set.
//  - A copy whose source and destination overlap fails. Where exactly the same bytes are meant
//    nothing would change, and it fails all the same.
//  - A destination of more than half the address space is a negative number gone astray: it fails.
//  - A failed memset_s or memcpy_s writes nothing. A failed strncpy_s leaves an empty string where
//    there is a destination of at least one byte, because it always terminates.
//  - The printing functions leave an empty string when they fail and there is a destination; their
//    arguments must not lie in the destination.
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "host/call.hpp"

using namespace host;

namespace {

constexpr std::size_t largest_destination = SIZE_MAX / 2;

bool usable(const void *destination, std::size_t room) {
  return destination != nullptr && room != 0 && room <= largest_destination;
}

// As numbers: comparing pointers into different objects says nothing.
bool overlap(const void *a, std::size_t a_size, const void *b, std::size_t b_size) {
  const auto a_start = reinterpret_cast<std::uintptr_t>(a);
  const auto b_start = reinterpret_cast<std::uintptr_t>(b);
  return a_start < b_start ? b_start - a_start < a_size : a_start - b_start < b_size;
}

int set_bytes(void *destination, std::size_t room, int value, std::size_t count) {
  if (!usable(destination, room) || count > room) {
    return 1;
  }
  std::memset(destination, value, count);
  return 0;
}

int copy_bytes(void *destination, std::size_t room, const void *source, std::size_t count) {
  if (!usable(destination, room) || source == nullptr || count > room) {
    return 1;
  }
  if (count != 0 && overlap(destination, count, source, count)) {
    return 1;
  }
  std::memcpy(destination, source, count);
  return 0;
}

int copy_text(char *destination, std::size_t room, const char *source, std::size_t count) {
  if (!usable(destination, room)) {
    return 1;
  }
  if (source == nullptr) {
    destination[0] = '\0';
    return 1;
  }
  // No more than is needed to tell that the text is too long is looked at.
  const std::size_t length = strnlen(source, count < room ? count : room);
  if (length >= room || overlap(destination, length + 1, source, length)) {
    destination[0] = '\0';
    return 1;
  }
  std::memcpy(destination, source, length);
  destination[length] = '\0';
  return 0;
}

PM_PRINTF(3, 0)
int print_text(char *destination, std::size_t room, const char *format, va_list arguments) {
  if (!usable(destination, room)) {
    return -1;
  }
  const int length = format == nullptr ? -1 : std::vsnprintf(destination, room, format, arguments);
  if (length < 0) {
    destination[0] = '\0';
    return -1;
  }
  return static_cast<std::size_t>(length) < room ? length : static_cast<int>(room - 1);
}

}  // namespace

int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount) {
  return call_anywhere<Fn::memset_s>([&] { return set_bytes(pDest, ulDestMax, iValue, ulCount); },
                                     pDest, ulDestMax, iValue, ulCount);
}

int memcpy_s(void *pDest, size_t ulDestMax, const void *pSrc, size_t ulCount) {
  return call_anywhere<Fn::memcpy_s>([&] { return copy_bytes(pDest, ulDestMax, pSrc, ulCount); },
                                     pDest, ulDestMax, ulCount);
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount) {
  return call_anywhere<Fn::strncpy_s>([&] { return copy_text(pcDest, ulDestMax, pcSrc, ulCount); },
                                      ulDestMax, ulCount);
}

int snprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const int length = call_anywhere<Fn::snprintf_truncated_s>(
      [&] { return print_text(pcDest, ulDestMax, pcFormat, arguments); }, ulDestMax, pcFormat);
  va_end(arguments);
  return length;
}

int vsnprintf_truncated_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list args) {
  va_list arguments;
  va_copy(arguments, args);
  const int length = call_anywhere<Fn::vsnprintf_truncated_s>(
      [&] { return print_text(pcDest, ulDestMax, pcFormat, arguments); }, ulDestMax, pcFormat);
  va_end(arguments);
  return length;
}
