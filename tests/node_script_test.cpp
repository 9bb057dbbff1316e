// Scripts that assert: those in tests/scripts hold, and one that does not hold says where.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "node_program.hpp"

namespace {

using program::File;
using program::Outcome;
using program::run;

const std::string kDesk = "--chassis examples/desk.toml --product " PM_PRODUCT_FILE;

TEST(NodeScript, EveryScriptOfTheDeskHolds) {
  std::vector<std::string> scripts;
  for (const auto &entry : std::filesystem::directory_iterator(PM_SOURCE_DIR "/tests/scripts")) {
    scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  for (const std::string &script : scripts) {
    const Outcome outcome = run(kDesk + " --script " + script);
    EXPECT_EQ(outcome.code, 0) << outcome.output;
  }
}

TEST(NodeScript, AnExpectationThatIsNotMetSaysWhereAndExitsWith1) {
  const struct {
    std::string script;
    std::string complaint;  // behind the file's name
  } cases[] = {{"vs 2\nexpect field ptps 5\nquit\n", ":2: wanted field ptps 5; got '4'"},
               {"repeat 2 I\n link up 3\n expect event \"change $I\"\nend\n",
                ":3: wanted event change 0; got 'link up: PTP 3 (ge-3), change 1'"},
               {"link up 3\nexpect error 1\n", ":2: wanted error 1; got no error records"},
               {"link up 3\nexpect not event PTP\n",
                ":2: wanted not event PTP; got 'link up: PTP 3 (ge-3), change 1'"},
               {"journal on\nlink up 3\nexpect call ZEL_MemAlloc_F\n",
                ":3: wanted call ZEL_MemAlloc_F; got no such calls"},
               {"expect fail link up 3\n", ":1: wanted 'link up 3' to fail; got result ok"},
               {"expect line\n",
                ":1: 'expect' has 1 arguments; expected "
                "expect [not] WHAT ARGUMENTS | fail COMMAND"},
               {"status $X\n", ":1: there is no variable 'X'; expected one that 'set' lists"},
               {"status\nstatus \"a\n", ":2: a quote is not closed; expected a second '\"'"},
               {"status\nrepeat 2\nstatus\n", ":2: 'repeat' is not closed; expected a line 'end'"}};
  for (const auto &[script, complaint] : cases) {
    const File file(script);
    const Outcome outcome = run(kDesk + " --script " + file.name);
    EXPECT_EQ(outcome.code, 1) << script;
    const std::string end = "\n" + file.name + complaint + "\n";
    EXPECT_EQ(
        outcome.output.substr(outcome.output.size() - std::min(outcome.output.size(), end.size())),
        end);
  }
}

}  // namespace
