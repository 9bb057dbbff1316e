// The manual page docs/man/pmnode.1, printed from the options and the commands themselves.
#ifndef NODE_MANUAL_HPP
#define NODE_MANUAL_HPP

#include <string>
#include <vector>

namespace node {

// An option as its manual has it: "--chassis", "FILE", one sentence.
struct OptionText {
  std::string name;   // empty for an argument that is told by its position
  std::string value;  // empty for a flag
  std::string what;
  bool required = false;
  bool repeated = false;
};

// Options of the program itself, or of one of its subcommands.
struct OptionGroup {
  std::string subcommand;  // empty: the program itself
  std::string what;
  std::vector<OptionText> options;
};

// In the mdoc language.
std::string manual_page(const std::vector<OptionGroup> &groups);

}  // namespace node

#endif
