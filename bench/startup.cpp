#include "bench/startup.hpp"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <utility>

#include "bench/world.hpp"

namespace bench {

namespace {

double processor_time() {
  timespec time{};
  (void)clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double nanoseconds(const timeval &time) {
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
}

struct Once {
  double process = 0;
  double laid = 0;
  double up = 0;
  double filled = 0;
};

Once run_once(u32 ptps) {
  int ends[2];
  if (pipe(ends) != 0) {
    throw std::runtime_error("no pipe");
  }
  const std::string number = std::to_string(ptps);
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("no process");
  }
  if (child == 0) {
    (void)dup2(ends[1], STDOUT_FILENO);
    (void)execl("/proc/self/exe", "pm_bench", "--start", number.c_str(), nullptr);
    std::_Exit(127);
  }
  (void)close(ends[1]);
  std::FILE *answer = fdopen(ends[0], "r");
  Once once;
  const int read = std::fscanf(answer, "%lf %lf %lf", &once.laid, &once.up, &once.filled);
  (void)std::fclose(answer);
  int status = 0;
  rusage used{};
  (void)wait4(child, &status, 0, &used);
  if (status != 0 || read != 3) {
    throw std::runtime_error("the process that is timed failed");
  }
  once.process = nanoseconds(used.ru_utime) + nanoseconds(used.ru_stime);
  return once;
}

std::size_t bytes_in_use(const host::Node &node) {
  std::size_t bytes = 0;
  for (u32 number = host::partition_static; number <= host::partition_dynamic; ++number) {
    bytes += node.memory.use(number).bytes;
  }
  return bytes;
}

}  // namespace

StartTimes measure_start(u32 ptps, int repetitions) {
  StartTimes times;
  for (int repetition = 0; repetition < repetitions; ++repetition) {
    const Once once = run_once(ptps);
    times.process.push_back(once.process);
    times.laid.push_back(once.laid);
    times.up.push_back(once.up);
    times.filled.push_back(once.filled);
  }
  return times;
}

void start(u32 ptps) {
  if (ptps != 0) {
    double last = processor_time();
    const auto lap = [&last] {
      const double now = processor_time();
      return now - std::exchange(last, now);
    };
    World world(ptps, World::Fill::nothing);
    const double up = lap();
    world.lay_records();
    const double laid = lap();
    world.deliver_batches();
    const double filled = lap();
    (void)std::printf("%.0f %.0f %.0f\n", laid, up, filled);
    (void)std::fflush(stdout);
    std::_Exit(0);  // up and filled is what is timed, not the end
  } else {
    (void)std::printf("0 0 0\n");
  }
  (void)std::fflush(stdout);
  std::_Exit(0);
}

MemoryUse memory_use(u32 ptps) {
  World world(ptps, World::Fill::nothing);
  std::size_t before = bytes_in_use(world.node);
  const auto grown = [&] {
    const std::size_t now = bytes_in_use(world.node);
    return static_cast<double>(now - std::exchange(before, now)) / ptps;
  };
  MemoryUse use;
  for (u32 i = 0; i < ptps; ++i) {
    (void)world.node.ddm.publish(PM_CLASS_DYNAMIC, i,
                                 host::view_of(dynamic_record(ptps, static_cast<u16>(i))));
  }
  world.node.run();
  use.dynamic = grown();
  for (u32 i = 0; i < ptps; ++i) {
    (void)world.node.ddm.publish(PM_CLASS_STATIC, i,
                                 host::view_of(static_record(ptps, static_cast<u16>(i))));
  }
  world.node.run();
  use.fixed = grown();
  for (u32 i = 0; i < ptps; ++i) {
    const PtpDynPubData at = dynamic_record(ptps, static_cast<u16>(i));
    u16 ptp_id = 0;
    (void)PM_LibGetPtpFromPhyIndex(at.usIndex1, static_cast<u8>(at.usIndex2), &ptp_id);
  }
  use.places = grown();
  return use;
}

}  // namespace bench
