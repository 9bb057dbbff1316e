// Device layer and port topology, answered from the chassis model.
#include <cstring>

#include "host/call.hpp"

using namespace host;

namespace {

u32 answer_attribute(u32 length, u32 value, u32 wanted_length, void *out) {
  if (out == nullptr) {
    return code_null;
  }
  if (length != wanted_length) {
    return code_length;
  }
  // Little-endian: the low bytes come first.
  std::memcpy(out, &value, wanted_length);
  return 0;
}

const Port *find_port(const Board *board, u8 port) {
  static const Port plain;
  if (board == nullptr || port >= board->outer_ports + board->inner_ports) {
    return nullptr;
  }
  return port < board->ports.size() ? &board->ports[port] : &plain;
}

}  // namespace

u16 DEV_GetMaxFrameNum(void) {
  return call<Fn::DEV_GetMaxFrameNum>([](Node &node) { return node.chassis.frame_count(); });
}

u32 DEV_LibIfFrameExist(u16 usFrameID) {
  return call<Fn::DEV_LibIfFrameExist>(
      [&](Node &node) -> u32 { return node.chassis.has_frame(usFrameID) ? 0 : u32{code_no_frame}; },
      usFrameID);
}

u32 DEV_LibGetFrameAttribute(u16 usFrameID, u32 ulAttr, u32 ulLen, void *pOut) {
  return call<Fn::DEV_LibGetFrameAttribute>(
      [&](Node &node) -> u32 {
        if (!node.chassis.has_frame(usFrameID)) {
          return code_no_frame;
        }
        if (ulAttr != frame_attribute_slots) {
          return code_unknown;
        }
        return answer_attribute(ulLen, node.chassis.slots(usFrameID), sizeof(u8), pOut);
      },
      usFrameID, ulAttr, ulLen);
}

u32 DEV_LibIfBoardExist(u16 usBIndex) {
  return call<Fn::DEV_LibIfBoardExist>(
      [&](Node &node) -> u32 {
        return node.chassis.board(usBIndex) == nullptr ? u32{code_no_board} : 0;
      },
      usBIndex);
}

u32 DEV_LibGetBoardAttribute(u16 usBIndex, u32 ulAttr, u32 ulLen, void *pOut) {
  return call<Fn::DEV_LibGetBoardAttribute>(
      [&](Node &node) -> u32 {
        const Board *board = node.chassis.board(usBIndex);
        if (board == nullptr) {
          return code_no_board;
        }
        switch (ulAttr) {
          case board_attribute_inner_ports:
            return answer_attribute(ulLen, board->inner_ports, sizeof(u16), pOut);
          case board_attribute_outer_ports:
            return answer_attribute(ulLen, board->outer_ports, sizeof(u16), pOut);
          default:
            return code_unknown;
        }
      },
      usBIndex, ulAttr, ulLen);
}

u32 DEV_LibGetPortTypeOfBoard(u16 usBIndex, u8 ucPort, u8 *pucType) {
  return call<Fn::DEV_LibGetPortTypeOfBoard>(
      [&](Node &node) -> u32 {
        const Board *board = node.chassis.board(usBIndex);
        const Port *port = find_port(board, ucPort);
        if (pucType == nullptr) {
          return code_null;
        }
        if (port == nullptr) {
          return board == nullptr ? code_no_board : code_no_port;
        }
        *pucType = port->type;
        return 0;
      },
      usBIndex, ucPort);
}

u32 DEV_LibGetBIndexFromFrameIDSlotID(u16 usFrameID, u8 ucSlotID, u16 *pusBIndex) {
  return call<Fn::DEV_LibGetBIndexFromFrameIDSlotID>(
      [&](Node &node) -> u32 {
        const u32 bindex = node.chassis.bindex(usFrameID, ucSlotID);
        if (pusBIndex == nullptr) {
          return code_null;
        }
        if (bindex == Chassis::none) {
          return code_no_frame;
        }
        *pusBIndex = static_cast<u16>(bindex);
        return 0;
      },
      usFrameID, ucSlotID);
}

u32 DEV_LibGetFrameIDSlotIDFromBIndex(u16 usBIndex, u16 *pusFrameID, u8 *pucSlotID) {
  return call<Fn::DEV_LibGetFrameIDSlotIDFromBIndex>(
      [&](Node &node) -> u32 {
        u16 frame = 0;
        u8 slot = 0;
        if (pusFrameID == nullptr || pucSlotID == nullptr) {
          return code_null;
        }
        if (!node.chassis.place(usBIndex, frame, slot)) {
          return code_no_board;
        }
        *pusFrameID = frame;
        *pucSlotID = slot;
        return 0;
      },
      usBIndex);
}

void DEV_LibPrintf(u32 ulLevel, const char *pcFormat, ...) {
  va_list arguments;
  va_start(arguments, pcFormat);
  const std::string text = format_text(pcFormat, arguments);
  va_end(arguments);
  call<Fn::DEV_LibPrintf>([&](Node &node) { node.debug.print(Fn::DEV_LibPrintf, ulLevel, text); },
                          ulLevel, text);
}

void DEV_LibRecLongTimeCostPrimaryWordLog(const char *pcFile, u32 ulLine, u32 ulTicks,
                                          u32 ulPrimType, const void *pfnFunc) {
  call<Fn::DEV_LibRecLongTimeCostPrimaryWordLog>(
      [&](Node &node) { node.debug.add_long_call(pcFile, ulLine, ulTicks, ulPrimType, pfnFunc); },
      pcFile, ulLine, ulTicks, ulPrimType);
}

u32 PTOPO_LibGetHardPhyIDFromPortId(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u8 *pucHard1,
                                    u8 *pucHard2) {
  return call<Fn::PTOPO_LibGetHardPhyIDFromPortId>(
      [&](Node &node) -> u32 {
        const Board *board = node.chassis.board(usFrameID, ucSlotID);
        const Port *port = find_port(board, ucPortID);
        if (pucHard1 == nullptr || pucHard2 == nullptr) {
          return code_null;
        }
        if (port == nullptr) {
          return board == nullptr ? code_no_board : code_no_port;
        }
        if (!port->lan_switch) {
          return code_not_wired;
        }
        *pucHard1 = port->hard1;
        *pucHard2 = port->hard2;
        return 0;
      },
      usFrameID, ucSlotID, ucPortID);
}

u32 PTOPO_ESWITCH_IsEswitchPort(u16 usFrameID, u8 ucSlotID, u8 ucPortID) {
  return call<Fn::PTOPO_ESWITCH_IsEswitchPort>(
      [&](Node &node) -> u32 {
        const Port *port = find_port(node.chassis.board(usFrameID, ucSlotID), ucPortID);
        return port != nullptr && port->e_switch ? 1 : 0;
      },
      usFrameID, ucSlotID, ucPortID);
}
