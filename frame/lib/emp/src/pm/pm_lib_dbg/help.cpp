// Command 0: what the debug window's commands are for.
#include <initializer_list>

#include "platform/dbg.h"
#include "pm_debug_window.h"

namespace {

using HelpFunc = void (*)(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);

struct CommandHelp {
  u32 command;
  HelpFunc print;
};

constexpr CommandHelp command_helps[] = {
    {0, PM_LibHelpFunCmd1}, {1, PM_LibHelpFunCmd2}, {2, PM_LibHelpFunCmd3}, {3, PM_LibHelpFunCmd4},
    {4, PM_LibHelpFunCmd5}, {5, PM_LibHelpFunCmd6}, {6, PM_LibHelpFunCmd7}, {9, PM_LibHelpFunCmd10},
};

// The position of a detail line is the sub-command that it explains.
void print_help(u32 level, u32 command, const char *summary,
                std::initializer_list<const char *> details = {}) {
  if (level == PM_HELP_SUMMARY || level == PM_HELP_ALL) {
    DBG_PrintHelpInfoLevel0(PM_COMP_TYPE, command, summary);
  }
  if (level == PM_HELP_SUMMARY) {
    return;
  }
  u32 sub_command = 0;
  for (const char *detail : details) {
    DBG_PrintHelpInfo(PM_COMP_TYPE, command, PM_HELP_DETAIL, sub_command, 0, detail, 0, 0);
    ++sub_command;
  }
}

}  // namespace

void PM_LibDbgPrintHelp(u32 /*ulCommand*/, u32 /*ulSubCmd*/, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  PM_LibShowDebugHelp(PM_HELP_ALL, 0, 0, 0);
}

void PM_LibShowDebugHelp(u32 ulLevel, u32 ulCommand, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  if (ulLevel == PM_HELP_SUMMARY || ulLevel == PM_HELP_ALL) {
    PM_LibShowAllHelpFunc(ulLevel, 0, 0, 0);
  } else {
    PM_LibShowOneHelpFunc(ulCommand, 0, 0, 0);
  }
}

void PM_LibShowAllHelpFunc(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  for (const CommandHelp &help : command_helps) {
    help.print(ulLevel, 0, 0, 0);
  }
}

void PM_LibShowOneHelpFunc(u32 ulCommand, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  for (const CommandHelp &help : command_helps) {
    if (help.command == ulCommand) {
      help.print(PM_HELP_DETAIL, 0, 0, 0);
      return;
    }
  }
}

void PM_LibHelpFunCmd1(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 0, "Print help information of PM dbwin");
}

void PM_LibHelpFunCmd2(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 1, "Display or set dot switch", {"Display dot switch", "Set dot switch"});
}

void PM_LibHelpFunCmd3(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 2,
             "Query subline information registered, ulSubCmd=0x00 Query all type, "
             "ulSubCmd=PortType Query specificated port type");
}

// The two bytes in these texts are a full-width comma in the GBK code page.
void PM_LibHelpFunCmd4(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 3,
             "Query PTP information by PTPID\xA3\xAC"
             "ulSubCmd=PTPID");
}

void PM_LibHelpFunCmd5(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 4,
             "Query PTP information by F/S/P\xA3\xAC"
             "ulSubCmd=FrameID\xA3\xAC"
             "ulPara1=SlotID\xA3\xAC"
             "ulPara2=PortID");
}

void PM_LibHelpFunCmd6(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 5, "Query PTP specification");
}

void PM_LibHelpFunCmd7(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 6, "Query subline info");
}

void PM_LibHelpFunCmd10(u32 ulLevel, u32 /*ulPara1*/, u32 /*ulPara2*/, u32 /*ulPara3*/) {
  print_help(ulLevel, 9, "Display PM primaryWords functions, ulSubCmd=PrimType");
}
