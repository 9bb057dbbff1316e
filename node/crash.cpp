// Inside the signal handler nothing is allocated, locked or thrown: what it needs to know about the
// loaded objects is collected while they are loaded.
#include "node/crash.hpp"

#include <dlfcn.h>
#include <link.h>
#include <ucontext.h>
#include <unistd.h>
#include <unwind.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <list>

#include "host/host.hpp"
#include "node/elf_functions.hpp"
#include "pm.h"

namespace node {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kOwnReport = false;
#else
constexpr bool kOwnReport = true;
#endif

enum class Owner { product, library, host, node };

struct Object {
  Owner owner{};
  std::string file;
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  std::vector<ElfFunction> functions;
};

// Addresses in it stay: a crash may come while the next product is being added.
std::list<Object> &objects() {
  static std::list<Object> all;
  return all;
}

const ProductStep *innermost_step = nullptr;
const char *script_file = nullptr;
unsigned script_line = 0;

struct Signal {
  int number;
  const char *name;
};
constexpr Signal kSignals[] = {{SIGSEGV, "segmentation fault"},
                               {SIGBUS, "bus error"},
                               {SIGFPE, "arithmetic error"},
                               {SIGILL, "illegal instruction"},
                               {SIGABRT, "aborted"}};

// The library's functions that call a product's, and what they call.
struct Caller {
  const char *function;
  const char *callback;
};
constexpr Caller kCallers[] = {
    {"PM_LibBookCallBookedFuncs", "a booked function"},
    {"PM_LibGetSubAttrFromPTP", "the sub-line callback pfnGetAttr"},
    {"PM_LibGetSubAttrFromPTPNEW", "the sub-line callback pfnGetAttrPriv"},
    {"PM_LibGetSubStatsFromPTP", "the sub-line callback pfnGetStats"},
    {"PM_LibGetSubActiveSpeedFromPTP", "the sub-line callback pfnGetActiveSpeed"},
    {"PM_LibGetPhyIndexFromPTP", "the class function pfnGetPhyIndex"},
    {"PM_LibPltEventRegister", "the hook pfnEventRegister"}};

// Is this function that one, or a part of it that the compiler gave a name of its own, such as
// "that.cold"?
bool is_part_of(const char *function, const char *whole) {
  const std::size_t length = std::strlen(whole);
  return std::strncmp(function, whole, length) == 0 &&
         (function[length] == '\0' || function[length] == '.');
}

const Object *object_at(std::uintptr_t address) {
  for (const Object &object : objects()) {
    if (address >= object.begin && address < object.end) {
      return &object;
    }
  }
  return nullptr;
}

// The address range of the object that holds an address.
void add_object(Owner owner, const std::string &file, std::uintptr_t inside) {
  struct Search {
    std::uintptr_t inside;
    std::uintptr_t load_address;
    Object object;
  } search{inside, 0, {owner, file, 0, 0, {}}};
  dl_iterate_phdr(
      [](dl_phdr_info *info, size_t, void *data) {
        auto &wanted = *static_cast<Search *>(data);
        std::uintptr_t begin = UINTPTR_MAX;
        std::uintptr_t end = 0;
        for (int i = 0; i < info->dlpi_phnum; ++i) {
          const auto &segment = info->dlpi_phdr[i];
          if (segment.p_type == PT_LOAD) {
            begin = std::min(begin, std::uintptr_t{info->dlpi_addr + segment.p_vaddr});
            end =
                std::max(end, std::uintptr_t{info->dlpi_addr + segment.p_vaddr + segment.p_memsz});
          }
        }
        if (wanted.inside < begin || wanted.inside >= end) {
          return 0;
        }
        wanted.load_address = info->dlpi_addr;
        wanted.object.begin = begin;
        wanted.object.end = end;
        return 1;
      },
      &search);
  if (owner == Owner::product || owner == Owner::library) {
    search.object.functions = functions_of(file, search.load_address);
  }
  objects().push_back(std::move(search.object));
}

// Walks from the crash outwards: to the first product, through its frames to the outermost one,
// which is what somebody called, and on to who that was.
struct Walk {
  const Object *product = nullptr;
  std::uintptr_t entered_at = 0;
  const Object *caller = nullptr;  // the last object passed outside the product
  const char *callback = nullptr;
};

_Unwind_Reason_Code visit(_Unwind_Context *context, void *data) {
  auto &walk = *static_cast<Walk *>(data);
  int before = 0;
  const _Unwind_Word counter = _Unwind_GetIPInfo(context, &before);
  // A return address may lie behind the end of the function that made the call.
  const std::uintptr_t address = counter - (before == 0 ? 1 : 0);
  const Object *object = object_at(address);
  if (object == nullptr) {
    return _URC_NO_REASON;
  }
  if (object->owner == Owner::product) {
    if (walk.caller != nullptr) {
      return _URC_END_OF_STACK;
    }
    walk.product = object;
    walk.entered_at = address;
    return _URC_NO_REASON;
  }
  if (walk.product == nullptr) {
    return _URC_NO_REASON;
  }
  walk.caller = object;
  if (object->owner != Owner::library) {
    return _URC_END_OF_STACK;
  }
  if (const char *function = function_at(object->functions, address)) {
    for (const Caller &known : kCallers) {
      if (is_part_of(function, known.function)) {
        walk.callback = known.callback;
        return _URC_END_OF_STACK;
      }
    }
  }
  return _URC_NO_REASON;
}

// Where nothing can be unwound, at least where it happened.
std::uintptr_t program_counter(const void *context) {
  const auto &registers = static_cast<const ucontext_t *>(context)->uc_mcontext;
#if defined(__x86_64__)
  return static_cast<std::uintptr_t>(registers.gregs[REG_RIP]);
#elif defined(__i386__)
  return static_cast<std::uintptr_t>(registers.gregs[REG_EIP]);
#elif defined(__arm__)
  return registers.arm_pc;
#else
  return static_cast<void>(registers), 0;
#endif
}

// One line, written at once.
class Line {
 public:
  Line &add(const char *text) {
    const std::size_t length = std::min(std::strlen(text), text_.size() - length_);
    std::copy_n(text, length, text_.begin() + static_cast<std::ptrdiff_t>(length_));
    length_ += length;
    return *this;
  }
  Line &add(unsigned number) {
    std::array<char, 11> digits{};
    std::size_t first = digits.size() - 1;
    do {
      digits[--first] = static_cast<char>('0' + number % 10);
      number /= 10;
    } while (number != 0);
    return add(&digits[first]);
  }
  void write_out() {
    length_ = std::min(length_, text_.size() - 1);
    text_[length_++] = '\n';
    static_cast<void>(!write(STDERR_FILENO, text_.data(), length_));
  }

