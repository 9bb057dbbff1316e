#include "node/product.hpp"

#include <dlfcn.h>
#include <elf.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "node/crash.hpp"
#include "node/document.hpp"

namespace node {
namespace {

constexpr const char *kEntryPoint = "pm_product_hooks";

// The table has no place for data of its own, so the combined hooks find the products here.
std::vector<Product> &loaded_products() {
  static std::vector<Product> products;
  return products;
}

constexpr const char *kHookNames[] = {"the hook pfnPhaseProc",
                                      "the hook pfnReserved1",
                                      "the hook pfnReserved2",
                                      "the hook pfnGetCoIndexByFspOntid",
                                      "the hook pfnGetFspOntidByCoIndex",
                                      "the hook pfnZelCfg",
                                      "the hook pfnEventRegister",
                                      "the hook pfnOperCheckRegister",
                                      "the hook pfnRegisterPtpCapAttrInitFunc",
                                      "the hook pfnSetInstanceDynAttributeDefaultValue",
                                      "the hook pfnReserved10"};
static_assert(sizeof(PmProductMngt) / sizeof(void (*)()) == std::size(kHookNames));

template <class Slot>
const char *name_of_hook(const PmProductMngt &hooks, const Slot &slot) {
  const auto offset =
      reinterpret_cast<const char *>(&slot) - reinterpret_cast<const char *>(&hooks);
  return kHookNames[static_cast<std::size_t>(offset) / sizeof slot];
}

template <auto slot, class... Arguments>
u32 call_each(Arguments... arguments) {
  for (const Product &product : loaded_products()) {
    const auto hook = product.hooks->*slot;
    if (hook == nullptr) {
      continue;
    }
    const ProductStep step(product.file.c_str(),
                           name_of_hook(*product.hooks, product.hooks->*slot));
    if (const u32 code = hook(arguments...)) {
      return code;
    }
  }
  return 0;
}

template <auto slot, class... Arguments>
void combine(u32 (*PmProductMngt::*)(Arguments...), PmProductMngt &table) {
  const std::vector<Product> &all = loaded_products();
  const bool filled = std::any_of(all.begin(), all.end(), [](const Product &product) {
    return product.hooks->*slot != nullptr;
  });
  table.*slot = filled ? &call_each<slot, Arguments...> : nullptr;
}

template <auto... slots>
PmProductMngt combine_slots() {
  PmProductMngt table{};
  (combine<slots>(slots, table), ...);
  return table;
}

#if defined(__x86_64__)
constexpr unsigned kOwnMachine = EM_X86_64;
#elif defined(__i386__)
constexpr unsigned kOwnMachine = EM_386;
#elif defined(__arm__)
constexpr unsigned kOwnMachine = EM_ARM;
#else
constexpr unsigned kOwnMachine = EM_NONE;  // left to the loader
#endif

// The loader's own complaint about a foreign file names neither width nor machine.
void refuse_foreign_file(const std::string &file) {
  std::ifstream stream = open_input(file, "a product's shared object");
  // Up to the machine both widths agree.
  unsigned char head[offsetof(Elf32_Ehdr, e_version)] = {};
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
  const unsigned machine = head[offsetof(Elf32_Ehdr, e_machine)] |
                           unsigned{head[offsetof(Elf32_Ehdr, e_machine) + 1]} << 8;
  if (kOwnMachine != EM_NONE && machine != kOwnMachine) {
    throw InputError(file + ": is built for another processor (ELF machine " +
                     std::to_string(machine) + "); expected " + std::to_string(kOwnMachine));
  }
}

}  // namespace

Product load_product(const std::string &file) {
  refuse_foreign_file(file);
  // A name without a slash would be looked for in the system's folders.
  const std::string path = file.find('/') == std::string::npos ? "./" + file : file;
  const auto load = [&] {
    const ProductStep step(file.c_str(), "what runs while it is loaded");
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  };
  void *object = load();
  if (object == nullptr) {
    const std::string reason = dlerror();
    throw InputError(file + ": cannot be loaded (" + reason + "); expected a product");
  }
  auto *entry = reinterpret_cast<const PmProductMngt *(*)()>(dlsym(object, kEntryPoint));
  if (entry == nullptr) {
    dlclose(object);
    throw InputError(file + ": has no entry point; expected a function " + kEntryPoint);
  }
  report_crashes_in(file, object);
  const ProductStep step(file.c_str(), "the entry point");
  const PmProductMngt *hooks = entry();
  if (hooks == nullptr) {
    dlclose(object);
    throw InputError(file + ": " + kEntryPoint + " answered null; expected a table of hooks");
  }
  return {file, hooks};
}

PmProductMngt combined_hooks(const std::vector<Product> &products) {
  loaded_products() = products;
  return combine_slots<&PmProductMngt::pfnPhaseProc, &PmProductMngt::pfnGetCoIndexByFspOntid,
                       &PmProductMngt::pfnGetFspOntidByCoIndex, &PmProductMngt::pfnZelCfg,
                       &PmProductMngt::pfnEventRegister, &PmProductMngt::pfnOperCheckRegister,
                       &PmProductMngt::pfnRegisterPtpCapAttrInitFunc,
                       &PmProductMngt::pfnSetInstanceDynAttributeDefaultValue>();
}

}  // namespace node
