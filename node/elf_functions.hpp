// The functions of a loaded shared object by address, from the symbol table of its file.
#ifndef NODE_ELF_FUNCTIONS_HPP
#define NODE_ELF_FUNCTIONS_HPP

#include <cstdint>
#include <string>
#include <vector>

namespace node {

struct ElfFunction {
  std::uintptr_t begin = 0;
  std::uintptr_t size = 0;
  std::string name;  // demangled
};

// By address. Without a full symbol table only what the object exports; nothing if the file cannot
// be read.
std::vector<ElfFunction> functions_of(const std::string &file, std::uintptr_t load_address);

// The name of the function that holds the address; null if none does. Reads memory only.
const char *function_at(const std::vector<ElfFunction> &functions, std::uintptr_t address);

}  // namespace node

#endif
