// What a command answers: named values, tables and remarks, in order. The same answer is rendered
// as text for people and as JSON for programs, so a name stands in both; text shows '_' as a blank.
#ifndef NODE_ANSWER_HPP
#define NODE_ANSWER_HPP

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/base.h"

namespace node {

// A number that people read in base 16; JSON has it as a number.
struct Hex {
  u32 value = 0;
};

// A number of bytes that follows the machine's word size.
struct Size {
  std::int64_t bytes = 0;
};

// A value that may be an address; shown in base 16.
struct Address {
  u32 value = 0;
};

// A text with an address in it.
struct Printed {
  std::string text;
};

using Cell = std::variant<std::string, std::int64_t, bool, Hex, Size, Address, Printed>;

// Any integer, a text or a flag as a cell.
inline Cell cell(std::string text) {
  return Cell(std::move(text));
}
inline Cell cell(const char *text) {
  return Cell(std::string(text));
}
inline Cell cell(bool flag) {
  return Cell(flag);
}
inline Cell cell(Hex hex) {
  return Cell(hex);
}
inline Size size_of(std::size_t bytes) {
  return {static_cast<std::int64_t>(bytes)};
}
inline Cell cell(Size size) {
  return Cell(size);
}
inline Cell cell(Cell made) {
  return made;
}
template <class Integer>
Cell cell(Integer number) {
  return Cell(static_cast<std::int64_t>(number));
}

struct Field {
  std::string name;
  Cell value;
};

struct Rows {
  std::string name;
  std::vector<std::string> columns;
  std::vector<std::vector<Cell>> rows;

  template <class... Values>
  void add(Values... values) {
    rows.push_back({cell(std::move(values))...});
  }
};

struct Remark {
  std::string text;
};

// What the debug window printed, as lines without line breaks whose bytes are as the library gave
// them: GBK in places.
struct Window {
  std::vector<std::string> lines;
};

class Answer {
 public:
  using Item = std::variant<Field, Rows, Remark, Window>;

  template <class Value>
  Answer &field(std::string name, Value value) {
    items_.push_back(Field{std::move(name), cell(std::move(value))});
    return *this;
  }
  // The reference is good until the next item is added.
  Rows &rows(std::string name, std::vector<std::string> columns) {
    items_.push_back(Rows{std::move(name), std::move(columns), {}});
    return std::get<Rows>(items_.back());
  }
  // For people; JSON has it under "remarks".
  Answer &remark(std::string text) {
    items_.push_back(Remark{std::move(text)});
    return *this;
  }
  // JSON has it under "window".
  Answer &window(std::vector<std::string> lines) {
    items_.push_back(Window{std::move(lines)});
    return *this;
  }
  bool has_window() const;

  std::vector<Item> &items() { return items_; }
  const std::vector<Item> &items() const { return items_; }

 private:
  std::vector<Item> items_;
};

// A value as people read it: "yes", "0x36", "17".
std::string as_text(const Cell &cell);
// A window's bytes stay as they are unless the text goes to a terminal.
std::string as_text(const Answer &answer, bool for_terminal = false);
// One line without a line break; with the line that was answered as its first member, if there is
// one.
std::string as_json(const Answer &answer, const std::string &line = "");

}  // namespace node

#endif
