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
    template <typename... Values>
    std::optional<u32> run(const Values &...values) {
      int column = 0;
      (bind(++column, values), ...);
      std::optional<u32> value;
      if (sqlite3_step(statement_) == SQLITE_ROW) {
        value = static_cast<u32>(sqlite3_column_int64(statement_, 0));
      }
      sqlite3_reset(statement_);
      return value;
    }

   private:
    void bind(int column, u32 value) { sqlite3_bind_int64(statement_, column, value); }
    void bind(int column, const std::string &text) {
      sqlite3_bind_text(statement_, column, text.c_str(), -1, SQLITE_TRANSIENT);
    }

    sqlite3_stmt *statement_ = nullptr;
  };

  explicit Sqlite(const World &world) {
    sqlite3_open(":memory:", &base_);
    create_table("ptp");
    put_all(*prepare("insert or replace into ptp values(?, ?, ?, ?)"), world.ptps());
  }
  ~Sqlite() { sqlite3_close_v2(base_); }
  Sqlite(const Sqlite &) = delete;
  Sqlite &operator=(const Sqlite &) = delete;

  void create_table(const std::string &name) {
    execute("create table " + name +
            "(id integer primary key, place integer, type integer, vs integer)");
    execute("create unique index " + name + "_place on " + name + "(place)");
  }
  void put_all(Statement &put, u32 ptps) {
    execute("begin");
    for (u32 i = 0; i < ptps; ++i) {
      const PtpDynPubData record = dynamic_record(ptps, static_cast<u16>(i));
      (void)put.run(i, place_key(record), u32{record.usPtpType}, u32{record.ulVsMask});
    }
    execute("commit");
  }
  void put_descriptions(u32 ptps) {
    execute("create table described(text text primary key, id integer)");
    const auto put = prepare("insert into described values(?, ?)");
    execute("begin");
    for (u32 i = 0; i < ptps; ++i) {
      (void)put->run(description_of(static_cast<u16>(i)), i);
    }
    execute("commit");
  }

  void execute(const std::string &text) {
    if (sqlite3_exec(base_, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(base_));
    }
  }
  std::shared_ptr<Statement> prepare(const std::string &text) {
    return std::make_shared<Statement>(base_, text.c_str());
  }

 private:
  sqlite3 *base_ = nullptr;
};

#else

class Sqlite {};

#endif

}  // namespace bench

#endif
