#include "bench/rivals.hpp"

#include <cstdlib>

#include "bench/rival_map.hpp"
#include "bench/rival_redis.hpp"
#include "bench/rival_sqlite.hpp"
#include "bench/rows.hpp"

namespace bench {

namespace {

[[maybe_unused]] constexpr size_t sqlite_batch = 256;
[[maybe_unused]] constexpr size_t redis_batch = 32;

[[maybe_unused]] const char *redis_socket() {
  return std::getenv("PM_BENCH_REDIS");
}

[[maybe_unused]] u64 answer(const std::optional<u32> &found) {
  return found ? *found : u64{PM_ERR_PTP_NOT_EXIST};
}

// What was found in the hash map.
u64 type_in(const PtpDynPubData *found) {
  return found == nullptr ? u64{PM_ERR_PTP_NOT_EXIST} : found->usPtpType;
}
u64 mask_in(const PtpDynPubData *found) {
  return found == nullptr ? u64{PM_ERR_PTP_NOT_EXIST} : found->ulVsMask;
}
u64 id_in(const u16 *found) {
  return found == nullptr ? u64{PM_ERR_PTP_NOT_EXIST} : *found;
}

}  // namespace

Rivals::Rivals(const World &world, bool wanted) {
  if (!wanted) {
    return;
  }
  map_ = std::make_unique<HashMap>(world);
#ifdef PM_BENCH_SQLITE
  sqlite_ = std::make_unique<Sqlite>(world);
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_socket() != nullptr) {
    redis_ = std::make_unique<Redis>(world, redis_socket());
  }
#endif
}

Rivals::~Rivals() = default;

std::vector<std::string> Rivals::absent() {
  std::vector<std::string> lines;
#ifndef PM_BENCH_SQLITE
  lines.emplace_back("SQLite does not take part: its development package was not found");
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_socket() == nullptr) {
    lines.emplace_back("Redis does not take part: no server (PM_BENCH_REDIS is not set)");
  }
#else
  lines.emplace_back("Redis does not take part: its client's development package was not found");
#endif
  return lines;
}

void Rivals::add_field(const World &world, const std::string &field, std::vector<Contender> &to) {
  const bool type = field == "type";
  if (map_) {
    const auto ask_type = [this](u16 id) -> u64 { return type_in(map_->find(id)); };
    const auto ask_mask = [this](u16 id) -> u64 { return mask_in(map_->find(id)); };
    to.push_back(
        {"unordered_map", type ? asking_ptps(world, ask_type) : asking_ptps(world, ask_mask)});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    const auto query = sqlite_->prepare("select " + field + " from ptp where id = ?");
    to.push_back({"SQLite",
                  asking_ptps(world, [query](u16 id) { return answer(query->run(u32{id})); }),
                  Clock::thread, sqlite_batch});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    const std::string command = "HGET ptp:%u " + field;
    to.push_back({"Redis",
                  asking_ptps(world,
                              [this, command](u16 id) {
                                return answer(redis_->ask(command.c_str(), unsigned{id}));
                              }),
                  Clock::wall, redis_batch});
  }
#endif
}

void Rivals::add_place(const World &world, std::vector<Contender> &to) {
  const auto key = [ptps = world.ptps()](u16 id) { return place_key(dynamic_record(ptps, id)); };
  if (map_) {
    std::vector<u32> keys;
    for (const u16 id : world.ids()) {
      keys.push_back(key(id));
    }
    to.push_back({"unordered_map", asking([this, keys](size_t question) -> u64 {
                    return id_in(map_->find_place(keys[question % keys.size()]));
                  })});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    const auto query = sqlite_->prepare("select id from ptp where place = ?");
    to.push_back({"SQLite", asking_ptps(world, [=](u16 id) { return answer(query->run(key(id))); }),
                  Clock::thread, sqlite_batch});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    to.push_back(
        {"Redis",
         asking_ptps(
             world, [this, key](u16 id) { return answer(redis_->ask("HGET places %u", key(id))); }),
         Clock::wall, redis_batch});
  }
#endif
}

