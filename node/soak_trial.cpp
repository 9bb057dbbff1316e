#include "node/soak_trial.hpp"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace soak {

namespace {

constexpr std::size_t kTextRoom = 60'000;

// What the child tells.
struct Report {
  std::size_t step;
  bool done;
  bool mismatch;
  std::uint64_t digest;
  char expected[kTextRoom];
  char got[kTextRoom];
};

void copy_text(char (&to)[kTextRoom], const std::string &from) {
  const std::size_t size = std::min(from.size(), kTextRoom - 1);
  std::memcpy(to, from.data(), size);
  to[size] = 0;
}

void play(const Script &script, Report &report, bool portable, const std::string &transcript) {
  Play play(portable);
  std::ofstream said;
  if (!transcript.empty()) {
    said.open(transcript, std::ios::binary);
  }
  for (std::size_t i = 0; i < script.size(); ++i) {
    report.step = i;
    const auto mismatch = play.step(script[i]);
    if (said.is_open()) {
      said << "# " << text_of(script[i]) << "\n" << play.library.said;
    }
    if (mismatch) {
      copy_text(report.expected, mismatch->expected);
      copy_text(report.got, mismatch->got);
      report.mismatch = true;
      return;
    }
  }
  report.step = script.size();
  report.digest = play.digest();
  report.done = true;
}

std::string end_of_child(int status) {
  if (!WIFSIGNALED(status)) {
    return "the process exited with " + std::to_string(WEXITSTATUS(status)) + "\n";
  }
  const int number = WTERMSIG(status);
  return number == SIGALRM ? "no end of the step\n"
                           : "the process ended by " + std::string(strsignal(number)) + "\n";
}

Outcome try_in_child(const Script &script, unsigned limit_seconds, bool portable,
                     const std::string &transcript) {
  void *shared =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) {
    throw std::runtime_error("no memory for a trial");
  }
  auto &report = *static_cast<Report *>(shared);
  const auto began = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("no process for a trial");
  }
  if (child == 0) {
    alarm(limit_seconds);
    play(script, report, portable, transcript);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  Outcome outcome;
  outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
  outcome.steps = report.step;
  outcome.digest = report.digest;
  if (report.mismatch) {
    outcome.mismatch = Mismatch{report.step, report.expected, report.got};
  } else if (!report.done) {
    outcome.mismatch = Mismatch{report.step, "an answer\n", end_of_child(status)};
  }
  munmap(shared, sizeof(Report));
  return outcome;
}

}  // namespace

Outcome try_script(const Script &script, unsigned limit_seconds) {
  return try_in_child(script, limit_seconds, false, "");
}

Outcome try_portable(const Script &script, unsigned limit_seconds, const std::string &transcript) {
  return try_in_child(script, limit_seconds, true, transcript);
}

Script shrink(Script script, std::size_t failing_step) {
  constexpr unsigned limit_seconds = 5;
  constexpr std::size_t most_trials = 3'000;
  constexpr double most_seconds = 30;
  double spent = 0;
  std::size_t trials = 0;
  script.resize(std::min(script.size(), failing_step + 1));
  for (std::size_t chunk = script.size() / 2; chunk != 0; chunk /= 2) {
    for (std::size_t end = script.size(); end > 0 && script.size() > 1;) {
      const std::size_t begin = end > chunk ? end - chunk : 0;
      Script shorter = script;
      shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(begin),
                    shorter.begin() + static_cast<std::ptrdiff_t>(std::min(end, shorter.size())));
      if (++trials > most_trials || spent > most_seconds) {
        return script;
      }
      const Outcome outcome = try_script(shorter, limit_seconds);
      spent += outcome.seconds;
      if (outcome.mismatch) {
        shorter.resize(std::min(shorter.size(), outcome.mismatch->step + 1));
        script = std::move(shorter);
      }
      end = std::min(begin, script.size());
    }
  }
  return script;
}

}  // namespace soak
