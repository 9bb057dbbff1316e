#include "node/words.hpp"

#include <algorithm>
#include <cctype>

#include "node/console.hpp"

namespace node {
namespace {

bool is_blank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool belongs_to_name(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class Splitter {
 public:
  Splitter(const std::string &line, const Variables *variables)
      : line_(line), variables_(variables) {}

  Arguments words() {
    for (skip_blanks(); position_ < line_.size() && line_[position_] != '#'; skip_blanks()) {
      words_.push_back(word());
    }
    return words_;
  }

 private:
  void skip_blanks() {
    while (position_ < line_.size() && is_blank(line_[position_])) {
      ++position_;
    }
  }

  std::string word() {
    std::string text;
    bool quoted = false;
    for (; position_ < line_.size() && (quoted || !is_blank(line_[position_])); ++position_) {
      const char c = line_[position_];
      if (c == '"') {
        quoted = !quoted;
      } else if (quoted && c == '\\' && position_ + 1 < line_.size()) {
        text += line_[++position_];
      } else if (c == '$' && variables_ != nullptr) {
        text += replacement();
      } else {
        text += c;
      }
    }
    if (quoted && variables_ != nullptr) {
      throw CommandError("a quote is not closed; expected a second '\"'");
    }
    return text;
  }

  // What stands for the '$' at the position; leaves the position at its last character.
  std::string replacement() {
    std::string name;
    if (position_ + 1 < line_.size() && line_[position_ + 1] == '$') {
      ++position_;
      return "$";
    }
    const bool braced = position_ + 1 < line_.size() && line_[position_ + 1] == '{';
    position_ += braced ? 1 : 0;
    while (position_ + 1 < line_.size() && belongs_to_name(line_[position_ + 1])) {
      name += line_[++position_];
    }
    if (braced && (position_ + 1 == line_.size() || line_[++position_] != '}')) {
      throw CommandError("'${" + name + "' is not closed; expected '}' behind the name");
    }
    const auto variable = variables_->find(name);
    if (variable == variables_->end()) {
      throw CommandError("there is no variable '" + name + "'; expected one that 'set' lists");
    }
    return variable->second;
  }

  const std::string &line_;
  const Variables *variables_;
  std::size_t position_ = 0;
  Arguments words_;
};

}  // namespace

Arguments words_of(const std::string &line) {
  return Splitter(line, nullptr).words();
}

Arguments words_of(const std::string &line, const Variables &variables) {
  return Splitter(line, &variables).words();
}

std::string quoted_word(const std::string &text) {
  std::string word = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      word += '\\';
    }
    word += c == '$' ? "$$" : std::string(1, c);
  }
  return word + "\"";
}

bool is_variable_name(const std::string &text) {
  return !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) == 0 &&
         std::all_of(text.begin(), text.end(), belongs_to_name);
}

}  // namespace node
