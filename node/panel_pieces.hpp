// What the picture of a front panel is made of. Lengths are half pixels, so that everything is
// whole numbers and a picture is the same bytes on every machine.
#ifndef NODE_PANEL_PIECES_HPP
#define NODE_PANEL_PIECES_HPP

#include <string>
#include <string_view>

#include "node/panel.hpp"

namespace node {

constexpr int kPortHeight = 24;

// Style and patterns, the head of every picture.
const char *panel_style();

// Text of a file becomes text of the picture, whatever characters it has.
std::string escaped(std::string_view text);
// The first characters of a UTF-8 text, an ellipsis behind them when there are more.
std::string shortened(const std::string &text, int most);

std::string titled(const std::string &words);
std::string text(const char *style, int x, int y, const std::string &words);
// `more` is what else stands in the element: attributes with a blank before each.
std::string rect(int x, int y, int width, int height, const std::string &more = "");

// A port as a box with its number and the mark of its state.
std::string box(PortState state, int x, int y, int width, const std::string &label,
                const std::string &count = "", const std::string &title = "");
// Around the ports of a virtual system.
std::string outline(unsigned id, int x, int y, int width, int height);
// A virtual system's number on its colour.
std::string chip(unsigned id, int x, int y, int width);

}  // namespace node

#endif
