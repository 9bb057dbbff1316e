// What a programmer might use instead of the library, with the same records in it: a standard hash
// map, SQLite in memory with prepared statements, and a Redis server on a private Unix socket. The
// last two take part where their development packages were found; Redis also needs its server,
// whose socket the environment variable PM_BENCH_REDIS names.
#ifndef BENCH_RIVALS_HPP
#define BENCH_RIVALS_HPP

#include <memory>
#include <string>
#include <vector>

#include "bench/row.hpp"
#include "bench/world.hpp"

namespace bench {

class HashMap;
class Sqlite;
class Redis;

class Rivals {
 public:
  // `wanted`: without it there are no rivals, and nothing is filled.
  Rivals(const World &world, bool wanted);
  ~Rivals();
  Rivals(const Rivals &) = delete;
  Rivals &operator=(const Rivals &) = delete;

  // Why a rival does not take part, a line each.
  static std::vector<std::string> absent();

  // One field of a record by PTP ID: "vs" or "type".
  void add_field(const World &world, const std::string &field, std::vector<Contender> &to);
  // The PTP at a place.
  void add_place(const World &world, std::vector<Contender> &to);
  void add_absent_place(const World &world, std::vector<Contender> &to);

  // The PTP behind a PTP in the order of places.
  void add_next(const World &world, std::vector<Contender> &to);
  // All records into an empty base.
  void add_fill(const World &world, std::vector<Contender> &to);
  // One field of one record set anew.
  void add_change(const World &world, std::vector<Contender> &to);
  // The PTP of a description.
  void add_search(const World &world, std::vector<Contender> &to);

 private:
  std::unique_ptr<HashMap> map_;
  std::unique_ptr<Sqlite> sqlite_;
  std::unique_ptr<Redis> redis_;
};

}  // namespace bench

#endif
