// Checked reading of tables: every complaint names the place and what was expected there.
#include "node/document.hpp"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace node {
namespace {

constexpr const char *kTypeNames[] = {"an integer", "a truth value", "a number or date",
                                      "a string",   "a list",        "a table"};

std::string range_text(unsigned lowest, unsigned highest) {
  return std::to_string(lowest) + " to " + std::to_string(highest);
}

// One number at the front of `text`, which is shortened by it.
std::optional<unsigned> take_number(std::string_view &text) {
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

// "1-7,9"; nothing when the text is not a list of numbers within the bounds.
std::optional<std::vector<unsigned>> numbers_of(std::string_view text, unsigned lowest,
                                                unsigned highest) {
  std::vector<unsigned> numbers;
  for (;;) {
    const auto first = take_number(text);
    auto last = first;
    if (!text.empty() && text.front() == '-') {
      text.remove_prefix(1);
      last = take_number(text);
    }
    if (!first || !last || *first < lowest || *last > highest || *first > *last) {
      return std::nullopt;
    }
    for (unsigned number = *first; number <= *last; ++number) {
      numbers.push_back(number);
    }
    if (text.empty()) {
      return numbers;
    }
    if (text.front() != ',') {
      return std::nullopt;
    }
    text.remove_prefix(1);
  }
}

}  // namespace

std::optional<std::string> content_of_file(const std::string &file) {
  const std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return stream.is_open() && !content.bad() ? std::optional(content.str()) : std::nullopt;
}

std::ifstream open_input(const std::string &file, const std::string &expected) {
  std::ifstream stream(file, std::ios::binary);
  // A folder can be opened; only reading from it fails, and by then it looks like an empty file.
  if (!stream || std::filesystem::is_directory(file)) {
    throw InputError(file + ": cannot be opened; expected " + expected);
  }
  return stream;
}

void Document::fail(Position at, const std::string &what, const std::string &expected) const {
  throw InputError(file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": " +
                   what + "; expected " + expected);
}

Table::Table(const Document &document, const Value &value, std::string title,
             std::initializer_list<std::string_view> known_keys)
    : document_(document), value_(value), title_(std::move(title)) {
  members_ = std::get_if<std::vector<Member>>(&value.data);
  if (members_ == nullptr) {
    fail(value.at, title_ + " is " + kTypeNames[value.data.index()], "a table");
  }
  for (const Member &member : *members_) {
    if (std::find(known_keys.begin(), known_keys.end(), member.key) != known_keys.end()) {
      continue;
    }
    std::string expected;
    for (const std::string_view key : known_keys) {
      expected += (expected.empty() ? "" : ", ") + std::string(key);
    }
    fail(member.at, "unknown key '" + member.key + "' in " + title_, expected);
  }
}

const Member *Table::find(std::string_view key) const {
  const auto found = std::find_if(members_->begin(), members_->end(),
                                  [&](const Member &member) { return member.key == key; });
  return found == members_->end() ? nullptr : &*found;
}

const Member &Table::need(std::string_view key, const std::string &expected) const {
  const Member *member = find(key);
  if (member == nullptr) {
    fail(at(), title_ + " lacks '" + std::string(key) + "'", expected);
  }
  return *member;
}

void Table::mistyped(const Member &member, const std::string &expected) const {
  fail(member.value.at, "'" + member.key + "' is " + kTypeNames[member.value.data.index()],
       expected);
}

Position Table::at(std::string_view key) const {
  const Member *member = find(key);
  return member == nullptr ? at() : member->value.at;
}

unsigned Table::number(std::string_view key, unsigned lowest, unsigned highest) const {
  const std::string expected = "an integer " + range_text(lowest, highest);
  const Member &member = need(key, expected);
  const auto *number = std::get_if<std::int64_t>(&member.value.data);
  if (number == nullptr) {
    mistyped(member, expected);
  }
  if (*number < std::int64_t{lowest} || *number > std::int64_t{highest}) {
    fail(member.value.at, "'" + member.key + "' is " + std::to_string(*number), expected);
  }
  return static_cast<unsigned>(*number);
}

unsigned Table::number_or(std::string_view key, unsigned lowest, unsigned highest,
                          unsigned otherwise) const {
  return has(key) ? number(key, lowest, highest) : otherwise;
}

bool Table::flag_or(std::string_view key, bool otherwise) const {
  const Member *member = find(key);
  if (member == nullptr) {
    return otherwise;
  }
  const bool *flag = std::get_if<bool>(&member->value.data);
  if (flag == nullptr) {
    mistyped(*member, "true or false");
  }
  return *flag;
}

std::string Table::text(std::string_view key) const {
  const Member &member = need(key, "a string");
  const auto *text = std::get_if<std::string>(&member.value.data);
  if (text == nullptr) {
    mistyped(member, "a string");
  }
  return *text;
}

std::string Table::text_or(std::string_view key, std::string_view otherwise) const {
  return has(key) ? text(key) : std::string(otherwise);
}

NumberList Table::list(std::string_view key, unsigned lowest, unsigned highest) const {
  const std::string expected = "a list such as \"1-7,9\" of " + range_text(lowest, highest);
  const Member &member = need(key, expected);
  if (std::holds_alternative<std::int64_t>(member.value.data)) {
    return {member.value.at, {number(key, lowest, highest)}};
  }
  const auto *text = std::get_if<std::string>(&member.value.data);
  if (text == nullptr) {
    mistyped(member, expected);
  }
  auto numbers = numbers_of(*text, lowest, highest);
  if (!numbers) {
    fail(member.value.at, "'" + member.key + "' is \"" + *text + "\"", expected);
  }
  return {member.value.at, std::move(*numbers)};
}

std::vector<const Value *> Table::tables(std::string_view key) const {
  const Member *member = find(key);
  if (member == nullptr) {
    return {};
  }
  const auto *values = std::get_if<std::vector<Value>>(&member->value.data);
  if (values == nullptr) {
    mistyped(*member, "a list of tables");
  }
  std::vector<const Value *> tables;
  for (const Value &value : *values) {
    tables.push_back(&value);
  }
  return tables;
}

}  // namespace node
