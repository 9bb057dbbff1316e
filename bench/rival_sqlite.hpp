// SQLite in memory as a rival: one table, an index over places, prepared statements.
#ifndef BENCH_RIVAL_SQLITE_HPP
#define BENCH_RIVAL_SQLITE_HPP

#ifdef PM_BENCH_SQLITE
#include <sqlite3.h>
#endif

#include <optional>
#include <stdexcept>
#include <string>

#include "bench/rival_map.hpp"
#include "bench/world.hpp"

namespace bench {

#ifdef PM_BENCH_SQLITE

class Sqlite {
 public:
  class Statement {
   public:
    Statement(sqlite3 *base, const char *text) {
      if (sqlite3_prepare_v2(base, text, -1, &statement_, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(base));
      }
    }
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;
    // The first column of the first row; nothing when there is no row.
    template <typename... Numbers>
    std::optional<u32> run(Numbers... numbers) {
      int column = 0;
      (sqlite3_bind_int64(statement_, ++column, numbers), ...);
      std::optional<u32> value;
      if (sqlite3_step(statement_) == SQLITE_ROW) {
        value = static_cast<u32>(sqlite3_column_int64(statement_, 0));
      }
      sqlite3_reset(statement_);
      return value;
    }

   private:
    sqlite3_stmt *statement_ = nullptr;
  };

  explicit Sqlite(const World &world) {
    sqlite3_open(":memory:", &base_);
    execute("create table ptp(id integer primary key, place integer, type integer, vs integer)");
    execute("create unique index ptp_place on ptp(place)");
    const auto put = prepare("insert or replace into ptp values(?, ?, ?, ?)");
    execute("begin");
    for (u32 i = 0; i < world.ptps(); ++i) {
      const PtpDynPubData record = dynamic_record(world.ptps(), static_cast<u16>(i));
      put->run(i, place_key(record), record.usPtpType, record.ulVsMask);
    }
    execute("commit");
  }
  ~Sqlite() { sqlite3_close_v2(base_); }
  Sqlite(const Sqlite &) = delete;
  Sqlite &operator=(const Sqlite &) = delete;

  void execute(const char *text) {
    if (sqlite3_exec(base_, text, nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(base_));
    }
  }
  std::shared_ptr<Statement> prepare(const char *text) {
    return std::make_shared<Statement>(base_, text);
  }

 private:
  sqlite3 *base_ = nullptr;
};

#else

class Sqlite {};

#endif

}  // namespace bench

#endif
