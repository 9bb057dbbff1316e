#include "node/elf_functions.hpp"

#include <cxxabi.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

namespace node {
namespace {

// A record of the file; zeros where the file is too short for it.
template <typename Record>
Record at(const std::string &image, std::size_t offset) {
  Record record{};
  if (offset <= image.size() && image.size() - offset >= sizeof record) {
    std::memcpy(&record, image.data() + offset, sizeof record);
  }
  return record;
}

std::string demangled(const char *name) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
  return status == 0 && text ? text.get() : name;
}

}  // namespace

std::vector<ElfFunction> functions_of(const std::string &file, std::uintptr_t load_address) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  const std::string image = content.str();
  const auto header = at<ElfW(Ehdr)>(image, 0);
  const auto section_at = [&](std::size_t index) {
    return at<ElfW(Shdr)>(image, header.e_shoff + index * header.e_shentsize);
  };
  ElfW(Shdr) table{};
  for (std::size_t i = 0; i < header.e_shnum && table.sh_type != SHT_SYMTAB; ++i) {
    const auto section = section_at(i);
    if (section.sh_type == SHT_SYMTAB || section.sh_type == SHT_DYNSYM) {
      table = section;
    }
  }
  const std::size_t names = section_at(table.sh_link).sh_offset;
  std::vector<ElfFunction> functions;
  for (std::size_t offset = 0; offset < table.sh_size; offset += sizeof(ElfW(Sym))) {
    const auto symbol = at<ElfW(Sym)>(image, table.sh_offset + offset);
    const std::size_t name = names + symbol.st_name;
    if ((symbol.st_info & 0xF) == STT_FUNC && symbol.st_shndx != SHN_UNDEF && name < image.size()) {
      functions.push_back(
          {load_address + symbol.st_value, symbol.st_size, demangled(image.data() + name)});
    }
  }
  std::sort(functions.begin(), functions.end(),
            [](const ElfFunction &a, const ElfFunction &b) { return a.begin < b.begin; });
  return functions;
}

const char *function_at(const std::vector<ElfFunction> &functions, std::uintptr_t address) {
  const auto after = std::upper_bound(
      functions.begin(), functions.end(), address,
      [](std::uintptr_t value, const ElfFunction &function) { return value < function.begin; });
  if (after == functions.begin()) {
    return nullptr;
  }
  const ElfFunction &function = *std::prev(after);
  return address - function.begin < function.size ? function.name.c_str() : nullptr;
}

}  // namespace node
