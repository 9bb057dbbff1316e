#include "node/product.hpp"

#include <dlfcn.h>
#include <elf.h>

#include <algorithm>
#include <fstream>

#include "node/document.hpp"

namespace node {
namespace {

constexpr const char *kEntryPoint = "pm_product_hooks";

// The table has no place for data of its own, so the combined hooks find the products here.
std::vector<const PmProductMngt *> &loaded_hooks() {
  static std::vector<const PmProductMngt *> hooks;
  return hooks;
}

template <auto slot, class... Arguments>
u32 call_each(Arguments... arguments) {
  for (const PmProductMngt *hooks : loaded_hooks()) {
    if (hooks->*slot == nullptr) {
      continue;
    }
    if (const u32 code = (hooks->*slot)(arguments...)) {
      return code;
    }
  }
  return 0;
}

template <auto slot, class... Arguments>
void combine(u32 (*PmProductMngt::*)(Arguments...), PmProductMngt &table) {
  const std::vector<const PmProductMngt *> &all = loaded_hooks();
  const bool filled = std::any_of(
      all.begin(), all.end(), [](const PmProductMngt *hooks) { return hooks->*slot != nullptr; });
  table.*slot = filled ? &call_each<slot, Arguments...> : nullptr;
}

template <auto... slots>
PmProductMngt combine_slots() {
  PmProductMngt table{};
  (combine<slots>(slots, table), ...);
  return table;
}

// The loader's own complaint about a foreign file names neither width nor machine.
void refuse_foreign_file(const std::string &file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw InputError(file + ": cannot be opened; expected a product's shared object");
  }
  unsigned char head[EI_NIDENT] = {};
  stream.read(reinterpret_cast<char *>(head), sizeof head);
  constexpr unsigned char kMagic[] = {ELFMAG0, ELFMAG1, ELFMAG2, ELFMAG3};
  if (!stream || !std::equal(std::begin(kMagic), std::end(kMagic), head)) {
    throw InputError(file + ": is no shared object; expected a product");
  }
  constexpr unsigned char kOwnClass = sizeof(void *) == 4 ? ELFCLASS32 : ELFCLASS64;
  if (head[EI_CLASS] != kOwnClass) {
    throw InputError(file + ": is built for " + (head[EI_CLASS] == ELFCLASS64 ? "64" : "32") +
                     " bits; expected " + std::to_string(sizeof(void *) * 8));
  }
}

}  // namespace

Product load_product(const std::string &file) {
  refuse_foreign_file(file);
  // A name without a slash would be looked for in the system's folders.
  const std::string path = file.find('/') == std::string::npos ? "./" + file : file;
  void *object = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (object == nullptr) {
    const std::string reason = dlerror();
    throw InputError(file + ": cannot be loaded (" + reason + "); expected a product");
  }
  auto *entry = reinterpret_cast<const PmProductMngt *(*)()>(dlsym(object, kEntryPoint));
  if (entry == nullptr) {
    dlclose(object);
    throw InputError(file + ": has no entry point; expected a function " + kEntryPoint);
  }
  const PmProductMngt *hooks = entry();
  if (hooks == nullptr) {
    dlclose(object);
    throw InputError(file + ": " + kEntryPoint + " answered null; expected a table of hooks");
  }
  return {file, hooks};
}

PmProductMngt combined_hooks(const std::vector<Product> &products) {
  loaded_hooks().clear();
  for (const Product &product : products) {
    loaded_hooks().push_back(product.hooks);
  }
  return combine_slots<&PmProductMngt::pfnPhaseProc, &PmProductMngt::pfnGetCoIndexByFspOntid,
                       &PmProductMngt::pfnGetFspOntidByCoIndex, &PmProductMngt::pfnZelCfg,
                       &PmProductMngt::pfnEventRegister, &PmProductMngt::pfnOperCheckRegister,
                       &PmProductMngt::pfnRegisterPtpCapAttrInitFunc,
                       &PmProductMngt::pfnSetInstanceDynAttributeDefaultValue>();
}

}  // namespace node
