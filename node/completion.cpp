#include "node/completion.hpp"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "node/console.hpp"

namespace node {
namespace {

// The line's first words, two of them at most.
std::pair<std::string, std::string> first_words(std::string_view line) {
  std::istringstream stream{std::string(line)};
  std::pair<std::string, std::string> words;
  stream >> words.first >> words.second;
  return words;
}

// Words of a description of arguments: placeholders are in capitals, fixed words in small letters.
std::vector<std::string> words_in(std::string_view arguments) {
  std::vector<std::string> words;
  std::string word;
  const auto keep = [&] {
    if (!word.empty()) {
      words.push_back(word);
    }
    word.clear();
  };
  for (const char letter : arguments) {
    if (std::isalpha(static_cast<unsigned char>(letter)) != 0 || letter == '_') {
      word += letter;
    } else {
      keep();
    }
  }
  keep();
  return words;
}

// A long help has a column of words to choose from: those in small letters in front of two blanks.
std::vector<std::string> words_in_front(std::string_view long_help) {
  constexpr std::string_view kIndent = "  ";
  std::vector<std::string> words;
  std::istringstream lines{std::string(long_help)};
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, kIndent.size());
    const std::size_t end = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz");
    if (end != 0 && end != std::string::npos && line.find("  ", end) != std::string::npos) {
      words.push_back(line.substr(0, end));
    }
  }
  return words;
}

bool is_fixed(const std::string &word) {
  return std::all_of(word.begin(), word.end(),
                     [](unsigned char letter) { return std::islower(letter) != 0; });
}

}  // namespace

std::vector<std::string> completions(std::string_view before, std::string_view word) {
  const auto [name, second] = first_words(before);
  std::vector<std::string> candidates;
  if (name.empty() || (name == "help" && second.empty())) {
    for (const Command &command : commands()) {
      candidates.emplace_back(command.name);
    }
  } else if (const Command *command = find_command(name)) {
    candidates = words_in(command->arguments);
    const bool takes_function =
        command->long_help.find("FUNCTION") != std::string_view::npos || command->name == "expect";
    std::erase_if(candidates, [](const std::string &text) { return !is_fixed(text); });
    if (takes_function && !second.empty()) {
      const auto names = function_names();
      candidates.insert(candidates.end(), names.begin(), names.end());
    }
    const std::vector<std::string> more = words_in_front(command->long_help);
    candidates.insert(candidates.end(), more.begin(), more.end());
    candidates.emplace_back("--json");
  }
  candidates.erase(std::remove_if(candidates.begin(), candidates.end(),
                                  [&](const std::string &text) { return !text.starts_with(word); }),
                   candidates.end());
  std::sort(candidates.begin(), candidates.end());
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  return candidates;
}

bool takes_file(std::string_view before) {
  const Command *command = find_command(first_words(before).first);
  if (command == nullptr) {
    return false;
  }
  const std::vector<std::string> words = words_in(command->arguments);
  return std::find(words.begin(), words.end(), "FILE") != words.end();
}

}  // namespace node
