#include "node/soak_play.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cstring>

#include "node/soak_ops.hpp"

namespace soak {

namespace {

void *service_of_library(const char *name) {
  return dlsym(RTLD_DEFAULT, name);
}

void *service_of_model(const char *name) {
  if (std::strcmp(name, "PM_SapiBookCallBookedFuncs") == 0) {
    return reinterpret_cast<void *>(Model::PM_SapiBookCallBookedFuncs);
  }
  return reinterpret_cast<void *>(Model::PM_SapiNotifyDelObjectCfgResult);
}

template <class P>
Player player_of(void *(*service)(const char *)) {
  return {P::PM_LibRegisterInfo,
          P::PM_FidInitProc,
          P::PM_LibRegSubLineInfo,
          P::PM_LibRegPrimaryWordCallback,
          P::PM_LibUnRegPrimaryWordCallback,
          service};
}

// Not compared by their number: how records are copied and cleared is the library's own business,
// and what is recorded and printed is compared line by line.
bool counted(host::Fn fn) {
  switch (fn) {
    case host::Fn::ROOT_LibGetCurrentThis:
    case host::Fn::memset_s:
    case host::Fn::memcpy_s:
    case host::Fn::strncpy_s:
    case host::Fn::snprintf_truncated_s:
    case host::Fn::vsnprintf_truncated_s:
      return false;
    default:
      return true;
  }
}

// Not shown with their arguments: those that are not counted, those of which the arguments are said
// otherwise, a line of the source, and tables that the model does not have.
constexpr host::Fn kNotShown[] = {host::Fn::ZEL_MemAlloc_F,
                                  host::Fn::ROOT_LibGetCurrentThis,
                                  host::Fn::ROOT_LibCompLocalCreate,
                                  host::Fn::memset_s,
                                  host::Fn::memcpy_s,
                                  host::Fn::strncpy_s,
                                  host::Fn::snprintf_truncated_s,
                                  host::Fn::vsnprintf_truncated_s,
                                  host::Fn::ERR_InnerRecErr,
                                  host::Fn::xPrintf,
                                  host::Fn::KVT_Printf,
                                  host::Fn::DEV_LibPrintf,
                                  host::Fn::DBG_SetDbwinLineNo,
                                  host::Fn::DBG_InnerPrintReltime,
                                  host::Fn::DBG_InnerPrintInfo,
                                  host::Fn::DBG_PrintHelpInfoLevel0,
                                  host::Fn::DBG_PrintHelpInfo,
                                  host::Fn::ZEL_HASH_Find_Node,
                                  host::Fn::ZEL_HASH_Add_Node,
                                  host::Fn::ZEL_HASH_Delete_Node,
                                  host::Fn::DEV_LibRecLongTimeCostPrimaryWordLog};

// The same names on both stages for the functions that are handed to the host.
template <class P>
void prepare_journal(Stage &stage) {
  for (host::Node &node : stage.nodes) {
#define SOAK_NAME(id) node.journal.name(reinterpret_cast<const void *>(P::id), #id);
    SOAK_FUNCTIONS(SOAK_NAME)
#undef SOAK_NAME
    for (const host::Fn fn : kNotShown) {
      node.journal.set_kept(fn, false);
    }
    // Its arguments tell the width of a pointer.
    node.journal.set_kept(host::Fn::RPC_LibParaSet, !stage.portable);
  }
}

void play_step(Stage &stage, const Step &step, void (*run)(Stage &, const u32 *), bool with_calls) {
  current_stage = &stage;
  stage.said.clear();
  if (with_calls) {
    stage.watch_calls(true);
  }
  // What is written once for both stages enters the instance by the host; the others are calls.
  const bool call = step.op->with_library != step.op->with_model;
  if (!call) {
    run(stage, step.arguments.data());
  } else if (stage.instance() != nullptr) {
    const host::Scope scope(*stage.instance());
    run(stage, step.arguments.data());
  }
  if (with_calls) {
    stage.watch_calls(false);
  }
  stage.say_host_effects();
  if (stage.fault_steps != 0 && --stage.fault_steps == 0) {
    for (host::Node &node : stage.nodes) {
      node.faults.clear();
    }
  }
}

std::string counts_of(const Stage &stage, std::size_t side, host::Fn fn) {
  return std::string("calls of ") + host::name_of(fn) + " on side " + std::to_string(side) + ": " +
         std::to_string(stage.nodes[side].faults.calls(fn)) + "\n";
}

// Leaves out the lines that both texts begin and end with.
void keep_difference(std::string &a, std::string &b) {
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t same = 0;
  while (same < shorter && a[same] == b[same]) {
    ++same;
  }
  const std::size_t line = same == 0 ? std::string::npos : a.rfind('\n', same - 1);
  const std::size_t begin = line == std::string::npos ? 0 : line + 1;
  a.erase(0, begin);
  b.erase(0, begin);
  same = 0;
  while (same < std::min(a.size(), b.size()) && a[a.size() - 1 - same] == b[b.size() - 1 - same]) {
    ++same;
  }
  const std::size_t from = a.find('\n', a.size() - same);
  const std::size_t tail = from == std::string::npos ? 0 : a.size() - from - 1;
  a.resize(a.size() - tail);
  b.resize(b.size() - tail);
}

}  // namespace

Play::Play(bool portable)
    : library(player_of<Library>(service_of_library), portable),
      model(player_of<Model>(service_of_model), portable) {
  prepare_journal<Library>(library);
  prepare_journal<Model>(model);
}

std::optional<Mismatch> Play::compare() const {
  if (library.said != model.said) {
    Mismatch mismatch{0, model.said, library.said};
    keep_difference(mismatch.expected, mismatch.got);
    return mismatch;
  }
  for (std::size_t side = 0; side < Stage::kSides; ++side) {
    for (std::size_t i = 0; i < host::fn_count; ++i) {
      const auto fn = static_cast<host::Fn>(i);
      if (counted(fn) &&
          library.nodes[side].faults.calls(fn) != model.nodes[side].faults.calls(fn)) {
        return Mismatch{0, counts_of(model, side, fn), counts_of(library, side, fn)};
      }
    }
  }
  return std::nullopt;
}

std::optional<Mismatch> Play::step(const Step &step) {
  // Showing every call costs more than the rest: often enough will do, and always at a start.
  constexpr std::size_t often = 8;
  constexpr std::uint64_t prime = 0x100000001B3ULL;
  const bool with_calls = library.portable || step.op->weight < 2 || ++steps_ % often == 0;
  play_step(library, step, step.op->with_library, with_calls);
  play_step(model, step, step.op->with_model, with_calls);
  if (library.portable) {
    for (const char letter : library.said) {
      digest_ = (digest_ ^ static_cast<u8>(letter)) * prime;
    }
  }
  return compare();
}

}  // namespace soak
