// A parsed TOML file as plain values that remember where they stand, and the checked reading of its
// tables. What the keys mean is the business of whoever reads them.
#ifndef NODE_DOCUMENT_HPP
#define NODE_DOCUMENT_HPP

#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace node {

// A fault of a file or an argument of the user: one line for him, nothing has been started.
struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Opens a file to read it; an InputError says what was expected when there is none, or a folder.
std::ifstream open_input(const std::string &file, const std::string &expected);

struct Position {
  unsigned line = 0;
  unsigned column = 0;
};

struct Member;

struct Value {
  Position at;
  std::variant<std::int64_t, bool, double, std::string, std::vector<Value>, std::vector<Member>>
      data;
};

struct Member {
  std::string key;
  Position at;
  Value value;
};

struct Document {
  std::string file;
  Value root;

  // The error line of this file: "FILE:LINE:COLUMN: what; expected ...".
  [[noreturn]] void fail(Position at, const std::string &what, const std::string &expected) const;
};

// The bytes of a file; nothing when it cannot be read.
std::optional<std::string> content_of_file(const std::string &file);

// Reads and parses a file; a syntax error is an InputError too.
Document read_document(const std::string &file);
// The same from text; `file` is the name used in errors.
Document parse_document(std::string_view text, const std::string &file);

// The numbers of a list such as "1-7,9", in the order written.
struct NumberList {
  Position at;
  std::vector<unsigned> numbers;
};

// One table, its keys checked against the known ones.
class Table {
 public:
  // `title` names the table in errors, as the file writes it: "[[board]]".
  Table(const Document &document, const Value &value, std::string title,
        std::initializer_list<std::string_view> known_keys);

  Position at() const { return value_.at; }
  // Where a key's value stands; the table itself when the key is missing.
  Position at(std::string_view key) const;
  bool has(std::string_view key) const { return find(key) != nullptr; }
  // The value of a key that the table has.
  const Value &value(std::string_view key) const { return find(key)->value; }

  unsigned number(std::string_view key, unsigned lowest, unsigned highest) const;
  unsigned number_or(std::string_view key, unsigned lowest, unsigned highest,
                     unsigned otherwise) const;
  bool flag_or(std::string_view key, bool otherwise) const;
  std::string text(std::string_view key) const;
  std::string text_or(std::string_view key, std::string_view otherwise) const;
  // "0-7,9" or a single integer.
  NumberList list(std::string_view key, unsigned lowest, unsigned highest) const;
  // The tables of [[key]] or of an array of inline tables; none when the key is missing.
  std::vector<const Value *> tables(std::string_view key) const;

  [[noreturn]] void fail(Position at, const std::string &what, const std::string &expected) const {
    document_.fail(at, what, expected);
  }

 private:
  const Member *find(std::string_view key) const;
  const Member &need(std::string_view key, const std::string &expected) const;
  [[noreturn]] void mistyped(const Member &member, const std::string &expected) const;

  const Document &document_;
  const Value &value_;
  const std::vector<Member> *members_ = nullptr;
  std::string title_;
};

}  // namespace node

#endif
