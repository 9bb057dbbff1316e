#include "node/figures.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <optional>
#include <type_traits>

#include "node/console.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

// No address is lower.
constexpr std::uint64_t kLowestAddress = 0x10000;

bool is_alphanumeric(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

// Host calls that are told how big a record is, as they begin in the journal.
constexpr std::string_view kSizedCalls[] = {"ZEL_MemAlloc_F(", "RPC_LibParaSet(", "memcpy_s(",
                                            "memset_s("};

bool is_sized_call(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return std::any_of(std::begin(kSizedCalls), std::end(kSizedCalls),
                     [&](std::string_view call) { return text.starts_with(call); });
}

bool may_be_address(std::uint64_t number) {
  const auto code = static_cast<u32>(number);
  return number >= kLowestAddress && (code != number || result_text(code) == hex(code));
}

// The letters and digits that begin at a position.
std::string_view word_at(std::string_view text, std::size_t position) {
  std::size_t end = position;
  while (end < text.size() && is_alphanumeric(text[end])) {
    ++end;
  }
  return text.substr(position, end - position);
}

// The number that a word is, in either base, with its base named once, twice or not at all.
std::optional<std::uint64_t> number_in(std::string_view word) {
  bool hexadecimal = false;
  while (word.starts_with("0x")) {
    word.remove_prefix(2);
    hexadecimal = true;
  }
  constexpr std::size_t kMostDigits = 16;
  const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  const auto is_hex_digit = [](unsigned char c) { return std::isxdigit(c) != 0; };
  if (word.size() > kMostDigits || !std::all_of(word.begin(), word.end(), is_hex_digit) ||
      std::none_of(word.begin(), word.end(), is_digit)) {
    return std::nullopt;
  }
  hexadecimal = hexadecimal || !std::all_of(word.begin(), word.end(), is_digit);
  return std::strtoull(std::string(word).c_str(), nullptr, hexadecimal ? 16 : 10);
}

bool is_figure(std::string_view word, bool in_sized_call) {
  const auto number = number_in(word);
  return number && (in_sized_call || may_be_address(*number));
}

bool has_figure(std::string_view text) {
  const bool sized = is_sized_call(text);
  for (std::size_t position = 0; position < text.size(); ++position) {
    const std::string_view word = word_at(text, position);
    if (is_figure(word, sized)) {
      return true;
    }
    position += word.size();
  }
  return false;
}

// Equal but for figures.
bool same_words(std::string_view left, std::string_view right) {
  const bool sized = is_sized_call(left);
  while (!left.empty() && !right.empty()) {
    const std::string_view left_word = word_at(left, 0);
    const std::string_view right_word = word_at(right, 0);
    if (left_word != right_word &&
        (!is_figure(left_word, sized) || !is_figure(right_word, sized))) {
      return false;
    }
    left.remove_prefix(left_word.size());
    right.remove_prefix(right_word.size());
    if (left.substr(0, 1) != right.substr(0, 1)) {
      return false;
    }
    left.remove_prefix(std::min<std::size_t>(left.size(), 1));
    right.remove_prefix(std::min<std::size_t>(right.size(), 1));
  }
  return left.empty() && right.empty();
}

// Calls `visit` with every size and every text that has an address; ends at the first false.
template <class AnswerType, class VisitSize, class VisitText>
bool for_every_figure(AnswerType &answer, VisitSize visit_size, VisitText visit_text) {
  const auto visit_cell = [&](auto &cell) {
    if (auto *size = std::get_if<Size>(&cell)) {
      return visit_size(size->bytes);
    }
    if (auto *address = std::get_if<Address>(&cell)) {
      std::string text = hex(address->value);
      const bool go_on = visit_text(text);
      if constexpr (!std::is_const_v<AnswerType>) {
        address->value = number_of(text).value_or(address->value);
      }
      return go_on;
    }
    auto *printed = std::get_if<Printed>(&cell);
    return printed == nullptr || visit_text(printed->text);
  };
  const auto visit_row = [&](auto &row) { return std::all_of(row.begin(), row.end(), visit_cell); };
  const auto visit_line = [&](auto &line) { return !has_figure(line) || visit_text(line); };
  for (auto &item : answer.items()) {
    bool go_on = true;
    if (auto *field = std::get_if<Field>(&item)) {
      go_on = visit_cell(field->value);
    } else if (auto *table = std::get_if<Rows>(&item)) {
      go_on = std::all_of(table->rows.begin(), table->rows.end(), visit_row);
    } else if (auto *window = std::get_if<Window>(&item)) {
      go_on = std::all_of(window->lines.begin(), window->lines.end(), visit_line);
    }
    if (!go_on) {
      return false;
    }
  }
  return true;
}

}  // namespace

Cell printed_cell(std::string text) {
  return has_figure(text) ? Cell(Printed{std::move(text)}) : Cell(std::move(text));
}

Cell value_cell(u32 value) {
  return may_be_address(value) ? Cell(Address{value}) : Cell(Hex{value});
}

std::vector<std::string> figures_of(const Answer &answer) {
  std::vector<std::string> figures;
  const auto keep_size = [&](std::int64_t bytes) {
    figures.push_back(std::to_string(bytes));
    return true;
  };
  const auto keep_text = [&](const std::string &text) {
    figures.push_back(text);
    return true;
  };
  for_every_figure(answer, keep_size, keep_text);
  return figures;
}

bool put_figures(Answer &answer, const std::vector<std::string> &figures, bool same_width) {
  auto next = figures.begin();
  const auto put_size = [&](std::int64_t &bytes) {
    if (next == figures.end() || (same_width && std::to_string(bytes) != *next)) {
      return false;
    }
    bytes = std::strtoll((next++)->c_str(), nullptr, 10);
    return true;
  };
  const auto put_text = [&](std::string &text) {
    if (next == figures.end() || !same_words(text, *next)) {
      return false;
    }
    text = *next++;
    return true;
  };
  return for_every_figure(answer, put_size, put_text) && next == figures.end();
}

}  // namespace node