 private:
  std::array<char, 2048> text_{};
  std::size_t length_ = 0;
};

const char *signal_name(int number) {
  for (const Signal &signal : kSignals) {
    if (signal.number == number) {
      return signal.name;
    }
  }
  return "signal";
}

Walk walk_from(const void *context) {
  Walk walk;
  _Unwind_Backtrace(visit, &walk);
  if (walk.product == nullptr) {
    const std::uintptr_t address = program_counter(context);
    const Object *object = object_at(address);
    if (object != nullptr && object->owner == Owner::product) {
      walk.product = object;
      walk.entered_at = address;
    }
  }
  if (walk.callback == nullptr && walk.caller != nullptr && walk.caller->owner == Owner::host) {
    walk.callback = "a function called by the host";
  }
  return walk;
}

void describe(Line &line, int number, const void *context) {
  const Walk walk = walk_from(context);
  const ProductStep *step = innermost_step;
  const char *file = walk.product != nullptr ? walk.product->file.c_str() : nullptr;
  const char *callback = walk.callback;
  // The node itself called the product, or nothing could be unwound.
  if (step != nullptr && callback == nullptr &&
      (walk.caller == nullptr || walk.caller->owner == Owner::node)) {
    file = step->file;
    callback = step->what;
  }
  line.add(file != nullptr ? file : "pmnode").add(": crashed (").add(signal_name(number)).add(")");
  if (file != nullptr && callback != nullptr) {
    line.add(" in ").add(callback);
  }
  const char *function =
      walk.product != nullptr ? function_at(walk.product->functions, walk.entered_at) : nullptr;
  if (function != nullptr) {
    line.add(callback != nullptr ? ", " : " in ").add(function);
  }
  if (script_file != nullptr) {
    line.add(", at ").add(script_file).add(":").add(script_line);
  }
}

volatile std::sig_atomic_t reports = 0;

void report(int number, siginfo_t *, void *context) {
  reports = reports + 1;
  if (reports == 1) {
    Line line;
    describe(line, number, context);
    line.write_out();
  } else if (reports == 2) {
    Line line;
    line.add("pmnode: crashed (").add(signal_name(number)).add("), and again on telling where");
    line.write_out();
  }
  static_cast<void>(std::signal(number, SIG_DFL));
  static_cast<void>(raise(number));
}

}  // namespace

void report_crashes() {
  if (!kOwnReport || !objects().empty()) {
    return;
  }
  Dl_info library{};
  const auto library_address = reinterpret_cast<std::uintptr_t>(&PM_LibRegisterInfo);
  if (dladdr(reinterpret_cast<const void *>(library_address), &library) != 0) {
    add_object(Owner::library, library.dli_fname, library_address);
  }
  add_object(Owner::host, "", reinterpret_cast<std::uintptr_t>(&DBG_xPrintfSwitch));
  add_object(Owner::node, "", reinterpret_cast<std::uintptr_t>(&report_crashes));
  // The unwinder does its own setting-up now, not in the handler.
  Walk walk;
  _Unwind_Backtrace(visit, &walk);

  // A product that has used up its stack has none left to report on.
  static std::array<char, std::size_t{64} * 1024> stack;
  stack_t alternate{};
  alternate.ss_sp = stack.data();
  alternate.ss_size = stack.size();
  sigaltstack(&alternate, nullptr);
  struct sigaction action {};
  action.sa_sigaction = report;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
  for (const Signal &signal : kSignals) {
    sigaction(signal.number, &action, nullptr);
  }
}

void report_crashes_in(const std::string &file, void *object) {
  const link_map *map = nullptr;
  if (kOwnReport && dlinfo(object, RTLD_DI_LINKMAP, &map) == 0 && map != nullptr) {
    add_object(Owner::product, file, reinterpret_cast<std::uintptr_t>(map->l_ld));
  }
}

ProductStep::ProductStep(const char *file_, const char *what_)
    : file(file_), what(what_), outer_(innermost_step) {
  innermost_step = this;
}

ProductStep::~ProductStep() {
  innermost_step = outer_;
}

ScriptInProgress::ScriptInProgress(const char *file) {
  script_file = file;
}

ScriptInProgress::~ScriptInProgress() {
  script_file = nullptr;
}

void ScriptInProgress::at_line(unsigned line) {
  script_line = line;
}

}  // namespace node
