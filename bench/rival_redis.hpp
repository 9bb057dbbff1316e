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
    for (u32 i = 0; i < world.ptps(); ++i) {
      const PtpDynPubData record = dynamic_record(world.ptps(), static_cast<u16>(i));
      redisAppendCommand(context_, "HSET ptp:%u type %u vs %u", i, unsigned{record.usPtpType},
                         record.ulVsMask);
      redisAppendCommand(context_, "HSET places %u %u", place_key(record), i);
    }
    for (u32 i = 0; i < 2 * world.ptps(); ++i) {
      void *reply = nullptr;
      if (redisGetReply(context_, &reply) != REDIS_OK) {
        throw std::runtime_error("Redis: the records could not be stored");
      }
      freeReplyObject(reply);
    }
  }
  ~Redis() { redisFree(context_); }
  Redis(const Redis &) = delete;
  Redis &operator=(const Redis &) = delete;

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
  redisContext *context_;
};

#else

class Redis {};

#endif

}  // namespace bench

#endif
