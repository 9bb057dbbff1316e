#include "node/line_editor.hpp"

#include <cstdlib>
#include <iostream>

#ifdef PM_NODE_READLINE

// Its headers use FILE and declare nothing for it; history.h comes along.
#include <cstdio>
#include <cstring>
#include <memory>

#include <readline/history.h>
#include <readline/readline.h>

#include "node/completion.hpp"

namespace node {
namespace {

constexpr int kLinesKept = 1'000;

// The library calls back without a place for data: what the word being completed can become.
std::vector<std::string> &candidates() {
  static std::vector<std::string> words;
  return words;
}

// Hands out one candidate at a time, then null. Each is the library's to free.
char *next_candidate(const char *, int number) {
  static std::size_t position = 0;
  position = number == 0 ? 0 : position + 1;
  return position < candidates().size() ? strdup(candidates()[position].c_str()) : nullptr;
}

char **complete(const char *word, int start, int) {
  const std::string before(rl_line_buffer, static_cast<std::size_t>(start));
  rl_attempted_completion_over = takes_file(before) ? 0 : 1;
  candidates() = completions(before, word);
  return rl_completion_matches(word, next_candidate);
}

std::string history_file() {
  if (const char *file = std::getenv("PMNODE_HISTORY")) {
    return file;
  }
  const char *home = std::getenv("HOME");
  return home == nullptr ? "" : std::string(home) + "/.pmnode_history";
}

bool repeats_last(const char *line) {
  const HIST_ENTRY *last = history_length == 0 ? nullptr : history_get(history_length);
  return last != nullptr && std::strcmp(last->line, line) == 0;
}

}  // namespace

LineEditor::LineEditor() : history_file_(history_file()) {
  rl_readline_name = "pmnode";
  rl_attempted_completion_function = complete;
  using_history();
  stifle_history(kLinesKept);
  if (!history_file_.empty()) {
    read_history(history_file_.c_str());
  }
}

LineEditor::~LineEditor() {
  if (!history_file_.empty()) {
    write_history(history_file_.c_str());
  }
}

std::optional<std::string> LineEditor::read(const std::string &prompt) {
  const std::unique_ptr<char, decltype(&std::free)> line(readline(prompt.c_str()), std::free);
  if (line == nullptr) {
    std::cout << std::endl;
    return std::nullopt;
  }
  if (*line != '\0' && !repeats_last(line.get())) {
    add_history(line.get());
  }
  return line.get();
}

}  // namespace node

#else

namespace node {

LineEditor::LineEditor() = default;
LineEditor::~LineEditor() = default;

std::optional<std::string> LineEditor::read(const std::string &prompt) {
  std::cout << prompt << std::flush;
  std::string line;
  if (!std::getline(std::cin, line)) {
    std::cout << std::endl;
    return std::nullopt;
  }
  return line;
}

}  // namespace node

#endif
