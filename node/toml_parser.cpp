// Turns TOML text into a Document. The only file that sees the TOML library.
#include <toml++/toml.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "node/document.hpp"

namespace node {
namespace {

Position position_of(const toml::source_region &source) {
  return {source.begin.line, source.begin.column};
}

Value value_of(const toml::node &node);

std::vector<Member> members_of(const toml::table &table) {
  std::vector<Member> members;
  for (const auto &[key, node] : table) {
    members.push_back({std::string(key.str()), position_of(key.source()), value_of(node)});
  }
  return members;
}

Value value_of(const toml::node &node) {
  Value value{position_of(node.source()), {}};
  if (const auto *table = node.as_table()) {
    value.data = members_of(*table);
  } else if (const auto *array = node.as_array()) {
    std::vector<Value> values;
    for (const toml::node &element : *array) {
      values.push_back(value_of(element));
    }
    value.data = std::move(values);
  } else if (const auto *text = node.as_string()) {
    value.data = text->get();
  } else if (const auto *flag = node.as_boolean()) {
    value.data = flag->get();
  } else if (const auto *integer = node.as_integer()) {
    value.data = integer->get();
  } else {
    // Dates and fractions have no use here: they only have to be told from the other types.
    value.data = 0.0;
  }
  return value;
}

}  // namespace

Document parse_document(std::string_view text, const std::string &file) {
  Document document{file, {}};
  try {
    const toml::table table = toml::parse(text, file);
    document.root.at = {1, 1};
    document.root.data = members_of(table);
  } catch (const toml::parse_error &error) {
    document.fail(position_of(error.source()), std::string(error.description()), "TOML");
  }
  return document;
}

Document read_document(const std::string &file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw InputError(file + ": cannot be opened; expected a readable file");
  }
  const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  return parse_document(text, file);
}

}  // namespace node
