#include "node/start_view.hpp"

#include <cstdio>
#include <string>

namespace node {
namespace {

constexpr std::size_t kBarWidth = 30;
constexpr int kStepWidth = 28;

std::string bar(const Restore &restore) {
  const std::size_t full =
      restore.total == 0 ? kBarWidth : restore.delivered * kBarWidth / restore.total;
  return "[" + std::string(full, '#') + std::string(kBarWidth - full, '.') + "]";
}

std::string restore_line(const Restore &restore, bool with_bar) {
  char text[128];
  std::snprintf(text, sizeof text, "  restore 0x%x %-20s %s %6zu records",
                unsigned{restore.class_id}, restore.class_name,
                with_bar ? bar(restore).c_str() : "", restore.delivered);
  std::string line = text;
  if (restore.refused != 0) line += ", " + std::to_string(restore.refused) + " refused";
  return line;
}

}  // namespace

StartReport start_view(std::ostream &out, bool terminal) {
  StartReport report;
  report.step = [&out](const std::string &step, const std::string &outcome) {
    if (outcome.empty()) {
      out << step << "\n";
      return;
    }
    char text[160];
    std::snprintf(text, sizeof text, "  %-*s %s", kStepWidth, step.c_str(), outcome.c_str());
    out << text << "\n";
  };
  report.restore = [&out, terminal](const Restore &restore) {
    if (!terminal && !restore.finished) return;
    if (terminal) out << "\r";
    out << restore_line(restore, terminal) << (restore.finished ? "\n" : "") << std::flush;
  };
  return report;
}

}  // namespace node
