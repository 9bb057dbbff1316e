// Debug output and the error recorder.
#include <algorithm>

#include "host/call.hpp"

DbgPrintInfo g_stDbgPrintInfo = {nullptr, 0};

namespace host {

void Debug::print(Fn printer, u32 selector, std::string text, std::vector<u32> numbers) {
  Line line;
  line.printer = printer;
  line.selector = selector;
  line.text = std::move(text);
  if (printer == Fn::DBG_InnerPrintReltime || printer == Fn::DBG_InnerPrintInfo) {
    line.file = g_stDbgPrintInfo.pcFile == nullptr ? "" : g_stDbgPrintInfo.pcFile;
    line.line = g_stDbgPrintInfo.ulLine;
  }
  line.cid = current_cid();
  line.tick = node_.clock.now();
  line.numbers = std::move(numbers);
  ++total_;
  if (sink_) {
    sink_(line);
  }
  if (capacity_ != 0) {
    if (lines_.size() >= capacity_) {
      lines_.pop_front();
    }
    lines_.push_back(std::move(line));
  }
}

std::vector<std::string> Debug::since(std::uint64_t mark) const {
  const std::uint64_t first_held = total_ - lines_.size();
  std::vector<std::string> texts;
  for (std::uint64_t i = std::max(mark, first_held); i < total_; ++i) {
    texts.push_back(lines_[static_cast<std::size_t>(i - first_held)].text);
  }
  return texts;
}

std::string Debug::text(std::initializer_list<Fn> printers) const {
  std::string joined;
  for (const Line &line : lines_) {
    if (printers.size() == 0 || std::count(printers.begin(), printers.end(), line.printer) != 0) {
      joined += line.text;
    }
  }
  return joined;
}

bool Debug::contains(std::string_view text) const {
  return std::any_of(lines_.begin(), lines_.end(),
                     [&](const Line &line) { return line.text.find(text) != std::string::npos; });
}

void Debug::add_long_call(const char *file, u32 line, u32 ticks, u32 prim_type,
                          const void *function) {
  constexpr std::size_t most_listed = 1'000;
  if (long_calls_.size() < most_listed) {
    long_calls_.push_back({file == nullptr ? "" : file, line, ticks, prim_type,
                           node_.journal.name_of_function(function), current_cid()});
  }
}

std::vector<ErrorRecord> ErrorRing::since(std::uint64_t mark) const {
  std::vector<ErrorRecord> records;
  std::copy_if(ring_.begin(), ring_.end(), std::back_inserter(records),
               [&](const ErrorRecord &record) { return record.number > mark; });
  return records;
}

std::vector<u32> ErrorRing::values_since(std::uint64_t mark) const {
  std::vector<u32> values;
  for (const ErrorRecord &record : ring_) {
    if (record.number > mark) {
      values.push_back(record.value);
    }
  }
  return values;
}

bool ErrorRing::contains(u32 value) const {
  return std::any_of(ring_.begin(), ring_.end(),
                     [&](const ErrorRecord &record) { return record.value == value; });
}

void ErrorRing::set_capacity(std::size_t capacity) {
  capacity_ = capacity;
  ring_.clear();
}

void ErrorRing::record(const char *file, u32 line, u32 value, u32 tick, u32 cid) {
  const std::string_view text = file == nullptr ? std::string_view{} : file;
  auto known = files_.find(text);
  if (known == files_.end()) {
    known = files_.emplace(text).first;
  }
  const ErrorRecord entry{++total_, *known, line, value, tick, cid};
  if (capacity_ != 0) {
    if (ring_.size() >= capacity_) {
      ring_.pop_front();
    }
    ring_.push_back(entry);
  }
  if (sink_) {
    sink_(entry);
  }
}

}  // namespace host

using namespace host;

u32 DBG_xPrintfSwitch(u32 ulSelector, u32 ulSwitchNo) {
  return call<Fn::DBG_xPrintfSwitch>([](Node &node) { return node.debug.print_switch; }, ulSelector,
                                     ulSwitchNo);
}

void DBG_SetDbwinLineNo(u32 ulLine) {
  call<Fn::DBG_SetDbwinLineNo>([&](Node &node) { node.debug.window_line = ulLine; }, ulLine);
}

void xPrintf(u32 ulCompType, const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const std::string text = format_text(pcFormat, arguments);
  va_end(arguments);
  call<Fn::xPrintf>([&](Node &node) { node.debug.print(Fn::xPrintf, ulCompType, text); },
                    ulCompType, text);
}

void DBG_InnerPrintReltime(u32 ulCompType, const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const std::string text = format_text(pcFormat, arguments);
  va_end(arguments);
  call<Fn::DBG_InnerPrintReltime>(
      [&](Node &node) { node.debug.print(Fn::DBG_InnerPrintReltime, ulCompType, text); },
      ulCompType, text);
}

void DBG_InnerPrintInfo(u32 ulCompTypeOrLevel, const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const std::string text = format_text(pcFormat, arguments);
  va_end(arguments);
  call<Fn::DBG_InnerPrintInfo>(
      [&](Node &node) { node.debug.print(Fn::DBG_InnerPrintInfo, ulCompTypeOrLevel, text); },
      ulCompTypeOrLevel, text);
}

void DBG_PrintHelpInfoLevel0(u32 ulCompType, u32 ulCommand, const char *pcText) {
  call<Fn::DBG_PrintHelpInfoLevel0>(
      [&](Node &node) {
        node.debug.print(Fn::DBG_PrintHelpInfoLevel0, ulCompType, pcText == nullptr ? "" : pcText,
                         {ulCommand});
      },
      ulCompType, ulCommand, pcText);
}

void DBG_PrintHelpInfo(u32 ulCompType, u32 ulCommand, u32 ulLevel, u32 ulSubCmd, u32 ulPara1,
                       const char *pcText, u32 ulPara2, u32 ulPara3) {
  call<Fn::DBG_PrintHelpInfo>(
      [&](Node &node) {
        node.debug.print(Fn::DBG_PrintHelpInfo, ulCompType, pcText == nullptr ? "" : pcText,
                         {ulCommand, ulLevel, ulSubCmd, ulPara1, ulPara2, ulPara3});
      },
      ulCompType, ulCommand, ulLevel, ulSubCmd, ulPara1, pcText, ulPara2, ulPara3);
}

void ERR_InnerRecErr(const char *pcFile, u32 ulLine, u32 ulValue) {
  call<Fn::ERR_InnerRecErr>(
      [&](Node &node) {
        node.errors.record(pcFile, ulLine, ulValue, node.clock.now(), current_cid());
      },
      pcFile, ulLine, ulValue);
}
