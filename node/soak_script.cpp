#include "node/soak_script.hpp"

#include <algorithm>
#include <istream>
#include <sstream>
#include <stdexcept>

#include "node/numerals.hpp"
#include "node/soak_actions.hpp"

namespace soak {

namespace {

// Questions after every action, and actions between two starts of a side.
constexpr u32 kQuestions = 4;
constexpr u32 kRestart = 900;

const Op &weighted(const std::vector<Op> &ops, Random &random) {
  u32 total = 0;
  for (const Op &op : ops) {
    total += op.weight;
  }
  u32 at = random.below(total);
  for (const Op &op : ops) {
    if (at < op.weight) {
      return op;
    }
    at -= op.weight;
  }
  return ops.front();
}

Step drawn(const Op &op, Random &random) {
  Step step{&op, {}};
  for (std::size_t i = 0; i < op.arguments.size(); ++i) {
    step.arguments[i] = op.arguments[i].draw(random);
  }
  return step;
}

Step told(const char *name, std::initializer_list<u32> arguments) {
  Step step{&op_named(name), {}};
  std::copy(arguments.begin(), arguments.end(), step.arguments.begin());
  return step;
}

class Author {
 public:
  Author(std::uint64_t seed, bool portable) : random_(seed), portable_(portable) {}

