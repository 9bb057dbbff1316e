// A line of a script as words.
#ifndef NODE_WORDS_HPP
#define NODE_WORDS_HPP

#include <map>
#include <string>
#include <vector>

namespace node {

using Arguments = std::vector<std::string>;
using Variables = std::map<std::string, std::string>;

// Words are separated by blanks; a word that begins with '#' begins a comment. Double quotes keep
// blanks in a word; a backslash inside them takes the next character as it is.
Arguments words_of(const std::string &line);

// The same with $NAME or ${NAME} replaced by the variable's value, in quotes as well; "$$" is a
// dollar. What is put in is never split again. A variable that is not set, or a quote that is not
// closed, is a CommandError.
Arguments words_of(const std::string &line, const Variables &variables);

// A text as one word that means the text itself.
std::string quoted_word(const std::string &text);

// A letter or '_', then letters, digits and '_'.
bool is_variable_name(const std::string &text);

}  // namespace node

#endif
