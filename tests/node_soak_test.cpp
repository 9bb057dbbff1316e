// pmnode soak: lives that pass, steps that are kept in files, and what is not a life.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "node/soak_play.hpp"
#include "node_program.hpp"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Soak, LivesOfSeveralSeedsAgreeWithTheModel) {
  for (const char *seed : {"1", "2", "3"}) {
    const auto outcome = program::run(std::string("soak --steps 300 --seed ") + seed);
    EXPECT_EQ(outcome.code, 0) << outcome.output;
    EXPECT_THAT(outcome.output, StartsWith(std::string("seed ") + seed + ", 300 steps\npassed: "));
  }
}

TEST(Soak, ReportsAsOneObject) {
  const auto outcome = program::run("soak --json --steps 20 --seed 9");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\"passed\":true"));
  EXPECT_THAT(outcome.output, HasSubstr("\"seed\":9"));
}

TEST(Soak, WrittenStepsArePlayedAgain) {
  const auto printed = program::run("soak --print --steps 50 --seed 4");
  const program::File file("# a comment\n" + printed.output.substr(printed.output.find('\n') + 1));
  const auto outcome = program::run("soak --replay " + file.name);
  EXPECT_EQ(outcome.code, 0) << outcome.output;
  EXPECT_THAT(outcome.output, StartsWith("passed: "));
}

TEST(Soak, TheDigestOfALifeIsItsOwn) {
  const std::string life = "soak --digest --steps 200 --seed ";
  const auto first = program::run(life + "1");
  EXPECT_EQ(first.code, 0) << first.output;
  EXPECT_THAT(first.output, HasSubstr("\ndigest "));
  EXPECT_EQ(program::run(life + "1").output, first.output);
  const auto digest = [](const std::string &text) { return text.substr(text.find("digest ")); };
  EXPECT_NE(digest(program::run(life + "2").output), digest(first.output));
}

TEST(Soak, OddFilesAreNamedByTheirLine) {
  const struct {
    const char *steps;
    const char *complaint;
  } cases[] = {{"enrol\ndance\n", "line 2: there is no step 'dance'"},
               {"side no=1\n", "line 1: expected yes="},
               {"construct\n", "line 1: expected value="},
               {"side yes=x\n", "line 1: "}};
  for (const auto &each : cases) {
    const program::File file(each.steps);
    const auto outcome = program::run("soak --replay " + file.name);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_THAT(outcome.output, HasSubstr(each.complaint));
  }
  EXPECT_EQ(program::run("soak --replay /none").code, 2);
  EXPECT_EQ(program::run("soak --dance").code, 2);
}

// The comparison itself: a stage on which something else happened is noticed after the next step.
TEST(Soak, ADifferenceIsFoundAndCutToItsLines) {
  soak::Play play;
  std::istringstream steps("enrol\nconstruct value=1\nstart-fid yes=0\nPM_LibGetMaxPtpID\n");
  const soak::Script script = soak::read_script(steps);
  for (std::size_t i = 0; i + 1 < script.size(); ++i) {
    ASSERT_FALSE(play.step(script[i]));
  }
  play.model.nodes[0].clock.advance(1);
  const auto mismatch = play.step(script.back());
  ASSERT_TRUE(mismatch);
  EXPECT_THAT(mismatch->expected, StartsWith("ticks "));
  EXPECT_THAT(mismatch->got, StartsWith("ticks "));
  EXPECT_NE(mismatch->expected, mismatch->got);
}

}  // namespace
