// Every host call of every scene made to fail in every way, one at a time, and every partition
// exhausted at every allocation. Whatever fails: nothing crashes, starves, is given back twice or
// lost; codes are those that a function's description names; outputs are written on success only;
// and when the host works again, the scene plays as if nothing had been.
#include <iostream>
#include <map>
#include <optional>
#include <random>

#include "scenarios.hpp"

namespace {

using host::Fn;
using scenes::Codes;
using scenes::host_code;
using scenes::Scene;
using scenes::Stage;
using test::Values;

constexpr u32 para = PM_ERR_PARA, invalid = PM_ERR_DATA_INVALID, absent = PM_ERR_PTP_NOT_EXIST,
              mem = PM_ERR_MEM_OPER, no_memory = PM_ERR_MALLOC, more = PM_ERR_NO_MORE,
              any = PM_PTP_TYPE_ALL;

// What a failure may leave behind, since the library goes on without looking at the answer.
struct Exception {
  Fn fn;
  std::string scene;           // empty: any
  std::set<std::size_t> lost;  // sizes of blocks that nothing leads to
  std::optional<host::MisuseKind> misuse{};
  bool other_state = false;
};
constexpr std::size_t static_node = sizeof(PmStaticDBNode), cache_node = sizeof(PmPhyIndexNode);
const Exception exceptions[] = {
    // A node that no table has; one that is given back while it is linked, which the host refuses;
    // one that hides another of the same PTP.
    {Fn::ZEL_HASH_Add_Node, "", {static_node, cache_node}},
    {Fn::ZEL_HASH_Delete_Node, "", {}, host::MisuseKind::freed_while_linked},
    {Fn::ZEL_HASH_Find_Node, "synchronisation", {}, {}, true},
    // A node that has been taken out.
    {Fn::ZEL_Free, "", {static_node, cache_node}},
    {Fn::ZEL_MemFree, "", {sizeof(PmBookNode)}},
    // An instance that is lost before a registration is linked, and before it is copied into the
    // callback table, which is filled only once.
    {Fn::ROOT_LibGetCurrentThis, "start-up", {sizeof(PmSubInfoNode)}},
    {Fn::ROOT_LibGetCurrentThis, "first batch", {}, {}, true},
};

// What several disturbances together may leave behind.
struct Excuse {
  std::set<std::size_t> lost;
  std::set<std::optional<host::MisuseKind>> misuses;
  bool other_state = false;
};

Excuse excuse_for(const Scene &scene, const std::vector<host::Disturbance> &disturbances) {
  Excuse excuse;
  for (const host::Disturbance &disturbance : disturbances) {
    for (const Exception &exception : exceptions) {
      if (disturbance.fn == exception.fn &&
          (exception.scene.empty() || exception.scene == scene.name)) {
        excuse.lost.insert(exception.lost.begin(), exception.lost.end());
        excuse.misuses.insert(exception.misuse);
        excuse.other_state |= exception.other_state;
      }
    }
  }
  return excuse;
}

struct Outcome {
  Excuse excuse;
  std::vector<scenes::Step> steps, again;
  std::string picture;
};

class Sweep : public testing::TestWithParam<Scene> {
 protected:
  // The host's verdict, and the blocks that nothing leads to.
  static void inspect(Stage &stage, const Excuse &excuse) {
    const std::set<const void *> held = stage.held();
    std::set<const void *> live = {nullptr};
    for (const host::Block &block : stage.node.memory.live()) {
      live.insert(block.address);
      if (held.count(block.address) == 0) {
        EXPECT_TRUE(excuse.lost.count(block.size) != 0)
            << "lost: " << block.size << " bytes of line " << block.line;
        stage.kept.insert(block.address);
      }
    }
    EXPECT_THAT(live, testing::IsSupersetOf(held)) << "in use after its release";
    for (const host::Misuse &misuse : std::exchange(stage.node.misuses, {})) {
      EXPECT_TRUE(excuse.misuses.count(misuse.kind) != 0)
          << host::name_of(misuse.kind) << ": " << misuse.text;
    }
    EXPECT_EQ(stage.node.memory.check(), 0U);
    EXPECT_EQ(stage.node.watchdog.barks(), 0U);
  }

