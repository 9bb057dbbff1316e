// What was meant by a word with a slip in it.
#ifndef NODE_SUGGESTION_HPP
#define NODE_SUGGESTION_HPP

#include <string>
#include <string_view>
#include <vector>

namespace node {

// ", 'status' perhaps" for the candidate that a few slips make the word of; nothing when none is
// near.
std::string suggestion(std::string_view word, const std::vector<std::string_view> &candidates);

}  // namespace node

#endif
