// Runs pmnode as a program, without a terminal.
#ifndef TESTS_NODE_PROGRAM_HPP
#define TESTS_NODE_PROGRAM_HPP

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace program {

struct Outcome {
  int code = -1;
  std::string output;  // of both streams
};

inline Outcome run(const std::string &arguments, const std::string &input = "") {
  const std::string command = "cd " PM_SOURCE_DIR " && printf '" + input +
                              "' | " PM_EMULATOR " " PM_NODE_FILE " " + arguments + " 2>&1";
  Outcome outcome;
  FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return outcome;
  char buffer[4096];
  while (const std::size_t count = fread(buffer, 1, sizeof buffer, pipe)) {
    outcome.output.append(buffer, count);
  }
  const int status = pclose(pipe);
  outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

// A file of this test's own, gone at its end.
struct File {
  static inline unsigned made = 0;
  std::string name;

  explicit File(const std::string &content)
      : name(std::filesystem::temp_directory_path() /
             ("pmnode-" + std::to_string(getpid()) + "-" + std::to_string(made++))) {
    std::ofstream(name, std::ios::binary) << content;
  }
  File(const File &) = delete;
  File &operator=(const File &) = delete;
  ~File() { std::filesystem::remove(name); }
};

}  // namespace program

#endif
