// pmnode as a program, without a terminal: exit codes, its one line of complaint, and products that
// cannot be loaded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "node/document.hpp"
#include "node/product.hpp"
#include "node_program.hpp"

namespace {

using program::File;
using program::Outcome;
using program::run;

const std::string kDesk = "--chassis examples/desk.toml --product " PM_PRODUCT_FILE;

TEST(NodeProgram, RunsItsExamplesToTheirEnd) {
  const Outcome tour = run("--chassis examples/access_node.toml --product " PM_PRODUCT_FILE
                           " --script examples/tour.pmn");
  EXPECT_EQ(tour.code, 0) << tour.output;
  EXPECT_NE(tour.output.find("link up: PTP 17 (ge-17)"), std::string::npos);
  EXPECT_NE(tour.output.find("static data         identical"), std::string::npos);
  const Outcome desk = run(kDesk + " --script examples/desk.pmn");
  EXPECT_EQ(desk.code, 0) << desk.output;
  const std::pair<const char *, std::vector<const char *>> desk_sessions[] = {
      {"queries.pmn",
       {"live alias                  ge 0/0/2", "physical state  1", "go on with 'from 2'",
        "0/2/1/1   0x20101       40", "description  the port of the front desk",
        "configuration of 0/2/1/1: deletion answered ok", "0x136  link up: PTP 3"}},
      {"debug_window.pmn",
       {"PTPID\xA3\xACulSubCmd=PTPID", "Set switch Successful", "usPtpID = 5000",
        "PTPID          : 17", "virtual PTP number:  10", "primType 6 is: 1",
        "unknown DBWIN command: 0x7"}}};
  for (const auto &[session, lines] : desk_sessions) {
    const Outcome outcome = run(kDesk + " --script examples/" + session);
    EXPECT_EQ(outcome.code, 0) << outcome.output;
    for (const char *line : lines) {
      EXPECT_NE(outcome.output.find(line), std::string::npos) << session << ": " << line;
    }
  }
}

TEST(NodeProgram, TakesCommandsFromThePipeAndStopsAtQuit) {
  const Outcome outcome = run(kDesk, "ptp 3 --json\\nquit\\nnonsense\\n");
  EXPECT_EQ(outcome.code, 0) << outcome.output;
  EXPECT_NE(outcome.output.find("{\"ptp\":3,"), std::string::npos);
}

TEST(NodeProgram, ComplainsInOneLineBeforeAnythingStarts) {
  const File bad_chassis("[node]\nname = 1\n");
  const File &file = bad_chassis;
  const std::string no_product = PM_LIBRARY_FILE;
  const struct {
    std::string arguments;
    std::string line;
  } cases[] = {{"--chassis /none.toml", "/none.toml: cannot be opened; expected a readable file\n"},
               {"--chassis " + file.name,
                file.name + ":1:1: the file lacks [specification]; expected a table\n"},
               {"--chassis /tmp", "/tmp: cannot be opened; expected a readable file\n"},
               {kDesk + " --script /none.pmn", "/none.pmn: cannot be opened; expected a script\n"},
               {kDesk + " --script /tmp", "/tmp: cannot be opened; expected a script\n"},
               {kDesk + " --feed " + file.name,
                file.name + ":1: the file is no feed; expected {\"format\": \"pmnode-feed\", "
                            "\"version\": 1 to 3}\n"},
               {"--chassis examples/desk.toml --product /none.so",
                "/none.so: cannot be opened; expected a product's shared object\n"},
               {"--chassis examples/desk.toml --product " + no_product,
                no_product + ": has no entry point; expected a function pm_product_hooks\n"},
               {"--product x", "pmnode: --chassis is required; expected what --help tells\n"}};
  for (const auto &[arguments, line] : cases) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.output, line);
  }
}

TEST(NodeProgram, AFailingLineOfAScriptIsNamedAndExitsWith1) {
  const File script("status\nptp 4/4/4\n");
  const Outcome outcome = run(kDesk + " --script " + script.name);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.output.find("\n" + script.name + ":2: no PTP at 4/4/4: "), std::string::npos);
}

TEST(NodeProduct, ACrashNamesTheProductTheCallbackAndTheLine) {
  const File script("status\nlink up 3\n");
  const std::string node =
      "--chassis examples/product_plugin/port_lights.toml --product " PM_CRASH_FILE " --script " +
      script.name;
  EXPECT_EQ(run(node).output,
            PM_CRASH_FILE ": pm_product_hooks answered null; expected a table of hooks\n");
#if defined(__arm__)  // whose code cannot be unwound: who called is not known
  const std::string booked = "";
#else
  const std::string booked = "a booked function, ";
#endif
  const std::pair<const char *, std::string> places[] = {
      {"hook", "the hook pfnPhaseProc, "},
      {"booking", booked + ".*light_switched.*, at " + script.name + ":2\n"}};
  for (const auto &[place, callback] : places) {
    setenv("CRASH_IN", place, 1);
    const Outcome outcome = run(node);
    EXPECT_NE(outcome.code, 0);
#if defined(__SANITIZE_ADDRESS__)  // which reports a crash itself
    EXPECT_THAT(outcome.output, testing::HasSubstr("AddressSanitizer: SEGV"));
#else
    EXPECT_THAT(outcome.output, testing::ContainsRegex(
                                    PM_CRASH_FILE ": crashed .segmentation fault. in " + callback));
#endif
  }
  unsetenv("CRASH_IN");
}

TEST(NodeProduct, RefusesTheOtherWidthAndWhatIsNoSharedObject) {
  const bool narrow = sizeof(void *) == 4;
  const File other_width(std::string("\x7F"
                                     "ELF") +
                         (narrow ? '\2' : '\1') + std::string(64, '\0'));
  const auto complaint = [](const std::string &name) -> std::string {
    try {
      node::load_product(name);
    } catch (const node::InputError &error) {
      return error.what();
    }
    return "no complaint";
  };
  EXPECT_EQ(complaint(other_width.name), other_width.name + ": is built for " +
                                             (narrow ? "64" : "32") + " bits; expected " +
                                             (narrow ? "32" : "64"));
  EXPECT_EQ(complaint(PM_SOURCE_DIR "/examples/desk.toml"),
            PM_SOURCE_DIR "/examples/desk.toml: is no shared object; expected a product");
}

// Hooks of three products, to be combined.
std::string called;
u32 first_phase(u32) {
  return called += "1", 0;
}
u32 second_phase(u32) {
  return called += "2", 7;
}
u32 third_phase(u32) {
  return called += "3", 0;
}

TEST(NodeProduct, CombinedHooksCallEachProductUntilTheFirstFailure) {
  PmProductMngt first{};
  PmProductMngt second{};
  PmProductMngt third{};
  first.pfnPhaseProc = first_phase;
  second.pfnPhaseProc = second_phase;
  third.pfnPhaseProc = third_phase;
  const PmProductMngt all = node::combined_hooks({{"a", &first}, {"b", &second}, {"c", &third}});
  EXPECT_EQ(all.pfnPhaseProc(1), 7u);
  EXPECT_EQ(called, "12");
  EXPECT_EQ(all.pfnZelCfg, nullptr) << "a slot that nobody fills stays empty";
}

}  // namespace
