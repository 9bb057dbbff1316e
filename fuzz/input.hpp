// What a fuzzer makes of its bytes: numbers, and blocks of exactly the size that the library is
// told, so that the sanitizer sees the first byte read behind one.
#ifndef FUZZ_INPUT_HPP
#define FUZZ_INPUT_HPP

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/base.h"

namespace fuzz {

[[noreturn]] inline void broken(const char *what, const char *file, int line) {
  std::fprintf(stderr, "%s:%d: broken: %s\n", file, line, what);
  std::abort();
}

class Input {
 public:
  Input(const u8 *bytes, std::size_t size) : bytes_(bytes), size_(size) {}

  bool empty() const { return size_ == 0; }
  // Zero where there is nothing left.
  template <class Number>
  Number number() {
    Number value{};
    const std::size_t count = std::min(size_, sizeof value);
    if (count != 0) {
      std::memcpy(&value, bytes_, count);
    }
    skip(count);
    return value;
  }
  // At most what is left.
  std::vector<u8> block(std::size_t size) {
    const std::size_t count = std::min(size, size_);
    std::vector<u8> block(bytes_, bytes_ + count);
    skip(count);
    return block;
  }
  // Filled up with zeros.
  std::vector<u8> whole_block(std::size_t size) {
    std::vector<u8> bytes = block(size);
    bytes.resize(size);
    return bytes;
  }
  template <class Record>
  Record record() {
    return number<Record>();
  }

 private:
  void skip(std::size_t count) {
    bytes_ += count;
    size_ -= count;
  }
  const u8 *bytes_;
  std::size_t size_;
};

// What a block starts with, which need not be aligned.
template <class Record>
Record record_in(const std::vector<u8> &block) {
  Record record{};
  if (!block.empty()) {
    std::memcpy(&record, block.data(), std::min(block.size(), sizeof record));
  }
  return record;
}

template <class Record>
bool same(const Record &a, const Record &b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace fuzz

// The run ends with a report when the condition does not hold.
#define HOLDS(condition) \
  ((condition) ? static_cast<void>(0) : fuzz::broken(#condition, __FILE__, __LINE__))

#endif
