// What a word of a command line can become at the prompt.
#ifndef NODE_COMPLETION_HPP
#define NODE_COMPLETION_HPP

#include <string>
#include <string_view>
#include <vector>

namespace node {

// The words that can stand behind `before`, the line up to the word, and begin with `word`:
// commands at its begin and behind `help`, else the fixed words of the command's arguments and, for
// a command that takes one, the names of host functions.
std::vector<std::string> completions(std::string_view before, std::string_view word);

// The command of the line takes a file.
bool takes_file(std::string_view before);

}  // namespace node

#endif
