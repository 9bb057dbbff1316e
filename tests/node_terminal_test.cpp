// pmnode at a terminal: a session driven through a pseudo-terminal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using testing::HasSubstr;

class Terminal {
 public:
  explicit Terminal(const std::string &history) {
    child_ = forkpty(&line_, nullptr, nullptr, nullptr);
    if (child_ != 0) return;
    setenv("TERM", "dumb", 1);
    setenv("PMNODE_HISTORY", history.c_str(), 1);
    const std::string command = "exec " PM_EMULATOR " " PM_NODE_FILE " --chassis " PM_SOURCE_DIR
                                "/examples/desk.toml"
                                " --product " PM_PRODUCT_FILE;
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  ~Terminal() {
    if (line_ >= 0) close(line_);
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
  }

  bool opened() const { return child_ > 0; }

  // What the terminal shows until the prompt, or until the program ends.
  std::string shown() {
    std::string text;
    char buffer[4096];
    pollfd wait{line_, POLLIN, 0};
    while (!text.ends_with("pmnode> ") && poll(&wait, 1, 60'000) > 0) {
      const ssize_t count = read(line_, buffer, sizeof buffer);
      if (count <= 0) break;
      text.append(buffer, static_cast<std::size_t>(count));
    }
    return text;
  }
  std::string told(const std::string &keys) {
    EXPECT_EQ(write(line_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    return shown();
  }
  int exit_code() {
    int status = 0;
    waitpid(std::exchange(child_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  int line_ = -1;
  pid_t child_ = -1;
};

TEST(NodeTerminal, AnOperatorsSession) {
  const std::string history =
      std::filesystem::temp_directory_path() / ("pmnode-history-" + std::to_string(getpid()));
  Terminal terminal(history);
  if (!terminal.opened()) {
    GTEST_SKIP() << "no pseudo-terminal can be opened here";
  }
  EXPECT_THAT(terminal.shown(), HasSubstr("identical\r\npmnode> "));
  EXPECT_THAT(terminal.told("help\n"), HasSubstr("a command of the debug window"));
  EXPECT_THAT(terminal.told("dbwin\n"), HasSubstr("by PTPID\uFF0CulSubCmd=PTPID"));
  EXPECT_THAT(terminal.told("dbwin 1 1 1 1\n"), HasSubstr("Set switch Successful"));
  EXPECT_THAT(terminal.told("ptp 5000 full\n"),
              HasSubstr("PM_LibIfPtpExist fail, ulRet = 0x6908c2, usPtpID = 5000"));
  EXPECT_THAT(terminal.told("dbwin 3 0x11\n"), HasSubstr("Description    : pon 0/2/1"));
  EXPECT_THAT(terminal.told("dbwin 4 0 2 1\n"), HasSubstr("PTPID          : 17"));
  EXPECT_THAT(terminal.told("dbwin 9 7\n"),
              HasSubstr("The number of primayword functions of primType 7 is: 2"));
#ifdef PM_NODE_READLINE
  EXPECT_THAT(terminal.told("fin\tdesc\tge 0/0/1\n"), HasSubstr("0/0/1"));
  EXPECT_THAT(terminal.told("\x10\n"), HasSubstr("find description ge 0/0/1")) << "the line above";
#endif
  terminal.told("quit\n");
  EXPECT_EQ(terminal.exit_code(), 0);
#ifdef PM_NODE_READLINE
  std::ifstream kept(history);
  std::string first;
  std::getline(kept, first);
  EXPECT_EQ(first, "help");
#endif
  std::filesystem::remove(history);
}

}  // namespace
