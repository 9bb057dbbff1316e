// Arguments of steps, mostly sensible, sometimes at an edge, sometimes anything.
#ifndef NODE_SOAK_DRAW_HPP
#define NODE_SOAK_DRAW_HPP

#include "node/soak_script.hpp"

namespace soak::draw {

// clang-format off
#define SOAK_DRAW(id, text) \
  u32 draw_##id(Random &random); \
  inline constexpr Draw id{text, draw_##id}

SOAK_DRAW(ptp, "ptp");
SOAK_DRAW(board, "board");
SOAK_DRAW(walk_board, "board");
SOAK_DRAW(port, "port");
SOAK_DRAW(index2, "index2");
SOAK_DRAW(frame, "frame");
SOAK_DRAW(slot, "slot");
SOAK_DRAW(type, "type");
SOAK_DRAW(ptp_class, "class");
SOAK_DRAW(exist, "exist");
SOAK_DRAW(invisible, "invisible");
SOAK_DRAW(filter, "filter");
SOAK_DRAW(vs, "vs");
SOAK_DRAW(mask, "mask");
SOAK_DRAW(selector, "selector");
SOAK_DRAW(prim, "prim");
SOAK_DRAW(function, "function");
SOAK_DRAW(suffix, "suffix");
SOAK_DRAW(null, "null");      // now and then a null pointer
SOAK_DRAW(there, "buffer");   // never one
SOAK_DRAW(length, "length");
SOAK_DRAW(spec_index, "index");
SOAK_DRAW(desc_length, "length");
SOAK_DRAW(any, "value");
SOAK_DRAW(byte, "byte");
SOAK_DRAW(desc, "text");
SOAK_DRAW(answer, "answer");
SOAK_DRAW(ticks, "ticks");
SOAK_DRAW(deed, "deed");
SOAK_DRAW(yes, "yes");        // 0 or 1
SOAK_DRAW(few, "few");        // 0 to 3
SOAK_DRAW(bits, "bits");
SOAK_DRAW(pid, "pid");
SOAK_DRAW(count, "count");
SOAK_DRAW(max_ptp, "max");
SOAK_DRAW(types, "types");
SOAK_DRAW(max_type, "max");
SOAK_DRAW(command, "command");
SOAK_DRAW(fault, "fault");
SOAK_DRAW(nth, "nth");
SOAK_DRAW(word, "word");
#undef SOAK_DRAW
// clang-format on

// The text of that number: lengths around every limit.
std::string text_of(u32 number);
// Host functions that are made to fail.
host::Fn faulty_function(u32 number);
u32 number_of(host::Fn faulty);  // the other way
// A kind of step that is likely to call the function; null: none in particular.
const char *caller_of(host::Fn faulty, Random &random);

}  // namespace soak::draw

#endif
