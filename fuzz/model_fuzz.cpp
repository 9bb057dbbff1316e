// Lives of two boards: the bytes choose a start, then calls and their arguments, one after the
// other. The library answers, records, prints and asks of its host what the model does.
#include "fuzz/input.hpp"
#include "node/soak_model.hpp"
#include "node/soak_play.hpp"

namespace {

// Beyond it a life only takes longer.
constexpr std::size_t most_steps = 400;
constexpr std::pair<const char *, u32> end_of_life[] = {
    {"side", 0}, {"side", 0}, {"destruct", 0}, {"side", 1}, {"destruct", 0}};

class Life {
 public:
  // The product's hooks outlive an instance: without this they would be those of the last input.
  explicit Life(u32 hooks) {
    const PmProductMngt table = soak::hooks_of(hooks);
    register_hooks(play_.library, PM_LibRegProductMngtFuncProc, table);
    register_hooks(play_.model, soak::Model::PM_LibRegProductMngtFuncProc, table);
  }
  void live(const soak::Step &step) {
    lived_.push_back(step);
    const auto mismatch = play_.step(step);
    if (!mismatch) {
      return;
    }
    for (const soak::Step &each : lived_) {
      std::fprintf(stderr, "%s\n", soak::text_of(each).c_str());
    }
    std::fprintf(stderr, "expected:\n%sgot:\n%s", mismatch->expected.c_str(),
                 mismatch->got.c_str());
    fuzz::broken("the library and the model agree", __FILE__, __LINE__);
  }

 private:
  static void register_hooks(soak::Stage &stage, decltype(&PM_LibRegProductMngtFuncProc) function,
                             const PmProductMngt &table) {
    soak::current_stage = &stage;
    const host::Scope scope(stage.node());
    HOLDS(function(&table) == PM_OK);
  }

  soak::Play play_;
  soak::Script lived_;
};

// Every byte stands for one value that its kind of argument may have.
soak::Step step_from(fuzz::Input &input) {
  const std::size_t actions = soak::actions().size();
  const std::size_t number = input.number<u8>() % (actions + soak::questions().size());
  soak::Step step;
  step.op = number < actions ? &soak::actions()[number] : &soak::questions()[number - actions];
  for (std::size_t i = 0; i < step.op->arguments.size(); ++i) {
    soak::Random random(input.number<u8>());
    step.arguments[i] = step.op->arguments[i].draw(random);
  }
  return step;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  fuzz::Input input(bytes, size);
  {
    Life life(input.number<u16>());
    for (const soak::Step &step : soak::life_of(input.number<u16>(), 0)) {
      life.live(step);
    }
    for (std::size_t steps = 0; steps < most_steps && !input.empty(); ++steps) {
      life.live(step_from(input));
    }
    // An armed fault is over after two steps.
    for (const auto &[name, value] : end_of_life) {
      life.live({&soak::op_named(name), {value}});
    }
  }
  soak::Model::forget_boards();
  return 0;
}
