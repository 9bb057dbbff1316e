// Model: specification, static database, dynamic records, descriptions.
#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "node/soak_model.hpp"

namespace soak {

PmSpec Model::spec{};
PmAttrCB Model::numbers{};
PmSubAttrNum Model::type_numbers{};
PmProductMngt Model::hooks{};

namespace {

constexpr auto &record = core_record;

// Where a field stands in a dynamic record, by selector.
struct Field {
  std::size_t offset;
  std::size_t width;
};
constexpr Field kFields[] = {{0, 2}, {2, 2}, {4, 1},  {5, 1}, {6, 2},
                             {8, 1}, {9, 2}, {11, 4}, {15, 4}};
constexpr u32 kWritable = 8;  // selectors below this one

std::vector<std::unique_ptr<Board>> handed_over;

}  // namespace

bool host_fails(host::Fn fn) {
  host::Node &node = *host::current_node();
  return node.faults.judge(fn, node.faults.count(fn)).fails;
}

void *take_block(u32 (*partition)(), std::size_t size) {
  void *block = ZEL_MemAlloc_F(PM_COMP_TYPE, partition(), static_cast<u32>(size), "", 0);
  if (block != nullptr) {
    std::memset(block, 0, size);
  }
  return block;
}

Board &Model::board() {
  const PmInstance *self = ROOT_LibGetCurrentThis();
  if (self == nullptr || self->pLocalData == nullptr) {
    throw std::logic_error("the model plays without an instance");
  }
  return *static_cast<const Local *>(self->pLocalData)->board;
}

void Model::hand_over_board(void *local, std::unique_ptr<Board> board) {
  const Local made{board->para, board->cid, board.get()};
  handed_over.push_back(std::move(board));
  std::memcpy(local, &made, sizeof made);
}

void Model::forget_boards() {
  handed_over.clear();
}

u32 Model::description_room() {
  const u32 length = spec.ulDescMaxLen;
  return std::min<u32>(length, PM_DESC_LEN_MAX);
}

// -- Specification

u32 Model::PM_LibSpecUpdate(const void *pSpecMsg) {
  u32 head[2];
  std::memcpy(head, pSpecMsg, sizeof head);
  const struct {
    u32 identifier;
    void *to;
    u32 length;
  } known[] = {{0x6C00000, &spec, 24}, {0x6C00001, &numbers, 16}, {0x6C00002, &type_numbers, 4}};
  for (const auto &entry : known) {
    if (entry.identifier != head[0]) {
      continue;
    }
    if (entry.length != head[1]) {
      return init_record(0, {head[1], head[0]});
    }
    std::memcpy(entry.to, static_cast<const u8 *>(pSpecMsg) + sizeof head, entry.length);
  }
  return 0;
}

u32 Model::PM_LibSetPmSpec(u32 ulIndex, u32 ulValue) {
  if (ulIndex > 5) {
    return record(0x6908BC, {ulIndex});
  }
  if ((ulIndex == 2 && ulValue == 0) || (ulIndex == 3 && (ulValue < 1 || ulValue > 80))) {
    return record(0x6908BD, {ulValue});
  }
  std::memcpy(reinterpret_cast<u8 *>(&spec) + std::size_t{4} * ulIndex, &ulValue, 4);
  return 0;
}

u32 Model::PM_GetPmSpec(u32 ulIndex) {
  if (ulIndex > 5) {
    return record(0xFFFFFFFF, {ulIndex});
  }
  u32 value = 0;
  std::memcpy(&value, reinterpret_cast<const u8 *>(&spec) + std::size_t{4} * ulIndex, 4);
  return value;
}

u32 Model::PM_LibGetPmSpec(u32 ulIndex) {
  return PM_GetPmSpec(ulIndex);
}

u32 Model::PM_LibGetPtpMaxNum() {
  const u32 sum = u32{numbers.usVisiblePtpNum} + numbers.usOtherPtpNum + numbers.usVirtualPtpNum;
  return sum % 65536;
}

u16 Model::PM_LibGetMaxPtpID() {
  return numbers.usMaxPtpID == 0 || numbers.usMaxPtpID == 0xFFFF ? u16{1} : numbers.usMaxPtpID;
}

// -- Static database

u32 Model::PM_LibCmpStaticDBNode(const void *pKey, const void *pNode) {
  u16 ptp = 0;
  std::memcpy(&ptp, pKey, sizeof ptp);
  return static_cast<const PmStaticDBNode *>(pNode)->stData.usPtpID == ptp ? 0 : 1;
}

PmStaticDBNode *Model::PM_LibFindStaticDBNode(u16 usPtpID) {
  Board &my = board();
  if (my.static_table == 0 || host_fails(host::Fn::ZEL_HASH_Find_Node)) {
    return nullptr;
  }
  const auto found = my.statics.find(usPtpID);
  return found == my.statics.end() ? nullptr : static_cast<PmStaticDBNode *>(found->second.block);
}

PmStaticDBNode *Model::PM_LibCreateStaticDBNode(u16 usPtpID) {
  Board &my = board();
  if (my.static_table == 0) {
    my.static_table = ZEL_HASH_Create_Table(1024, 0);
  }
  if (my.static_table == 0) {
    init_record(0, {usPtpID});
    return nullptr;
  }
  void *block = take_block(ZEL_kvtBlockMemPtGet, 3 * sizeof(void *) + 214);
  if (block == nullptr) {
    init_record(0, {usPtpID});
    return nullptr;
  }
  host_fails(host::Fn::ZEL_HASH_Add_Node);
  auto *node = static_cast<PmStaticDBNode *>(block);
  node->stData.usPtpID = usPtpID;
  my.statics[usPtpID] = {node->stData, block};
  return node;
}

u32 Model::PM_LibUpdateStaticDBNode(const PtpStaticData *pstStaticData) {
  const u16 ptp = pstStaticData->usPtpID;
  PmStaticDBNode *node = PM_LibFindStaticDBNode(ptp);
  if (node == nullptr && PM_LibCreateStaticDBNode(ptp) == nullptr) {
    return init_record(0x689383, {ptp, pstStaticData->usBIndex, pstStaticData->ucPortID});
  }
  board().statics[ptp].data = *pstStaticData;
  return 0;
}

u32 Model::PM_LibDeleteStaticDBNode(u16 usPtpID) {
  if (PM_LibFindStaticDBNode(usPtpID) == nullptr) {
    return init_record(0, {usPtpID});
  }
  host_fails(host::Fn::ZEL_HASH_Delete_Node);
  ZEL_Free(board().statics[usPtpID].block);
  board().statics.erase(usPtpID);
  return 0;
}

u32 Model::PM_LibStaticDataGetDataFromPTP(u16 usPtpID, PtpStaticData *pstStaticData) {
  if (pstStaticData == nullptr) {
    return record(0x689380, {usPtpID});
  }
  if (board().static_table == 0 || usPtpID > PM_LibGetMaxPtpID()) {
    return record(1, {usPtpID});
  }
  if (PM_LibFindStaticDBNode(usPtpID) != nullptr) {
    *pstStaticData = board().statics[usPtpID].data;
    return 0;
  }
  std::memset(static_cast<void *>(pstStaticData), 0xFF, sizeof *pstStaticData);
  PM_LibDotPrintf(0, 0, "DB_Query fail, usDbRet = %u, usPtpID = %u", 3, usPtpID);
  return record(0x6908AD, {3, usPtpID});
}

// -- Dynamic records

u32 Model::PM_LibMallocForDynCB() {
  Board &my = board();
  const u32 records = PM_LibGetMaxPtpID() + 1U;
  if (!my.has_anchor) {
    if (take_block(ZEL_kvtBlockMemPtGet, sizeof(void *)) == nullptr) {
      return record(0x689385, {sizeof(void *)});
    }
    my.has_anchor = true;
  }
  if (!my.has_store) {
    if (take_block(ZEL_kvtBlockMemPtGet, std::size_t{19} * records) == nullptr) {
      return record(0x689385, {19 * records});
    }
    my.has_store = true;
    my.dynamics.assign(records, PtpDynPubData{});
  }
  return 0;
}

u32 Model::PM_LibGetDynPubDataAttr(u16 usPtpID, u32 ulSelector, void *pValue) {
  Board &my = board();
  if (pValue == nullptr || !my.has_anchor) {
    return record(0x689380, {usPtpID, is_null(pValue)});
  }
  if (!my.has_store) {
    return record(0x689380, {usPtpID});
  }
  if (usPtpID > PM_LibGetMaxPtpID() || usPtpID >= my.dynamics.size()) {
    return 0x6908C2;
  }
  const PtpDynPubData &data = my.dynamics[usPtpID];
  if (ulSelector < std::size(kFields)) {
    const Field field = kFields[ulSelector];
    std::memcpy(pValue, reinterpret_cast<const u8 *>(&data) + field.offset, field.width);
  } else {
    record(0, {ulSelector});
  }
  return data.ucExist != 0 ? 0 : 0x6908AD;
}

u32 Model::PM_LibSetDynPubDataAttr(u16 usPtpID, u32 ulSelector, const void *pValue) {
  Board &my = board();
  if (pValue == nullptr || !my.has_store) {
    return record(0x689380, {usPtpID});
  }
  if (usPtpID > PM_LibGetMaxPtpID() || usPtpID >= my.dynamics.size()) {
    return record(0x6908C2, {usPtpID});
  }
  if (ulSelector >= kWritable) {
    return record(0, {ulSelector});
  }
  const Field field = kFields[ulSelector];
  std::memcpy(reinterpret_cast<u8 *>(&my.dynamics[usPtpID]) + field.offset, pValue, field.width);
  return 0;
}

u32 Model::PM_LibGetAllDynDataFromPtpID(u16 usPtpID, PtpDynPubData *pstPtpDynPubData) {
  Board &my = board();
  if (pstPtpDynPubData == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetAllDynDataFromPtpID fail, input pointer is null, usPtpID = %u",
                    usPtpID);
    return record(0x689380, {usPtpID});
  }
  if (!my.has_store) {
    return record(0x689380, {usPtpID});
  }
  if (usPtpID > PM_LibGetMaxPtpID() || usPtpID >= my.dynamics.size()) {
    PM_LibDotPrintf(
        0, 0,
        "PM_LibGetDynPubDataAttr fail, input PTPID is invalid, usPtpID = %u, usMaxPtpID = %u ",
        usPtpID, PM_LibGetMaxPtpID());
    return 0x6908C2;
  }
  *pstPtpDynPubData = my.dynamics[usPtpID];
  return pstPtpDynPubData->ucExist != 0 ? 0 : 0x6908AD;
}

