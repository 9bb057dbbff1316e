// What a script knows between its lines: variables, the last answer, where everything that is
// counted stood before the last command, and the block that is being collected.
#ifndef NODE_SCRIPT_STATE_HPP
#define NODE_SCRIPT_STATE_HPP

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "node/answer.hpp"
#include "node/node.hpp"
#include "node/words.hpp"

namespace node {

// Where a node's events, error records and host calls stand; the latter two per side.
struct Marks {
  std::uint64_t events = 0;
  std::vector<std::uint64_t> errors;
  std::vector<std::uint64_t> calls;
};
Marks marks_of(const Node &node);

// A line, and its number in its file; 0 at a prompt.
struct NumberedLine {
  unsigned number = 0;
  std::string text;
};

// The lines between `repeat` and its `end`.
struct Block {
  u32 times = 0;
  std::string counter;  // the variable that counts from 0; empty: none
  unsigned begun_at = 0;
  unsigned depth = 1;  // blocks open in it
  std::vector<NumberedLine> lines;
};

struct ScriptState {
  Variables variables;
  Answer last;
  Marks before_last;
  std::optional<Block> block;
};

// A field of an answer as text: NAME, or TABLE.ROW.COLUMN with rows from 0, or TABLE.count.
std::optional<std::string> field_of(const Answer &answer, const std::string &path);
// The paths that field_of() knows in an answer, "a, b, ..".
std::string fields_of(const Answer &answer);

}  // namespace node

#endif
