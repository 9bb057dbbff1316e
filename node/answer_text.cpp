// Answers for people: values in one aligned column, tables with aligned columns.
#include <algorithm>

#include "node/answer.hpp"
#include "node/gbk.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

constexpr std::size_t kGap = 2;

std::string shown_name(std::string name) {
  std::replace(name.begin(), name.end(), '_', ' ');
  return name;
}

std::string padded(const std::string &text, std::size_t width, bool right) {
  const std::string blanks(width > text.size() ? width - text.size() : 0, ' ');
  return right ? blanks + text : text + blanks;
}

bool is_number(const Cell &cell) {
  return std::holds_alternative<std::int64_t>(cell) || std::holds_alternative<Hex>(cell) ||
         std::holds_alternative<Size>(cell) || std::holds_alternative<Address>(cell);
}

std::string without_trailing_blanks(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

std::string table_text(const Rows &table) {
  const std::size_t count = table.columns.size();
  std::vector<std::size_t> widths(count);
  std::vector<bool> right(count, !table.rows.empty());
  for (std::size_t column = 0; column < count; ++column) {
    widths[column] = table.columns[column].size();
    for (const auto &row : table.rows) {
      widths[column] = std::max(widths[column], as_text(row[column]).size());
      right[column] = right[column] && is_number(row[column]);
    }
  }
  const auto line_of = [&](const auto &text_of) {
    std::string line;
    for (std::size_t column = 0; column < count; ++column) {
      line += std::string(kGap, ' ') + padded(text_of(column), widths[column], right[column]);
    }
    return without_trailing_blanks(line) + "\n";
  };
  std::string text = shown_name(table.name) + (table.rows.empty() ? ": none\n" : ":\n");
  if (table.rows.empty()) {
    return text;
  }
  text += line_of([&](std::size_t column) { return shown_name(table.columns[column]); });
  for (const auto &row : table.rows) {
    text += line_of([&](std::size_t column) { return as_text(row[column]); });
  }
  return text;
}

}  // namespace

std::string as_text(const Cell &cell) {
  if (const auto *text = std::get_if<std::string>(&cell)) {
    return *text;
  }
  if (const auto *number = std::get_if<std::int64_t>(&cell)) {
    return std::to_string(*number);
  }
  if (const auto *size = std::get_if<Size>(&cell)) {
    return std::to_string(size->bytes);
  }
  if (const auto *address = std::get_if<Address>(&cell)) {
    return hex(address->value);
  }
  if (const auto *printed = std::get_if<Printed>(&cell)) {
    return printed->text;
  }
  if (const bool *flag = std::get_if<bool>(&cell)) {
    return *flag ? "yes" : "no";
  }
  return hex(std::get<Hex>(cell).value);
}

bool Answer::has_window() const {
  return std::any_of(items_.begin(), items_.end(),
                     [](const Item &item) { return std::holds_alternative<Window>(item); });
}

std::string as_text(const Answer &answer, bool for_terminal) {
  std::size_t width = 0;
  for (const Answer::Item &item : answer.items()) {
    if (const auto *field = std::get_if<Field>(&item)) {
      width = std::max(width, field->name.size());
    }
  }
  std::string text;
  for (const Answer::Item &item : answer.items()) {
    if (const auto *field = std::get_if<Field>(&item)) {
      text += without_trailing_blanks(padded(shown_name(field->name), width + kGap, false) +
                                      as_text(field->value)) +
              "\n";
    } else if (const auto *table = std::get_if<Rows>(&item)) {
      text += table_text(*table);
    } else if (const auto *window = std::get_if<Window>(&item)) {
      for (const std::string &line : window->lines) {
        text += (for_terminal ? as_utf8(line) : line) + "\n";
      }
    } else {
      text += std::get<Remark>(item).text + "\n";
    }
  }
  return text;
}

}  // namespace node
