// Messages to the debug window, of no more bytes than each is certain to have, shown over records
// with any content.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

// What there is to be shown: PTP 1 with these records, a first port type, a description length.
void lay(Rig &rig, Input &input) {
  PmSpec spec{};
  spec.ulDescMaxLen = input.number<u32>();
  rig.node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
  auto dynamic_record = input.record<PtpDynPubData>();
  auto static_record = input.record<PtpStaticData>();
  static_record.usPtpID = 1;
  const auto info = input.record<PmSubInnerSubInfo>();
  rig.node.ddm.publish(PM_CLASS_SUB_INFO, 0, host::view_of(info));
  rig.node.ddm.publish(PM_CLASS_DYNAMIC, 1, host::view_of(dynamic_record));
  rig.node.ddm.publish(PM_CLASS_STATIC, 1, host::view_of(static_record));
}

bool is_command(u32 command) {
  return command <= 6 || command == 9;
}

void send(Rig &rig, Input &input) {
  std::vector<u8> message = input.whole_block(sizeof(PmDbwinMsg));
  const auto content = record_in<PmDbwinMsg>(message);
  const auto header = record_in<host::MessageHeader>(message);
  const bool for_window = header.type == host::message_type_debug_window;
  if (!for_window) {
    message.resize(sizeof header);
    message.shrink_to_fit();
  }
  const std::uint64_t before = rig.node.debug.total();
  const u32 code = rig.node.root.send_message(*rig.instance, message.data());
  const u32 iid = header.iid & 0xFFFF;
  HOLDS(code != PM_OK || iid == host::iid_fid_pid || iid > 31);
  if (iid == host::iid_fid_pid && header.pid == PM_COMP_TYPE && for_window) {
    const std::vector<std::string> lines = rig.node.debug.since(before);
    const bool refused =
        !lines.empty() && lines[0].find("unknown DBWIN command") != std::string::npos;
    HOLDS(refused == !is_command(content.ulCommand));
  } else {
    HOLDS(rig.node.debug.total() == before);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  Input input(bytes, size);
  Rig rig;
  rig.lay_tables();
  if (input.number<u8>() % 2 == 0) {
    lay(rig, input);
  }
  while (!input.empty()) {
    send(rig, input);
  }
  return 0;
}
