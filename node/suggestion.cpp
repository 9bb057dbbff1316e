#include "node/suggestion.hpp"

#include <algorithm>
#include <numeric>

namespace node {
namespace {

// Letters to be put in, left out or replaced; two that changed places count twice.
std::size_t slips_between(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (const char letter : from) {
    std::size_t diagonal = row[0]++;
    for (std::size_t column = 1; column < row.size(); ++column) {
      const std::size_t replaced = diagonal + (letter == to[column - 1] ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({replaced, row[column] + 1, row[column - 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string suggestion(std::string_view word, const std::vector<std::string_view> &candidates) {
  // A third of the word may be wrong.
  std::size_t least = std::max<std::size_t>(word.size() / 3, 2) + 1;
  std::string_view nearest;
  for (const std::string_view candidate : candidates) {
    const std::size_t slips = slips_between(word, candidate);
    if (slips < least && slips < word.size()) {
      least = slips;
      nearest = candidate;
    }
  }
  return nearest.empty() ? "" : ", '" + std::string(nearest) + "' perhaps";
}

}  // namespace node
