#include "node/script_state.hpp"

#include <algorithm>

#include "node/numerals.hpp"

namespace node {
namespace {

std::optional<std::string> cell_of(const Rows &table, const std::string &place) {
  if (place == "count") {
    return std::to_string(table.rows.size());
  }
  const std::size_t dot = place.find('.');
  const auto row = number_of(place.substr(0, dot));
  if (!row || *row >= table.rows.size() || dot == std::string::npos) {
    return std::nullopt;
  }
  const auto column = std::find(table.columns.begin(), table.columns.end(), place.substr(dot + 1));
  if (column == table.columns.end()) {
    return std::nullopt;
  }
  return as_text(table.rows[*row][static_cast<std::size_t>(column - table.columns.begin())]);
}

// "ptps.0-3.{ptp place}"; nothing when the table is empty.
std::string columns_of(const Rows &table) {
  if (table.rows.empty()) {
    return "";
  }
  std::string names;
  for (const std::string &column : table.columns) {
    names += (names.empty() ? "" : " ") + column;
  }
  const std::size_t last = table.rows.size() - 1;
  return ", " + table.name + (last == 0 ? ".0" : ".0-" + std::to_string(last)) + ".{" + names + "}";
}

}  // namespace

Marks marks_of(const Node &node) {
  Marks marks;
  marks.events = node.events_total();
  for (const auto &side : node.sides()) {
    marks.errors.push_back(side->host.errors.total());
    marks.calls.push_back(side->host.journal.total());
  }
  return marks;
}

std::optional<std::string> field_of(const Answer &answer, const std::string &path) {
  const std::size_t dot = path.find('.');
  for (const Answer::Item &item : answer.items()) {
    if (const auto *field = std::get_if<Field>(&item); field != nullptr && field->name == path) {
      return as_text(field->value);
    }
    const auto *table = std::get_if<Rows>(&item);
    if (table != nullptr && dot != std::string::npos && table->name == path.substr(0, dot)) {
      return cell_of(*table, path.substr(dot + 1));
    }
  }
  return std::nullopt;
}

std::string fields_of(const Answer &answer) {
  std::string names;
  for (const Answer::Item &item : answer.items()) {
    std::string name;
    if (const auto *field = std::get_if<Field>(&item)) {
      name = field->name;
    } else if (const auto *table = std::get_if<Rows>(&item)) {
      name = table->name + ".count" + columns_of(*table);
    }
    names += (names.empty() || name.empty() ? "" : ", ") + name;
  }
  return names.empty() ? "none" : names;
}

}  // namespace node
