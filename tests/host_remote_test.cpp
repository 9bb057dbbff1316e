// Remote calls with their owner, object configuration, class services, chassis.
#include "host_rig.hpp"
#include "pm_dynamic_data.h"
#include "pm_spec.h"
#include "pm_static_data.h"

namespace {

using host::Bytes;
using host::Instance;
using host::view_of;
using namespace host_rig;

TEST_F(HostServices, remote_calls_carry_values_inputs_and_outputs) {
  node.rpc.serve("add", [](RpcPara &para) {
    const u32 sum = static_cast<u32>(host::rpc_value(para, 0)) + host::rpc_input(para, 1)[0];
    return host::rpc_output(para, 2, view_of(sum)) ? u32{7} : u32{8};
  });
  auto scope = host::enter(node);
  RpcPara para;
  u32 sum = 0;
  u8 input = 5;
  u32 result[RPC_RESULT_SIZE / 4] = {};
  void *value = reinterpret_cast<void *>(PmWord{0xFFFF0001});
  EXPECT_EQ(RPC_LibParaInit(&para, 9), u32{host::code_range});
  ASSERT_EQ(RPC_LibParaInit(&para, 3), 0u);
  EXPECT_EQ(RPC_LibParaSet(&para, 3, 0, 2, value), u32{host::code_range});
  EXPECT_EQ(RPC_LibParaSet(&para, 0, 0, 3, value), u32{host::code_length});
  EXPECT_EQ(RPC_LibParaSet(&para, 0, 3, 2, value), u32{host::code_kind});
  ASSERT_EQ(RPC_LibParaSet(&para, 0, 0, 2, value), 0u);
  ASSERT_EQ(RPC_LibParaSet(&para, 1, 1, 1, &input), 0u);
  ASSERT_EQ(RPC_LibParaSet(&para, 2, 2, 4, &sum), 0u);
  EXPECT_EQ(RPC_LibSyncCall(0, "add", &para, result), 0u);
  EXPECT_EQ(result[0], 7u);
  EXPECT_EQ(sum, 6u);
  EXPECT_EQ(node.rpc.sent()[0].parameters[0].bytes, (Bytes{1, 0}));
  EXPECT_EQ(RPC_LibAyncCall(0, "add", &para), u32{host::code_kind});
  EXPECT_EQ(RPC_LibSyncCall(0, "none", &para, result), u32{host::code_unknown});
  node.rpc.reachable = false;
  EXPECT_EQ(RPC_LibSyncCall(0, "add", &para, result), u32{host::code_unreachable});
}

TEST_F(HostServices, the_owner_hands_out_virtual_ptps_and_sets_descriptions) {
  const auto remote = [&](const char *service, auto... set) {
    RpcPara para;
    u32 index = 0;
    u32 result[RPC_RESULT_SIZE / 4] = {};
    RPC_LibParaInit(&para, sizeof...(set));
    (set(para, index++), ...);
    const u32 code = RPC_LibSyncCall(0, service, &para, result);
    return code != 0 ? code : result[0];
  };
  const auto value = [](u32 number, u32 length) {
    return [=](RpcPara &para, u32 index) {
      RPC_LibParaSet(&para, index, 0, length, reinterpret_cast<void *>(PmWord{number}));
    };
  };
  const auto buffer = [](u32 kind, void *bytes, u32 length) {
    return [=](RpcPara &para, u32 index) { RPC_LibParaSet(&para, index, kind, length, bytes); };
  };
  Instance *one = node.root.add(1);
  subscribe(*one, 0x360031);
  node.ddm.run();
  auto scope = host::enter(*one);
  node.owner.set_virtual_range(100, 101);
  u8 request[] = {1, 0xEE, 0x34, 0x12, 5, 0, 9, 0};
  u16 ptp = 0;
  EXPECT_EQ(remote("PM_SapiAddVirtualPtp", buffer(1, request, 8), buffer(2, &ptp, 2)), 0u);
  EXPECT_EQ(ptp, 100);
  PtpDynPubData dynamic;
  std::memcpy(&dynamic, node.ddm.find(0x360011, 100)->data(), sizeof dynamic);
  EXPECT_EQ(dynamic.usIndex1, 0x1234);
  EXPECT_EQ(dynamic.ucExist, 1);
  EXPECT_EQ(dynamic.usPtpType, 9);
  EXPECT_EQ(remote("PM_SapiAddVirtualPtp", buffer(1, request, 8), buffer(2, &ptp, 2)), 0u);
  EXPECT_EQ(remote("PM_SapiAddVirtualPtp", buffer(1, request, 8), buffer(2, &ptp, 2)),
            u32{host::code_full});
  EXPECT_EQ(remote("PM_SapiOperCheckCanDelPTP", value(100, 2)), 0u);
  EXPECT_EQ(remote("PM_SapiDelVirtualPtp", value(100, 2)), 0u);
  EXPECT_EQ(remote("PM_SapiDelVirtualPtp", value(100, 2)), u32{host::code_no_ptp});
  EXPECT_EQ(remote("PM_SapiOperCheckCanDelPTP", value(100, 2)), u32{host::code_no_ptp});

  PmSpec spec{};
  spec.ulDescMaxLen = 4;
  node.ddm.publish_spec(0x6C00000, view_of(spec));
  PtpStaticData record;
  std::memset(&record, 0x5A, sizeof record);
  node.ddm.publish(0x360030, 17, view_of(record));
  char words[] = "abcdef";
  EXPECT_EQ(remote("PM_SapiSetDescFromPTP", value(18, 2), buffer(1, words, 6)),
            u32{host::code_no_ptp});
  EXPECT_EQ(remote("PM_SapiSetDescFromPTP", value(17, 2), buffer(1, words, 6)), 0u);
  const Bytes &stored = *node.ddm.find(0x360030, 17);
  EXPECT_EQ(Bytes(stored.begin() + 12, stored.begin() + 19),
            (Bytes{0x5A, 'a', 'b', 'c', 'd', 0, 0x5A}));
  node.owner.online = false;
  EXPECT_EQ(remote("PM_SapiDelVirtualPtp", value(101, 2)), u32{host::code_unreachable});
  node.owner.online = true;

  // A deletion: accepted now, counted, reported later.
  static host::ObjectKey reported;
  node.root.set_resolver([](const char *) {
    return reinterpret_cast<void *>(+[](u32 (*completion)(host::ObjectKey *, u32),
                                        host::ObjectKey *key,
                                        u32 result) { return completion(key, result); });
  });
  ROOT_LibSrvmPubishSapi("PM_SapiNotifyDelObjectCfgResult", 1);
  u32 (*completion)(host::ObjectKey *, u32) = +[](host::ObjectKey *key, u32 result) {
    reported = *key;
    return note("deleted " + std::to_string(result));
  };
  host::ObjectKey key{1, 2, 3, 4};
  const auto completion_word = [&](RpcPara &para, u32 index) {
    RPC_LibParaSet(&para, index, 0, sizeof(PmWord), reinterpret_cast<void *>(completion));
  };
  node.owner.deletion_ticks = 10;
  const auto request_deletion = [&] {
    return remote("PM_SapiDelObjectCfg", buffer(1, &key, 8), buffer(1, words, 2), value(1, 4),
                  completion_word);
  };
  EXPECT_EQ(request_deletion(), 0u);
  EXPECT_EQ(request_deletion(), u32{host::code_in_deletion});
  EXPECT_EQ(remote("PM_SapiIsObjSupportSrvCfg", buffer(1, &key, 8)), u32{host::code_in_deletion});
  EXPECT_TRUE(take_seen().empty());  // the count waits for the end of the call
  node.run();
  node.clock.advance(9);
  node.run();
  const Texts count_one{"1:" + std::to_string(0x360031) + "/0=" + std::string("\1\0\0\0", 4)};
  EXPECT_EQ(take_seen(), count_one);
  node.clock.advance(1);
  node.owner.deletion_result = 6;
  node.run();
  EXPECT_EQ(take_seen()[1], "1:deleted 6");
  EXPECT_EQ(reported, key);
  EXPECT_EQ(remote("PM_SapiIsObjSupportSrvCfg", buffer(1, &key, 8)), 0u);
}

TEST_F(HostServices, a_link_event_comes_back_as_a_primitive_notification) {
  Instance *one = node.root.add(1);
  subscribe(*one, 0x360040);
  node.ddm.run();
  auto scope = host::enter(*one);
  RpcPara para;
  RPC_LibParaInit(&para, 2);
  RPC_LibParaSet(&para, 0, 0, 2, reinterpret_cast<void *>(PmWord{17}));
  RPC_LibParaSet(&para, 1, 0, 1, reinterpret_cast<void *>(PmWord{1}));
  EXPECT_EQ(RPC_LibAyncCall(0, "PM_SapiLinkEventNotify", &para), 0u);
  EXPECT_EQ(node.rpc.waiting(), 1u);
  EXPECT_TRUE(take_seen().empty());
  node.run();
  ASSERT_EQ(seen.size(), 1u);
  const std::string record = seen[0].substr(seen[0].find('=') + 1);
  EXPECT_EQ(record, std::string("\6\0\21\0", 4) + std::string(28, '\0'));
  EXPECT_EQ(node.ddm.find(0x360040, 17), nullptr);
}

TEST_F(HostServices, object_configuration_and_classes_keep_what_they_are_given) {
  auto scope = host::enter(node);
  u32 flags[2] = {2, 0};
  PUB_LibAddObjAllCfg(1, 2, 17, flags);
  PUB_LibAddObjAllCfg(3, 2, 17, flags);
  PUB_LibDelObjAllCfg(1, 2, 17, flags);
  EXPECT_EQ(node.objects.vs_mask(17), 8u);
  EXPECT_EQ(node.objects.log().size(), 3u);
  EXPECT_EQ(CAP_LibGetCapability(3, 17, 1), u32{host::code_unknown});
  struct {
    u32 (*type)(u32, u16, u16 *);
    u16 module, value;
  } record{[](u32 value, u16 ptp, u16 *type) {
             *type = static_cast<u16>(ptp + 1);
             return value == 0xFFFFFFFF ? u32{0} : u32{1};
           },
           54, 32};
  CAP_LibRegCapMngtProc(3, &record);
  ATTR_LibRegClassMngtProc(3, &record);
  EXPECT_EQ(node.classes.capability_classes().at(3).class_value, 32);
  EXPECT_EQ(CAP_LibGetCapability(3, 17, 1), 0u);
  u8 buffer[4] = {9, 9, 9, 9};
  EXPECT_EQ(ATTR_LibGetAttribute(3, 17, 1, buffer, 1), u32{host::code_length});
  EXPECT_EQ(ATTR_LibGetAttribute(3, 17, 1, buffer, 3), 0u);
  EXPECT_EQ(Bytes(buffer, buffer + 4), (Bytes{18, 0, 0, 9}));
  node.classes.capability = [](u32, u32, u32 capability) { return capability; };
  EXPECT_EQ(CAP_LibGetCapability(3, 17, 44), 44u);
}

TEST_F(HostServices, the_chassis_answers_for_frames_boards_and_ports) {
  auto scope = host::enter(node);
  node.chassis.add_frame(0, 4);
  node.chassis.add_frame(2, 17);
  node.chassis.insert(2, 16, host::Board::of("pon", 2, 1, 7));
  node.chassis.board(2, 16)->port(1).type = host::port_type_none;
  node.chassis.board(2, 16)->port(2) = {3, true, false, 1, 9};
  u16 bindex = 0;
  u16 frame = 9;
  u8 slot = 9;
  u8 byte = 0;
  u8 second = 0;
  u16 count = 0;
  EXPECT_EQ(DEV_GetMaxFrameNum(), 3);
  EXPECT_EQ(DEV_LibIfFrameExist(1), u32{host::code_no_frame});
  EXPECT_EQ(DEV_LibGetFrameAttribute(2, 5, 1, &byte), 0u);
  EXPECT_EQ(byte, 17);
  EXPECT_EQ(DEV_LibGetFrameAttribute(2, 5, 2, &byte), u32{host::code_length});
  EXPECT_EQ(DEV_LibGetFrameAttribute(2, 6, 1, &byte), u32{host::code_unknown});
  EXPECT_EQ(DEV_LibGetBIndexFromFrameIDSlotID(2, 17, &bindex), u32{host::code_no_frame});
  ASSERT_EQ(DEV_LibGetBIndexFromFrameIDSlotID(2, 16, &bindex), 0u);
  EXPECT_EQ(bindex, 2 * 32 + 16);
  EXPECT_EQ(DEV_LibGetFrameIDSlotIDFromBIndex(bindex, &frame, &slot), 0u);
  EXPECT_EQ(frame * 100 + slot, 216);
  EXPECT_EQ(DEV_LibGetFrameIDSlotIDFromBIndex(32, &frame, &slot), u32{host::code_no_board});
  EXPECT_EQ(DEV_LibIfBoardExist(bindex), 0u);
  EXPECT_EQ(DEV_LibIfBoardExist(0), u32{host::code_no_board});
  EXPECT_EQ(DEV_LibGetBoardAttribute(bindex, 0x10007, 2, &count), 0u);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(DEV_LibGetBoardAttribute(bindex, 0x10008, 2, &count), 0u);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(DEV_LibGetPortTypeOfBoard(bindex, 1, &byte), 0u);
  EXPECT_EQ(byte, host::port_type_none);
  EXPECT_EQ(DEV_LibGetPortTypeOfBoard(bindex, 3, &byte), u32{host::code_no_port});
  EXPECT_EQ(PTOPO_LibGetHardPhyIDFromPortId(2, 16, 0, &byte, &second), u32{host::code_not_wired});
  EXPECT_EQ(PTOPO_LibGetHardPhyIDFromPortId(2, 16, 2, &byte, &second), 0u);
  EXPECT_EQ(second, 9);
  EXPECT_EQ(PTOPO_ESWITCH_IsEswitchPort(2, 16, 2), 0u);
  node.chassis.map(2, 16, 500);
  EXPECT_EQ(DEV_LibIfBoardExist(500), 0u);
  EXPECT_EQ(DEV_LibIfBoardExist(bindex), u32{host::code_no_board});
  node.chassis.remove_frame(2);
  EXPECT_EQ(DEV_GetMaxFrameNum(), 1);
  EXPECT_EQ(DEV_LibIfBoardExist(500), u32{host::code_no_board});
}

}  // namespace
