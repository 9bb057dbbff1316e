// Scripts that assert: those in tests/scripts hold, and one that does not hold says where.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
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
  } cases[] = {
      {"vs 2\nexpect field ptps 5\nquit\n", ":2: wanted field ptps 5; got '4'"},
      {"repeat 2 I\n link up 3\n expect event \"change $I\"\nend\n",
       ":3: wanted event change 0; got 'link up: PTP 3 (ge-3), change 1' (round 1 of 2)"},
      {"link up 3\nexpect error 1\n", ":2: wanted error 1; got no error records"},
      {"link up 3\nexpect not event PTP\n",
       ":2: wanted not event PTP; got 'link up: PTP 3 (ge-3), change 1'"},
      {"journal on\nlink up 3\nexpect call ZEL_MemAlloc_F\n",
       ":3: wanted call ZEL_MemAlloc_F; got no such calls"},
      {"expect fail link up 3\n", ":1: wanted 'link up 3' to fail; got result ok"},
      {"status\nexpect field instances.2.role active\n",
       ":2: wanted field 'instances.2.role'; got node, products, frames, boards, "
       "instances.count, instances.0-1.{instance role ptps visible sub_lines published "
       "errors tick}"},
      {"set A = x\n", ":1: the last answer has no field 'x'; expected one of its own: none"},
      {"set A 3\nlink up ${A\n", ":2: '${A' is not closed; expected '}' behind the name"},
      {"repeat 2\nrepeat 3 J\nlink up 40\nexpect field result ok\nend\nend\n",
       ":4: wanted field result ok; got 'PM_ERR_PTP_NOT_EXIST (0x6908ad)' (round 1 of 3) "
       "(round 1 of 2)"},
      {"expect line\n",
       ":1: 'expect' has 1 argument; expected "
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

std::string content_of(const std::string &file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(NodeRecording, ReplaysToTheSameOutputByteForByte) {
  const File recording("");
  const std::string node = "--chassis examples/access_node.toml --product " PM_PRODUCT_FILE;
  const struct {
    std::string node;
    std::string inputs;
  } cases[] = {{node, "--script examples/tour.pmn"},
               {kDesk, "--script tests/scripts/faults.pmn"},
               {kDesk, "--script tests/scripts/standby.pmn"}};
  for (const auto &[chassis, inputs] : cases) {
    const Outcome first = run(chassis + " " + inputs + " --record " + recording.name);
    EXPECT_EQ(first.code, 0) << first.output;
    const Outcome again = run(chassis + " --feed " + recording.name);
    EXPECT_EQ(again.code, 0) << inputs;
    EXPECT_TRUE(again.output == first.output) << inputs;
  }
  // Lines from a pipe, a feed and a `quit` are kept as well: the feed may be gone. Bytes that are
  // no text come back as they were.
  auto feed =
      std::make_unique<File>("{\"format\": \"pmnode-feed\", \"version\": 1}\n{\"ticks\": 7}\n");
  const std::string piped = "repeat 2\\nlink up 3\\nfeed " + feed->name +
                            "\\nend\\ndescribe 3 \\377\\200x\\nprivate 3 2\\nstatus\\nquit\\n";
  const Outcome first = run(kDesk + " --feed " + feed->name + " --record " + recording.name, piped);
  EXPECT_NE(first.output.find("change 2"), std::string::npos);
  EXPECT_NE(first.output.find("description  \xFF\x80x\n"), std::string::npos);
  feed.reset();
  EXPECT_EQ(run(kDesk + " --feed " + recording.name, "status\\n").output, first.output);
}

TEST(NodeRecording, ReplaysWhatAnotherBuildRecorded) {
  // Made by a 32-bit build; every build has to answer the same.
  const Outcome outcome = run(kDesk + " --feed tests/recordings/desk.jsonl");
  EXPECT_EQ(outcome.code, 0) << outcome.output;
  EXPECT_NE(outcome.output.find("PTP 3 joins virtual system 3"), std::string::npos);
}

TEST(NodeRecording, AReplayThatDiffersNamesTheLineWhereItParts) {
  const File recording("");
  run(kDesk + " --record " + recording.name,
      "trace 0 on\\nvs-mask 3 2\\ntrace 0 off\\nmemory\\nlink up 3\\n");
  const std::string whole = content_of(recording.name);
  const auto altered = [&](const std::string &from, const std::string &to) {
    std::string text = whole;
    text.replace(text.rfind(from), from.size(), to);
    std::ofstream(recording.name, std::ios::binary) << text;
    return run(kDesk + " --feed " + recording.name);
  };
  Outcome outcome = altered("\"answer\":\"0x0\"", "\"answer\":\"0x1\"");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.output.find("the replay differs: got {\"entered\":"), std::string::npos);
  EXPECT_EQ(outcome.output.find("link up"), std::string::npos) << "went on";
  outcome = altered("vs-mask 3 2", "vs-mask 3 3");
  EXPECT_NE(outcome.output.find("the replay differs"), std::string::npos);
  // Of the machine's figures an address may differ, a word may not; a size on another machine only.
  outcome = altered("Enter PM_LibBook", "Enter PM_LibBuch");
  EXPECT_NE(outcome.output.find("the replay differs: got [\"Enter PM_LibBook"), std::string::npos);
  outcome = altered("{\"figures\":[\"", "{\"figures\":[\"1");
  EXPECT_NE(outcome.output.find("the replay differs: got [\""), std::string::npos);
  outcome = altered("vs-mask 3 2", "status");
  EXPECT_NE(outcome.output.find("nothing came; expected {\"entered\":\"record\""),
            std::string::npos);
  // A damaged line: nothing at all is started.
  outcome = altered("{\"command\":\"link", "{\"command\":link");
  EXPECT_EQ(outcome.code, 2);
  const auto lines = std::count(whole.begin(), whole.end(), '\n');
  EXPECT_EQ(outcome.output, recording.name + ":" + std::to_string(lines) +
                                ": the line is damaged; expected one JSON object\n");
}

}  // namespace
