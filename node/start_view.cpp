#include "node/start_view.hpp"

#include <iomanip>
#include <string>

#include "node/numerals.hpp"

namespace node {
namespace {

constexpr std::size_t kBarWidth = 30;
constexpr int kStepWidth = 28;
constexpr int kNameWidth = 20;
constexpr int kCountWidth = 6;

std::string bar(const Restore &restore) {
  const std::size_t full =
      restore.total == 0 ? kBarWidth : restore.delivered * kBarWidth / restore.total;
  return "[" + std::string(full, '#') + std::string(kBarWidth - full, '.') + "] ";
}

void show(std::ostream &out, const Restore &restore, bool with_bar) {
  out << "  restore " << hex(restore.class_id) << " " << std::left << std::setw(kNameWidth)
      << restore.class_name << (with_bar ? bar(restore) : "") << std::right
      << std::setw(kCountWidth) << restore.delivered << " records";
  if (restore.refused != 0) {
    out << ", " << restore.refused << " refused";
  }
}

}  // namespace

StartReport start_view(std::ostream &out, bool terminal) {
  StartReport report;
  report.step = [&out](const std::string &step, const std::string &outcome) {
    if (outcome.empty()) {
      out << step << "\n";
    } else {
      out << "  " << std::left << std::setw(kStepWidth) << step << " " << outcome << "\n";
    }
  };
  report.restore = [&out, terminal](const Restore &restore) {
    if (!terminal && !restore.finished) {
      return;
    }
    out << (terminal ? "\r" : "");
    show(out, restore, terminal);
    out << (restore.finished ? "\n" : "") << std::flush;
  };
  return report;
}

}  // namespace node
