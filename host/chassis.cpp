#include "host/chassis.hpp"

#include <algorithm>
#include <utility>

namespace host {

Board Board::of(std::string kind, u16 outer_ports, u16 inner_ports, u8 type) {
  Board board;
  board.kind = std::move(kind);
  board.outer_ports = outer_ports;
  board.inner_ports = inner_ports;
  Port port;
  port.type = type;
  board.ports.assign(std::size_t{outer_ports} + inner_ports, port);
  return board;
}

Port &Board::port(u8 number) {
  if (number >= ports.size()) {
    ports.resize(std::size_t{number} + 1);
  }
  return ports[number];
}

void Chassis::add_frame(u16 frame, u8 slots) {
  remove_frame(frame);
  if (frame >= frames_.size()) {
    frames_.resize(std::size_t{frame} + 1);
  }
  frames_[frame].exists = true;
  frames_[frame].slots.resize(slots);
  for (u32 number = 0; number < slots; ++number) {
    const u32 bindex = u32{frame} * slots_per_frame + number;
    map(frame, static_cast<u8>(number), static_cast<u16>(bindex));
  }
}

void Chassis::remove_frame(u16 frame) {
  if (!has_frame(frame)) {
    return;
  }
  for (u32 &place : places_) {
    if (place != none && place >> 8 == frame) {
      place = none;
    }
  }
  frames_[frame] = {};
  while (!frames_.empty() && !frames_.back().exists) {
    frames_.pop_back();
  }
}

u16 Chassis::frame_count() const {
  return frame_count_ != 0 ? frame_count_
                           : static_cast<u16>(std::min<std::size_t>(frames_.size(), 0xFFFF));
}

bool Chassis::has_frame(u16 frame) const {
  return frame < frames_.size() && frames_[frame].exists;
}

u8 Chassis::slots(u16 frame) const {
  return has_frame(frame) ? static_cast<u8>(frames_[frame].slots.size()) : u8{0};
}

const Chassis::Slot *Chassis::slot(u16 frame, u8 slot) const {
  return has_frame(frame) && slot < frames_[frame].slots.size() ? &frames_[frame].slots[slot]
                                                                : nullptr;
}

Chassis::Slot *Chassis::slot(u16 frame, u8 slot) {
  return const_cast<Slot *>(std::as_const(*this).slot(frame, slot));
}

bool Chassis::insert(u16 frame, u8 slot_number, Board board) {
  Slot *at = slot(frame, slot_number);
  if (at == nullptr) {
    return false;
  }
  at->present = true;
  at->board = std::move(board);
  return true;
}

bool Chassis::remove(u16 frame, u8 slot_number) {
  Slot *at = slot(frame, slot_number);
  if (at == nullptr || !at->present) {
    return false;
  }
  at->present = false;
  at->board = {};
  return true;
}

const Board *Chassis::board(u16 frame, u8 slot_number) const {
  const Slot *at = slot(frame, slot_number);
  return at != nullptr && at->present ? &at->board : nullptr;
}

Board *Chassis::board(u16 frame, u8 slot_number) {
  return const_cast<Board *>(std::as_const(*this).board(frame, slot_number));
}

const Board *Chassis::board(u16 bindex) const {
  u16 frame = 0;
  u8 slot_number = 0;
  return place(bindex, frame, slot_number) ? board(frame, slot_number) : nullptr;
}

Board *Chassis::board(u16 bindex) {
  return const_cast<Board *>(std::as_const(*this).board(bindex));
}

bool Chassis::map(u16 frame, u8 slot_number, u16 bindex) {
  Slot *at = slot(frame, slot_number);
  if (at == nullptr) {
    return false;
  }
  const u32 here = u32{frame} << 8 | slot_number;
  if (at->bindex < places_.size() && places_[at->bindex] == here) {
    places_[at->bindex] = none;
  }
  if (bindex >= places_.size()) {
    places_.resize(std::size_t{bindex} + 1, none);
  }
  at->bindex = bindex;
  places_[bindex] = here;
  return true;
}

u32 Chassis::bindex(u16 frame, u8 slot_number) const {
  const Slot *at = slot(frame, slot_number);
  return at == nullptr ? none : at->bindex;
}

bool Chassis::place(u16 bindex, u16 &frame, u8 &slot_number) const {
  if (bindex >= places_.size() || places_[bindex] == none) {
    return false;
  }
  frame = static_cast<u16>(places_[bindex] >> 8);
  slot_number = static_cast<u8>(places_[bindex]);
  return true;
}

std::size_t Chassis::boards() const {
  std::size_t count = 0;
  for (const Frame &frame : frames_) {
    count += static_cast<std::size_t>(std::count_if(frame.slots.begin(), frame.slots.end(),
                                                    [](const Slot &s) { return s.present; }));
  }
  return count;
}

}  // namespace host