  Script life(u32 actions) {
    for (const u32 side : {0U, 1U}) {
      write(told("side", {side}));
      write(told("enrol", {}));
    }
    write(told("general-spec", {5, 6, 32, 99}));
    write(told("numbers-spec", {30, 0, 20, random_.one_in(3) ? 1'100U : 64U, 10}));
    write(told("types-spec", {random_.one_in(6) ? 600U : 5U, 40}));
    for (const u32 side : {1U, 0U}) {
      write(told("side", {side}));
      birth();
    }
    write(told("pair", {}));
    for (u32 action = 0; action < actions; ++action) {
      act();
      if (random_.one_in(kRestart)) {
        restart();
      }
    }
    return std::move(script_);
  }

 private:
  void write(Step step) {
    if (portable_ && std::string_view(step.op->name) == "fault" &&
        draw::faulty_function(step.arguments[0]) == host::Fn::ZEL_MemAlloc_F) {
      ++step.arguments[0];
    }
    script_.push_back(step);
  }

  void ask(u32 count) {
    for (u32 i = 0; i < count; ++i) {
      write(drawn(weighted(questions(), random_), random_));
    }
  }

  void act() {
    write(drawn(weighted(actions(), random_), random_));
    // A fault is for the very next step: an action or a question.
    if (std::string_view(script_.back().op->name) == "fault") {
      const host::Fn faulty = draw::faulty_function(script_.back().arguments[0]);
      const char *caller = random_.one_in(3) ? nullptr : draw::caller_of(faulty, random_);
      if (caller != nullptr) {
        write(drawn(op_named(caller), random_));
      } else if (random_.one_in(2)) {
        write(drawn(weighted(actions(), random_), random_));
      }
    }
    ask(kQuestions);
  }

  void sometimes_act() {
    if (random_.one_in(3)) {
      act();
    }
  }

  void sometimes_fail(std::initializer_list<host::Fn> functions) {
    if (random_.one_in(3)) {
      const u32 choice = random_.below(static_cast<u32>(functions.size()));
      write(told("fault", {draw::number_of(functions.begin()[choice]), 1 + random_.below(3), 0}));
    }
  }

  // From construction to the end of the batches, with steps between now and then.
  void birth() {
    write(told("hooks", {random_.one_in(4) ? random_.next() & 0xFFFF : 0xFFFFU, 0, 1}));
    write(told("plan-sub-lines", {random_.below(4), random_.below(4), 101, 0xF}));
    using host::Fn;
    sometimes_fail({Fn::ROOT_LibCompLocalCreate, Fn::ROOT_LibCompHandleInit});
    write(told("construct", {random_.next()}));
    sometimes_act();
    sometimes_fail({Fn::KVT_RegisterPIDInfo, Fn::KVT_RegisterMsgTaskPrio});
    write(told("start-fid", {0}));
    sometimes_act();
    sometimes_fail({Fn::ZEL_MemAlloc_F, Fn::DDM_LibSubscribe, Fn::ROOT_LibSrvmPubishSapi});
    write(told("start-phase", {1}));
    sometimes_act();
    if (random_.one_in(3)) {
      write(told("start-phase", {1}));
    }
    write(told("start-phase", {2}));
    sometimes_fail({Fn::SYN_LibRegisterModuleDataSynInfo, Fn::SYN_LibRegisterSynDataBlockFix,
                    Fn::SYN_LibRegisterModuleDataMode, Fn::SYN_LibRegisterSetBitTableFun});
    write(told("start-phase", {8}));
    sometimes_act();
    if (random_.one_in(2)) {
      // The store comes into being with its first record, or with the next one.
      sometimes_fail({Fn::ZEL_MemAlloc_F});
      write(told("PM_LibMallocForDynCB", {}));
      act();
    }
    write(told("deliver", {}));
    for (u32 suffix = 0; suffix < 5; ++suffix) {
      constexpr u32 types[] = {7, 9, 12, 40, 3};
      write(told("type", {suffix, types[suffix], 1, suffix + 50, suffix + 70, suffix}));
    }
    write(told("class-functions", {1, 1 + random_.below(2), 0}));
    for (u32 ptp = 0; ptp < 10; ++ptp) {
      Step fixed = drawn(op_named("static"), random_);
      fixed.arguments[0] = ptp;
      write(fixed);
      Step dynamic = drawn(op_named("dynamic"), random_);
      dynamic.arguments[0] = ptp;
      write(dynamic);
    }
  }

  void restart() {
    write(told("destruct", {}));
    if (random_.one_in(3)) {
      write(drawn(op_named("numbers-spec"), random_));
      write(drawn(op_named("types-spec"), random_));
    }
    if (random_.one_in(3)) {
      sometimes_fail({host::Fn::ROOT_LibCompRegisterInfo});
      write(told("enrol", {}));
      write(told("enrol", {}));
    }
    birth();
    write(told("pair", {}));
  }

  Random random_;
  bool portable_;
  Script script_;
};

}  // namespace

namespace {

std::vector<Op> joined(std::initializer_list<std::vector<Op>> parts) {
  std::vector<Op> all;
  for (const std::vector<Op> &part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

}  // namespace

const std::vector<Op> &actions() {
  static const std::vector<Op> all =
      joined({life_actions(), record_actions(), event_actions(), remote_actions()});
  return all;
}

const std::vector<Op> &questions() {
  static const std::vector<Op> all = joined({store_questions(), identity_questions(),
                                             type_questions(), live_questions(), walk_questions()});
  return all;
}

const Op &op_named(const std::string &name) {
  for (const std::vector<Op> *ops : {&actions(), &questions()}) {
    for (const Op &op : *ops) {
      if (name == op.name) {
        return op;
      }
    }
  }
  throw std::invalid_argument("there is no step '" + name + "'");
}

Script life_of(std::uint64_t seed, u32 actions, bool portable) {
  return Author(seed, portable).life(actions);
}

std::string text_of(const Step &step) {
  std::ostringstream text;
  text << step.op->name;
  for (std::size_t i = 0; i < step.op->arguments.size(); ++i) {
    text << ' ' << step.op->arguments[i].name << '=' << step.arguments[i];
  }
  return text.str();
}

namespace {

Step step_of(const std::string &line) {
  std::istringstream words(line);
  std::string word;
  words >> word;
  Step step{&op_named(word), {}};
  for (std::size_t i = 0; i < step.op->arguments.size(); ++i) {
    const std::string expected = std::string(step.op->arguments[i].name) + "=";
    if (!(words >> word) || word.compare(0, expected.size(), expected) != 0) {
      throw std::invalid_argument("expected " + expected);
    }
    const auto number = node::number_of(word.substr(expected.size()));
    if (!number) {
      throw std::invalid_argument("'" + word + "' has no number; expected 0 to 4294967295");
    }
    step.arguments[i] = *number;
  }
  return step;
}

}  // namespace

Script read_script(std::istream &in) {
  Script script;
  std::string line;
  for (u32 number = 1; std::getline(in, line); ++number) {
    if (line.empty() || line.front() == '#') {
      continue;
    }
    try {
      script.push_back(step_of(line));
    } catch (const std::exception &error) {
      throw std::invalid_argument("line " + std::to_string(number) + ": " + error.what());
    }
  }
  return script;
}

}  // namespace soak