u32 Model::PM_LibGetDynPrivMemRangeFromMemID(u32 ulMemID) {
  const u32 start = numbers.usExtAreaSize;
  const u32 count = numbers.usVirtualPtpNum;
  if (ulMemID < start) {
    return 1;
  }
  return ulMemID < start + count ? 0 : 0x6908BC;
}

u32 Model::PM_LibConverDbErrorCode(u32 ulDbRet) {
  constexpr u32 codes[] = {0, 0x6908DC, 0x6908DC, 0x6908AD, 0x6908D9, 0x6908AD};
  return ulDbRet < std::size(codes) ? codes[ulDbRet] : 0x6908DC;
}

// -- Descriptions and private data

u32 Model::PM_LibGetDescFromPTP(u16 usPtpID, u32 ulDescLength, char *pcDesc) {
  if (pcDesc == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetDescFromPTP fail, usPtpID = %u", usPtpID);
    return record(0x689380, {usPtpID});
  }
  if (PM_GetPmSpec(3) >= ulDescLength) {
    PM_LibDotPrintf(0, 0, "PM_LibGetDescFromPTP fail, length of desc is invalid, ulDescLength = %u",
                    ulDescLength);
    return 0x6908B3;
  }
  u32 ret = PM_LibIfPhyPtpExist(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {usPtpID, ret});
  }
  PtpStaticData data{};
  ret = PM_LibStaticDataGetDataFromPTP(usPtpID, &data);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
                    usPtpID);
    return record(ret, {ret});
  }
  const u32 room = description_room();
  u32 length = 0;
  while (length < room && data.szDescription[length] != 0) {
    pcDesc[length] = data.szDescription[length];
    ++length;
  }
  pcDesc[length] = 0;
  pcDesc[room] = 0;
  return 0;
}

