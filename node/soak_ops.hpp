// How kinds of steps are told: a function of the interface that is asked on both stages, or one
// that is written once and played by the library and by the model.
#ifndef NODE_SOAK_OPS_HPP
#define NODE_SOAK_OPS_HPP

#include <cstring>
#include <type_traits>
#include <utility>

#include "node/soak_draw.hpp"
#include "node/soak_model.hpp"

namespace soak {

struct Library {
// NOLINTNEXTLINE(bugprone-macro-parentheses)
#define SOAK_DECLARE(name) static constexpr decltype(&::name) name = &::name;
  SOAK_FUNCTIONS(SOAK_DECLARE)
#undef SOAK_DECLARE
};

// Room for what a pointer argument points to. The same for both stages, so that a text which shows
// the address is the same too.
constexpr std::size_t kRoom = 256;
constexpr u8 kUntouched = 0xC5;
struct alignas(8) Room {
  u8 bytes[kRoom];
};
inline Room rooms[kMostArguments];

// Says what stands in a room, up to the last byte that was touched.
inline void say_room(Stage &stage, const Room &room) {
  std::size_t size = kRoom;
  while (size != 0 && room.bytes[size - 1] == kUntouched) {
    --size;
  }
  stage.say_bytes("out", room.bytes, size);
}

inline Room &fresh_room(std::size_t number) {
  std::memset(rooms[number].bytes, kUntouched, kRoom);
  return rooms[number];
}

// A value as it is; for a pointer, 1 means null.
template <class P>
P argument_of(u32 value, std::size_t number) {
  if constexpr (std::is_pointer_v<P>) {
    Room &room = fresh_room(number);
    return value == 1 ? nullptr : reinterpret_cast<P>(room.bytes);
  } else {
    return static_cast<P>(value);
  }
}

template <class R, class... P, std::size_t... i>
void ask(Stage &stage, R (*function)(P...), const u32 *values, std::index_sequence<i...>) {
  const std::tuple<P...> arguments{argument_of<P>(values[i], i)...};
  if constexpr (std::is_void_v<R>) {
    std::apply(function, arguments);
  } else {
    stage.say("answer", {static_cast<u32>(std::apply(function, arguments))});
  }
  [[maybe_unused]] const auto out = [&]([[maybe_unused]] const auto &argument, std::size_t number) {
    if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(argument)>>) {
      say_room(stage, rooms[number]);
    }
  };
  (out(std::get<i>(arguments), i), ...);
}

template <auto function>
struct Asked;
template <class R, class... P, R (*function)(P...)>
struct Asked<function> {
  static void run(Stage &stage, const u32 *values) {
    ask(stage, function, values, std::index_sequence_for<P...>{});
  }
};

// clang-format off
#define SOAK_ASK(weight, name, ...) \
  Op{#name, {__VA_ARGS__}, Asked<&::name>::run, Asked<&Model::name>::run, weight}
#define SOAK_BOTH(weight, text, function, ...) \
  Op{text, {__VA_ARGS__}, function<Library>, function<Model>, weight}
#define SOAK_SAME(weight, text, function, ...) \
  Op{text, {__VA_ARGS__}, function, function, weight}
// clang-format on

}  // namespace soak

#endif
