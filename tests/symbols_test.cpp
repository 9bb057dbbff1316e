// The shared object's symbol table: what it exports and what it leaves to its host.
#include <elf.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

#if UINTPTR_MAX == UINT32_MAX
using Header = Elf32_Ehdr;
using Section = Elf32_Shdr;
using Symbol = Elf32_Sym;
#else
using Header = Elf64_Ehdr;
using Section = Elf64_Shdr;
using Symbol = Elf64_Sym;
#endif

std::string read_file(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

template <typename Record>
Record at(const std::string &image, size_t offset) {
  Record record;
  std::memcpy(&record, image.data() + offset, sizeof record);
  return record;
}

struct SymbolTable {
  std::set<std::string> defined;
  std::set<std::string> undefined;
};

// Global symbols of the dynamic symbol table.
SymbolTable dynamic_symbols(const std::string &image) {
  SymbolTable table;
  const auto header = at<Header>(image, 0);
  for (size_t i = 0; i < header.e_shnum; ++i) {
    const auto section = at<Section>(image, header.e_shoff + i * header.e_shentsize);
    if (section.sh_type != SHT_DYNSYM) {
      continue;
    }
    const auto names =
        at<Section>(image, header.e_shoff + section.sh_link * size_t{header.e_shentsize});
    for (size_t at_byte = 0; at_byte < section.sh_size; at_byte += sizeof(Symbol)) {
      const auto symbol = at<Symbol>(image, section.sh_offset + at_byte);
      const std::string name = image.data() + names.sh_offset + symbol.st_name;
      if (!name.empty()) {
        (symbol.st_shndx == SHN_UNDEF ? table.undefined : table.defined).insert(name);
      }
    }
  }
  return table;
}

// Names that the headers of a folder declare as functions of the given prefixes.
std::set<std::string> declared(const std::vector<std::string> &headers, const std::regex &pattern) {
  std::set<std::string> names;
  for (const std::string &header : headers) {
    const std::string text = read_file(std::string(PM_SOURCE_DIR) + "/" + header);
    EXPECT_FALSE(text.empty()) << header;
    for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it) {
      names.insert((*it)[1]);
    }
  }
  return names;
}

std::vector<std::string> included_by(const std::string &umbrella, const std::string &folder) {
  std::vector<std::string> headers;
  const std::string text = read_file(std::string(PM_SOURCE_DIR) + "/" + umbrella);
  const std::regex include("#include \"(?:platform/)?([a-z_]+\\.h)\"");
  for (std::sregex_iterator it(text.begin(), text.end(), include), end; it != end; ++it) {
    headers.push_back(folder + (*it)[1].str());
  }
  return headers;
}

TEST(Symbols, ExportsExactlyTheDeclaredInterface) {
  const SymbolTable symbols = dynamic_symbols(read_file(PM_LIBRARY_FILE));
  const std::set<std::string> interface =
      declared(included_by("include/pm.h", "include/"), std::regex("PM_API [^(]*?(P[Mm]_\\w+)\\("));
  EXPECT_GT(interface.size(), 100U);
  EXPECT_EQ(symbols.defined, interface);
}

TEST(Symbols, LeavesTheHostsFunctionsUndefined) {
  const SymbolTable symbols = dynamic_symbols(read_file(PM_LIBRARY_FILE));
  const std::set<std::string> host =
      declared(included_by("platform/platform.h", "platform/"),
               std::regex("\\b((?:[A-Z]+_\\w+|xPrintf|v?s\\w+_s|mem\\w+_s|str\\w+_s))\\("));
  const std::regex host_prefix("(ROOT|ZEL|DMS|DDM|SYN|RPC|PUB|DEV|PTOPO|CAP|ATTR|DBG|ERR|KVT)_.*");
  size_t used = 0;
  for (const std::string &name : symbols.undefined) {
    if (std::regex_match(name, host_prefix)) {
      EXPECT_TRUE(host.count(name)) << name << " is not declared under platform/";
      ++used;
    }
  }
  EXPECT_GT(used, 50U);
}

}  // namespace
