// Answers for programs.
#include <nlohmann/json.hpp>

#include "node/answer.hpp"
#include "node/gbk.hpp"

namespace node {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const Cell &cell) {
  if (const auto *hex = std::get_if<Hex>(&cell)) {
    return hex->value;
  }
  if (const auto *text = std::get_if<std::string>(&cell)) {
    return *text;
  }
  if (const auto *number = std::get_if<std::int64_t>(&cell)) {
    return *number;
  }
  if (const auto *size = std::get_if<Size>(&cell)) {
    return size->bytes;
  }
  if (const auto *address = std::get_if<Address>(&cell)) {
    return address->value;
  }
  if (const auto *printed = std::get_if<Printed>(&cell)) {
    return printed->text;
  }
  return std::get<bool>(cell);
}

}  // namespace

std::string as_json(const Answer &answer, const std::string &line) {
  Json json = Json::object();
  if (!line.empty()) {
    json["line"] = line;
  }
  for (const Answer::Item &item : answer.items()) {
    if (const auto *field = std::get_if<Field>(&item)) {
      json[field->name] = json_of(field->value);
    } else if (const auto *table = std::get_if<Rows>(&item)) {
      Json rows = Json::array();
      for (const auto &row : table->rows) {
        Json object = Json::object();
        for (std::size_t column = 0; column < row.size(); ++column) {
          object[table->columns[column]] = json_of(row[column]);
        }
        rows.push_back(std::move(object));
      }
      json[table->name] = std::move(rows);
    } else if (const auto *window = std::get_if<Window>(&item)) {
      Json lines = Json::array();
      for (const std::string &printed : window->lines) {
        lines.push_back(as_utf8(printed));
      }
      json["window"] = std::move(lines);
    } else {
      json["remarks"].push_back(std::get<Remark>(item).text);
    }
  }
  // Bytes that are no UTF-8 (of a description, say) must not end the run.
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace node