void Rivals::add_absent_place(const World & /*world*/, std::vector<Contender> &to) {
  constexpr u32 nowhere = 0xFFFF0001;
  if (map_) {
    to.push_back({"unordered_map", asking([this](size_t question) {
                    return id_in(map_->find_place(nowhere - static_cast<u32>(question % 2)));
                  }),
                  Clock::thread, sqlite_batch});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    const auto query = sqlite_->prepare("select id from ptp where place = ?");
    to.push_back({"SQLite", asking([query](size_t) { return answer(query->run(u32{nowhere})); }),
                  Clock::thread, sqlite_batch});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    to.push_back({"Redis",
                  asking([this](size_t) { return answer(redis_->ask("HGET places %u", nowhere)); }),
                  Clock::wall, redis_batch});
  }
#endif
}

// The hash map and the Redis hashes have no order of places.
void Rivals::add_next([[maybe_unused]] const World &world,
                      [[maybe_unused]] std::vector<Contender> &to) {
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    const auto query =
        sqlite_->prepare("select id from ptp where place > ? order by place limit 1");
    to.push_back({"SQLite",
                  asking_ptps(world,
                              [query, ptps = world.ptps()](u16 id) -> u64 {
                                const auto next = query->run(place_key(dynamic_record(ptps, id)));
                                return next ? *next : u64{PM_ERR_NO_MORE};
                              }),
                  Clock::thread, sqlite_batch});
  }
#endif
}

void Rivals::add_fill(const World &world, std::vector<Contender> &to) {
  const u32 ptps = world.ptps();
  if (map_) {
    const auto empty = std::make_shared<HashMap>();
    to.push_back({"unordered_map", asking([empty, ptps](size_t question) -> u64 {
                    const auto id = static_cast<u16>(question);
                    empty->put(id, dynamic_record(ptps, id));
                    return 0;
                  }),
                  Clock::thread, 0, [empty] { *empty = {}; }});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    sqlite_->create_table("filled");
    const auto put = sqlite_->prepare("insert or replace into filled values(?, ?, ?, ?)");
    to.push_back({"SQLite",
                  [this, put, ptps](size_t, size_t) -> u64 {
                    sqlite_->put_all(*put, ptps);
                    return 0;
                  },
                  Clock::thread, 0, [this] { sqlite_->execute("delete from filled"); }});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    to.push_back({"Redis",
                  [this, ptps](size_t, size_t) -> u64 {
                    redis_->put_all(ptps, Redis::other_base);
                    return 0;
                  },
                  Clock::wall, 0, [this] { redis_->empty(Redis::other_base); }});
  }
#endif
}

void Rivals::add_change(const World &world, std::vector<Contender> &to) {
  const u32 stride = world.ptps() / 64;
  const auto id_of = [stride](size_t question) { return static_cast<u16>(question % 64 * stride); };
  if (map_) {
    to.push_back({"unordered_map", asking([this, id_of](size_t question) -> u64 {
                    map_->change(id_of(question), static_cast<u32>(question));
                    return 0;
                  })});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    const auto update = sqlite_->prepare("update ptp set vs = ? where id = ?");
    to.push_back({"SQLite", asking([update, id_of](size_t question) -> u64 {
                    (void)update->run(u32{3}, u32{id_of(question)});
                    return 0;
                  }),
                  Clock::thread, sqlite_batch});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    to.push_back({"Redis", asking([this, id_of](size_t question) -> u64 {
                    (void)redis_->ask("HSET ptp:%u vs 3", unsigned{id_of(question)});
                    return 0;
                  }),
                  Clock::wall, redis_batch});
  }
#endif
}

void Rivals::add_search(const World &world, std::vector<Contender> &to) {
  if (map_) {
    to.push_back(
        {"unordered_map",
         asking_ptps(world,
                     [this](u16 id) { return id_in(map_->find_description(description_of(id))); }),
         Clock::thread, sqlite_batch});
  }
#ifdef PM_BENCH_SQLITE
  if (sqlite_) {
    sqlite_->put_descriptions(world.ptps());
    const auto query = sqlite_->prepare("select id from described where text = ?");
    to.push_back(
        {"SQLite",
         asking_ptps(world, [query](u16 id) { return answer(query->run(description_of(id))); }),
         Clock::thread, sqlite_batch});
  }
#endif
#ifdef PM_BENCH_REDIS_CLIENT
  if (redis_) {
    redis_->put_descriptions(world.ptps());
    to.push_back({"Redis",
                  asking_ptps(world,
                              [this](u16 id) {
                                return answer(
                                    redis_->ask("HGET described %s", description_of(id).c_str()));
                              }),
                  Clock::wall, redis_batch});
  }
#endif
}

}  // namespace bench
