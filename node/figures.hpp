// Figures of the machine in an answer: sizes in bytes that follow its word size, and addresses.
// Everything else is the same wherever a node runs. A recording keeps an answer's figures, and a
// replay shows them instead of its own.
#ifndef NODE_FIGURES_HPP
#define NODE_FIGURES_HPP

#include <string>
#include <vector>

#include "node/answer.hpp"

namespace node {

// Text that the library or a product printed, or a host call of the journal, as a cell: Printed
// when there may be an address in it, or the size of a record.
Cell printed_cell(std::string text);
// A number that the library gave: an Address when it may be one, else Hex.
Cell value_cell(u32 value);

// The figures of an answer in order: numbers as they are shown, texts with addresses as
// whole lines.
std::vector<std::string> figures_of(const Answer &answer);

// Puts figures in the place of an answer's own. Answers false, and leaves the rest alone, at the
// first one that differs by more than figures may: by its words, by a small number, by a number
// that is a result; with `same_width` by a size as well.
bool put_figures(Answer &answer, const std::vector<std::string> &figures, bool same_width);

}  // namespace node

#endif