u32 Model::PM_LibGetPtpFromDesc(const char *pcDesc, u16 *pusPtpID) {
  if (pcDesc == nullptr || pusPtpID == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetPtpFromDesc, pcDesc or pusPtpID is NULL_PTR");
    return record(0x689380, {is_null(pcDesc), is_null(pusPtpID)});
  }
  const u32 length = ZEL_StrLen(pcDesc);
  const u32 room = description_room();
  if (length == 0 || length > room) {
    PM_LibDotPrintf(0, 0, "PM_LibGetPtpFromDesc desc is invalid, ulLenth \xA3\xBD %u", length);
    return record(0x6908B9, {length});
  }
  PM_LibDotPrintf(0, 0, "Enter PM_LibGetPtpFromDesc, *pcDesc = %s", pcDesc);
  *pusPtpID = 0xFFFF;
  const u32 total = PM_LibGetPtpMaxNum();
  for (u32 ptp = 0; ptp < total; ++ptp) {
    if ((ptp & 0x3FF) == 0x3FF) {
      ZEL_ClearWatchDog();
    }
    PtpStaticData data{};
    u32 ret = PM_LibStaticDataGetDataFromPTP(static_cast<u16>(ptp), &data);
    if (ret != 0) {
      PM_LibDotPrintf(0, 0, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x", ret);
      return record(ret, {ret});
    }
    if (KVT_StrNCmp(data.szDescription, pcDesc, room) != 0) {
      continue;
    }
    const u16 found = data.usPtpID;
    ret = PM_LibIfPhyPtpExist(found);
    if (ret != 0) {
      PM_LibDotPrintf(0, 0, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, found);
      return record(ret, {found, ret});
    }
    *pusPtpID = found;
    return 0;
  }
  return 0x6908AD;
}

u32 Model::PM_LibGetPrivStaticDataFromPTP(u16 usPtpID, u32 ulLen, u8 *pucData) {
  if (pucData == nullptr) {
    PM_LibDotPrintf(
        0, 0, "PM_LibGetPrivStaticDataFromPTP fail, input pointer is null, usPtpID = %u", usPtpID);
    return record(0x689380, {usPtpID});
  }
  u32 ret = PM_LibIfPhyPtpExist(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {usPtpID, ret});
  }
  if (ulLen == 0 || ulLen > 120) {
    PM_LibDotPrintf(
        0, 0, "PM_LibGetPrivStaticDataFromPTP fail, input length is not enough, ulLen = %u", ulLen);
    return 0x6908BD;
  }
  PtpStaticData data{};
  ret = PM_LibStaticDataGetDataFromPTP(usPtpID, &data);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
                    usPtpID);
    return record(ret, {ret});
  }
  std::memcpy(pucData, reinterpret_cast<const u8 *>(&data) + 14 + description_room(), ulLen);
  return 0;
}

}  // namespace soak