  // Without a disturbance, tells what can be disturbed.
  static Outcome play(const Scene &scene, const std::vector<host::Disturbance> &disturbances,
                      const std::function<void(const host::Use &, const host::Node &)> &tell = {}) {
    Stage stage;
    Outcome outcome{excuse_for(scene, disturbances), {}, {}, {}};
    scene.prepare(stage);
    stage.steps.clear();
    const host::Use before(stage.node);
    for (const host::Disturbance &disturbance : disturbances) {
      disturbance.arm(stage.node);
    }
    scene.act(stage);
    host::Disturbance::disarm(stage.node);
    if (tell) {
      tell(before, stage.node);
    }
    outcome.steps = std::exchange(stage.steps, {});
    inspect(stage, outcome.excuse);
    scene.act(stage);
    outcome.again = std::exchange(stage.steps, {});
    outcome.picture = stage.picture();
    inspect(stage, outcome.excuse);
    const std::size_t blocks = stage.node.memory.live().size();
    stage.scope.reset();
    for (host::Instance *one : stage.node.root.instances()) {
      EXPECT_EQ(stage.node.root.destruct(one->cid()), PM_OK);
    }
    EXPECT_EQ(stage.node.memory.live().size(), blocks);
    return outcome;
  }

  // Codes as without the disturbance, or such as the step's description names.
  static void compare_codes(const Outcome &outcome, const Outcome &base, u32 answered) {
    std::map<std::string, u32> usual;
    for (const scenes::Step &step : base.steps) {
      usual.emplace(step.name, step.code);
    }
    for (const scenes::Step &step : outcome.steps) {
      Codes allowed = step.allowed;
      std::replace(allowed.begin(), allowed.end(), host_code, answered);
      allowed.push_back(usual.count(step.name) != 0 ? usual[step.name] : PM_OK);
      EXPECT_THAT(allowed, testing::Contains(step.code)) << step.name;
      EXPECT_FALSE(step.wrote) << step.name << " wrote an output and answered " << step.code;
    }
  }
  static void compare_later(const Outcome &outcome, const Outcome &base) {
    EXPECT_TRUE(outcome.excuse.other_state || outcome.picture == base.picture)
        << "another state in the end";
    ASSERT_EQ(outcome.again.size(), base.again.size());
    for (std::size_t i = 0; i < base.again.size(); ++i) {
      EXPECT_EQ(outcome.again[i].code, base.again[i].code) << base.again[i].name << " later";
    }
  }

  // Plays the scene undisturbed and learns what can be disturbed.
  void learn() {
    base = play(GetParam(), {}, [&](const host::Use &before, const host::Node &node) {
      disturbances = before.disturbances(node);
      std::cout << GetParam().name << ": " << before.calls(node) << " host calls of "
                << before.functions(node) << " functions, " << disturbances.size()
                << " disturbances\n";
      EXPECT_GE(disturbances.size(), before.calls(node));
    });
  }
  Outcome base;
  std::vector<host::Disturbance> disturbances;
};

TEST_P(Sweep, NothingIsLostAndTheSceneCanBePlayedAgain) {
  learn();
  for (const host::Disturbance &disturbance : disturbances) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, disturbance.text());
    const Outcome outcome = play(GetParam(), {disturbance});
    compare_codes(outcome, base, disturbance.value);
    compare_later(outcome, base);
  }
}

TEST_P(Sweep, NorWhenTwoThingsGoWrongAtOnce) {
  learn();
  constexpr u32 seed = 20, pairs = 250;
  std::cout << "seed " << seed << ", " << pairs << " pairs\n";
  std::mt19937 random(seed);
  for (u32 i = 0; i < pairs; ++i) {
    const host::Disturbance one = disturbances[random() % disturbances.size()],
                            other = disturbances[random() % disturbances.size()];
    const testing::ScopedTrace trace(__FILE__, __LINE__, one.text() + " and " + other.text());
    compare_later(play(GetParam(), {one, other}), base);
  }
}

INSTANTIATE_TEST_SUITE_P(Failures, Sweep, testing::ValuesIn(scenes::all), [](const auto &of) {
  std::string name = of.param.name;
  std::erase_if(name, [](char c) { return c == ' ' || c == '-'; });
  return name;
});

}  // namespace
