// Lines from a terminal: with editing, history and completion where readline was there to build
// with, plain ones elsewhere. One editor at a time.
#ifndef NODE_LINE_EDITOR_HPP
#define NODE_LINE_EDITOR_HPP

#include <optional>
#include <string>

namespace node {

class LineEditor {
 public:
  // The history is that of the file PMNODE_HISTORY names, ~/.pmnode_history if it is not set; an
  // empty PMNODE_HISTORY keeps none.
  LineEditor();
  ~LineEditor();
  LineEditor(const LineEditor &) = delete;
  LineEditor &operator=(const LineEditor &) = delete;

  // Nothing at the end of the input.
  std::optional<std::string> read(const std::string &prompt);

 private:
  std::string history_file_;
};

}  // namespace node

#endif
