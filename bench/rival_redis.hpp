// A Redis server on a private Unix socket as a rival: a hash per PTP, a hash of places. Every
// question is a round trip to another process, so its time is that of the wall clock.
#ifndef BENCH_RIVAL_REDIS_HPP
#define BENCH_RIVAL_REDIS_HPP

#ifdef PM_BENCH_REDIS_CLIENT
#include <hiredis/hiredis.h>
#endif

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/rival_map.hpp"
#include "bench/world.hpp"

namespace bench {

#ifdef PM_BENCH_REDIS_CLIENT

class Redis {
 public:
  Redis(const World &world, const char *socket) : context_(redisConnectUnix(socket)) {
    if (context_ == nullptr || context_->err != 0) {
      throw std::runtime_error(std::string("Redis: no connection to ") + socket);
    }
    (void)ask("FLUSHALL");
    put_all(world.ptps(), 0);
  }
  ~Redis() { redisFree(context_); }
  Redis(const Redis &) = delete;
  Redis &operator=(const Redis &) = delete;

  static constexpr u32 other_base = 1;

  // All records at once, without waiting for each.
  void put_all(u32 ptps, u32 base) {
    append("SELECT %u", base);
    for (u32 i = 0; i < ptps; ++i) {
      const PtpDynPubData record = dynamic_record(ptps, static_cast<u16>(i));
      append("HSET ptp:%u type %u vs %u", i, unsigned{record.usPtpType}, unsigned{record.ulVsMask});
      append("HSET places %u %u", place_key(record), i);
    }
    append("SELECT 0");
    take_replies();
  }
  void put_descriptions(u32 ptps) {
    for (u32 i = 0; i < ptps; ++i) {
      append("HSET described %s %u", description_of(static_cast<u16>(i)).c_str(), i);
    }
    take_replies();
  }
  void empty(u32 base) {
    append("SELECT %u", base);
    append("FLUSHDB");
    append("SELECT 0");
    take_replies();
  }

  // The answer as a number; nothing when there is none.
  template <typename... Arguments>
  std::optional<u32> ask(const char *format, Arguments... arguments) {
    auto *reply = static_cast<redisReply *>(redisCommand(context_, format, arguments...));
    if (reply == nullptr) {
      throw std::runtime_error("Redis: no answer");
    }
    std::optional<u32> value;
    if (reply->type == REDIS_REPLY_STRING) {
      value = static_cast<u32>(std::strtoul(reply->str, nullptr, 10));
    }
    freeReplyObject(reply);
    return value;
  }

 private:
  template <typename... Arguments>
  void append(const char *format, Arguments... arguments) {
    redisAppendCommand(context_, format, arguments...);
    ++waiting_;
  }
  void take_replies() {
    for (; waiting_ != 0; --waiting_) {
      void *reply = nullptr;
      if (redisGetReply(context_, &reply) != REDIS_OK) {
        throw std::runtime_error("Redis: no answer");
      }
      freeReplyObject(reply);
    }
  }

  redisContext *context_;
  u32 waiting_ = 0;
};

#else

class Redis {};

#endif

}  // namespace bench

#endif
