// Where a console's lines come from.
#ifndef NODE_SOURCE_HPP
#define NODE_SOURCE_HPP

#include <optional>
#include <string_view>

namespace node {

enum class Source {
  script,  // shown before they are carried out
  pipe,    // not shown
  prompt   // a mistake ends nothing
};

constexpr std::string_view kSourceNames[] = {"script", "pipe", "prompt"};

constexpr std::string_view name_of(Source source) {
  return kSourceNames[static_cast<std::size_t>(source)];
}

constexpr std::optional<Source> source_of(std::string_view name) {
  for (const Source source : {Source::script, Source::pipe, Source::prompt}) {
    if (name_of(source) == name) {
      return source;
    }
  }
  return std::nullopt;
}

}  // namespace node

#endif
