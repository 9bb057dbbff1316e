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

void play_step(Stage &stage, const Step &step, void (*run)(Stage &, const u32 *)) {
  current_stage = &stage;
  stage.said.clear();
  // What is written once for both stages enters the instance by the host; the others are calls.
  const bool call = step.op->with_library != step.op->with_model;
  if (!call) {
    run(stage, step.arguments.data());
  } else if (stage.instance() != nullptr) {
    const host::Scope scope(*stage.instance());
    run(stage, step.arguments.data());
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

Play::Play()
    : library(player_of<Library>(service_of_library)), model(player_of<Model>(service_of_model)) {}

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
  play_step(library, step, step.op->with_library);
  play_step(model, step, step.op->with_model);
  return compare();
}

}  // namespace soak
