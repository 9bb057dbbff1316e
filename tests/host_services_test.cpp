// Component framework, data distribution and synchronisation.
#include <cstring>

#include "host_rig.hpp"

namespace {

using host::Bytes;
using host::Instance;
using host::Node;
using host::view_of;
using namespace host_rig;

u32 construct(u32 phase, u32 para, u32 cid, u32) {
  if (phase == 0) {
    u8 *local = static_cast<u8 *>(ROOT_LibCompLocalCreate(cid, 54, 8));
    Handle handle = 0;
    ROOT_LibCompHandleInit(54, cid, &handle);
    std::memcpy(local, &handle, sizeof handle);
  }
  return note("construct " + std::to_string(phase) + " " + std::to_string(para));
}
u32 destruct(void *local) {
  note("destruct");
  return ZEL_HandleFinalize(word(local));
}
u32 message_entry(void *message, void *local) {
  note("entry " + std::to_string(DMS_MsgRecvIidGet(message)));
  return ROOT_LibProcFidPidMsg(ROOT_LibGetCurrentCID(), message, local);
}
u32 first_init(u32 phase) {
  return note("first " + std::to_string(phase));
}
u32 second_init(u32 phase) {
  return note("second " + std::to_string(phase));
}
void take_message(void *message) {
  note("message " + std::to_string(word(static_cast<u8 *>(message) + 20)));
}
u32 fid_init(u32 phase) {
  KVT_RegisterPIDInfo(54, first_init, take_message);
  KVT_RegisterPIDInfo(55, second_init, nullptr);
  return note("fid " + std::to_string(phase));
}
u32 spec_update(const void *message) {
  return note("spec " + std::to_string(word(message)) + " " +
              std::to_string(word(static_cast<const u8 *>(message) + 4)));
}

TEST_F(HostServices, an_instance_lives_from_registration_to_destruction) {
  const RootCompRegisterInfo info{54, "part", construct, destruct, message_entry, 0, 0};
  {
    auto scope = host::enter(node);
    ASSERT_EQ(ROOT_LibCompRegisterInfo(&info), 0u);
    EXPECT_EQ(ROOT_LibGetCurrentThis(), nullptr);
  }
  Instance *instance = node.root.construct(7, 3);
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(node.root.construct(7), nullptr);
  EXPECT_EQ(node.root.construct(8, 0, 99), nullptr);
  EXPECT_EQ(instance->record.pLocalData, instance->local_data.get());
  node.root.start_fid(*instance, fid_init);
  EXPECT_EQ(node.root.start_phase(*instance, 2), 0u);
  EXPECT_EQ(node.root.debug_command(*instance, 6), 0u);
  auto foreign = host::Framework::debug_message(6, 0, 0, 0, 55);
  EXPECT_EQ(node.root.send_message(*instance, foreign.data()), u32{host::code_unknown});
  {
    auto scope = host::enter(*instance);
    EXPECT_EQ(ROOT_LibIsPidDepend(407, ROOT_LibGetCurrentThis()), 1u);
    EXPECT_EQ(ROOT_LibIsPidDepend(406, ROOT_LibGetCurrentThis()), 0u);
  }
  EXPECT_EQ(node.root.destruct(7), 0u);
  EXPECT_EQ(node.root.find(7), nullptr);
  EXPECT_EQ(take_seen(),
            (Texts{"7:construct 0 3", "7:construct 1 3", "7:construct 2 3", "7:fid 0", "7:first 2",
                   "7:second 2", "7:entry 4", "7:message 6", "7:entry 4", "7:destruct"}));
  answer = 9;
  EXPECT_EQ(node.root.construct(7), nullptr);
  EXPECT_EQ(node.root.last_code(), 9u);
  EXPECT_TRUE(node.root.instances().empty());
}

u32 echo(u32 a, u32 b) {
  return note("service") + a * 10 + b;
}

TEST_F(HostServices, a_published_service_is_called_in_its_instance) {
  node.root.set_resolver([](const char *name) {
    return std::string_view(name) == "echo" ? reinterpret_cast<void *>(echo) : nullptr;
  });
  node.root.add(1);
  Instance *second = node.root.add(2);
  {
    auto scope = host::enter(*second);
    EXPECT_EQ(ROOT_LibSrvmPubishSapi("echo", 2), 0u);
    EXPECT_EQ(ROOT_LibSrvmPubishSapi("echo", 9), u32{host::code_no_instance});
  }
  EXPECT_EQ(node.root.call_service(2, "echo", u32{4}, u32{5}), 45u);
  EXPECT_EQ(node.root.call_service(1, "echo", u32{4}, u32{5}), u32{host::code_unknown});
  EXPECT_EQ(take_seen(), Texts{"2:service"});
}

TEST_F(HostServices, a_batch_comes_in_key_order_and_live_records_follow) {
  Instance *one = node.root.add(1);
  Instance *two = node.root.add(2);
  node.ddm.preset(5, 300, text("c"));
  node.ddm.preset(5, 2, text("a"));
  node.ddm.preset(5, 10, text("b"));
  node.ddm.preset(4, 1, text("x"));
  subscribe(*one, 5);
  subscribe(*one, 4);
  EXPECT_TRUE(take_seen().empty());
  EXPECT_EQ(node.ddm.run(2), 2u);
  EXPECT_EQ(take_seen(), (Texts{"1:5/2=a", "1:5/10=b"}));
  EXPECT_EQ(finished(*one, 5), 0);
  EXPECT_EQ(node.ddm.progress(1, 5)->delivered, 2u);
  EXPECT_EQ(node.ddm.progress(1, 5)->total, 3u);
  // Behind the batch's position: after its end. Before it: as part of it.
  node.ddm.publish(5, 2, text("A"));
  node.ddm.publish(5, 299, text("d"));
  EXPECT_TRUE(take_seen().empty());
  EXPECT_EQ(node.ddm.run(), 4u);
  EXPECT_EQ(take_seen(), (Texts{"1:5/299=d", "1:5/300=c", "1:5/2=A", "1:4/1=x"}));
  EXPECT_EQ(finished(*one, 5), 1);
  EXPECT_EQ(finished(*one, 4), 1);
  subscribe(*two, 5);
  node.ddm.publish(5, 7, text("e"));
  node.ddm.send(5, 8, text("event"));
  node.ddm.remove(5, 10);
  EXPECT_EQ(take_seen(), (Texts{"1:5/7=e", "1:5/8=event"}));
  node.ddm.run();
  EXPECT_EQ(take_seen(), (Texts{"2:5/2=A", "2:5/7=e", "2:5/299=d", "2:5/300=c", "2:5/8=event"}));
  EXPECT_TRUE(node.ddm.idle());
  node.ddm.publish(5, Bytes{}, {});
  EXPECT_EQ(take_seen(), (Texts{"1:5/null=", "2:5/null="}));
}

TEST_F(HostServices, records_published_inside_a_delivery_wait_for_its_end) {
  Instance *one = node.root.add(1);
  Instance *two = node.root.add(2);
  subscribe(*one, 5);
  subscribe(*two, 5);
  node.ddm.run();
  bool first = true;
  inside = [&] {
    if (std::exchange(first, false)) {
      node.ddm.publish(5, 2, text("inner"));
      seen.push_back("published");
    }
  };
  answer = 6;
  EXPECT_EQ(node.ddm.publish(5, 1, text("outer")), 6u);
  EXPECT_EQ(take_seen(),
            (Texts{"1:5/1=outer", "published", "2:5/1=outer", "1:5/2=inner", "2:5/2=inner"}));
  EXPECT_EQ(node.ddm.refused(), 4u);
  EXPECT_EQ(node.ddm.refusals()[0].code, 6u);
}

TEST_F(HostServices, a_subscription_can_be_fed_at_once_and_anew) {
  Instance *one = node.root.add(1);
  node.ddm.preset(5, 1, text("a"));
  node.ddm.immediate_batches = true;
  subscribe(*one, 5);
  EXPECT_EQ(take_seen(), Texts{"1:5/1=a"});
  EXPECT_EQ(finished(*one, 5), 1);
  node.ddm.restart_batches(1);
  EXPECT_EQ(finished(*one, 5), 0);
  node.ddm.run();
  EXPECT_EQ(take_seen(), Texts{"1:5/1=a"});
  node.ddm.forced_batch_state = u8{0};
  EXPECT_EQ(finished(*one, 5), 0);
  auto scope = host::enter(*one);
  u8 flag = 0;
  node.ddm.forced_batch_state.reset();
  EXPECT_EQ(DDM_LibScribeIsClassBtFinished(6, &flag), u32{host::code_unknown});
  node.root.destruct(1);
  EXPECT_EQ(node.ddm.publish(5, 1, text("b")), 0u);
  EXPECT_TRUE(take_seen().empty());
}

TEST_F(HostServices, specifications_reach_those_who_register_before_and_after) {
  node.ddm.publish_spec(0x6C00002, text("1234"));
  auto scope = host::enter(node);
  DDM_RegisterSpecAppInfo(54, spec_update);
  node.ddm.publish_spec(0x6C00000, text("123456"));
  const u32 odd[] = {3, 99};
  node.ddm.send_spec(view_of(odd));
  EXPECT_EQ(take_seen(), (Texts{"0:spec " + std::to_string(0x6C00002) + " 4",
                                "0:spec " + std::to_string(0x6C00000) + " 6", "0:spec 3 99"}));
}

u8 units[3][4];  // by CID
u32 extract(u32 unit, void *out, u32, u32 *length) {
  if (SYN_LibIsCpuActive() == 0 || answer != 0) {
    return 5;
  }
  *length = 1;
  std::memcpy(out, &units[ROOT_LibGetCurrentCID()][unit], 1);
  return note("extract " + std::to_string(unit));
}
u32 restore_unit(u32 unit, const void *record, u32 length, u32) {
  EXPECT_EQ(length, 1u);
  std::memcpy(&units[ROOT_LibGetCurrentCID()][unit], record, 1);
  return note("restore " + std::to_string(unit));
}
void reset() {
  note("reset");
}

class HostSync : public HostServices {
 protected:
  HostSync() {
    std::memset(units, 0, sizeof units);
    for (Instance *instance : {one, two}) {
      auto scope = host::enter(*instance);
      EXPECT_EQ(SYN_LibRegisterModuleDataMode(5, 0, 0, 0), u32{host::code_unknown});
      EXPECT_EQ(SYN_LibRegisterModuleDataSynInfo(5, 1, 0, 0, 0), 0u);
      EXPECT_EQ(SYN_LibRegisterSynDataBlockFix(5, 2, 2, 0, 1, 4, 0, 0, extract, restore_unit, 0, 0),
                0u);
      EXPECT_EQ(SYN_LibRegisterModuleDataMode(5, 0, 0, 0), 0u);
      EXPECT_EQ(SYN_LibRegisterSetBitTableFun(5, reset), 0u);
    }
    node.syn.pair(*one, *two);
  }
  static u32 change(Instance &instance, u32 unit, u8 value) {
    auto scope = host::enter(instance);
    units[instance.cid()][unit & 3] = value;
    return SYN_LibModuleDataUnitModifyRecord(5, 0, unit);
  }

  Node other;
  Instance *one = node.root.add(1);
  Instance *two = other.root.add(2);
};

TEST_F(HostSync, marked_units_reach_the_standby_in_order) {
  EXPECT_EQ(change(*one, 3, 30), 0u);
  EXPECT_EQ(change(*one, 1, 10), 0u);
  EXPECT_EQ(change(*one, 1, 11), 0u);
  EXPECT_EQ(change(*one, 4, 0), u32{host::code_range});
  EXPECT_EQ(node.syn.run(), 2u);
  EXPECT_EQ(take_seen(), (Texts{"1:extract 1", "2:restore 1", "1:extract 3", "2:restore 3"}));
  EXPECT_EQ(units[2][1], 11);
  EXPECT_TRUE(node.syn.compare().empty());
  units[2][0] = 1;
  ASSERT_EQ(node.syn.compare().size(), 1u);
  EXPECT_EQ(node.syn.compare()[0].unit, 0u);
  EXPECT_FALSE(two->active);
}

TEST_F(HostSync, what_was_missed_or_failed_is_caught_up) {
  change(*one, 2, 20);
  answer = 1;
  EXPECT_EQ(node.syn.run(), 0u);
  EXPECT_EQ(node.syn.marked(*one), 1u);
  EXPECT_EQ(node.syn.extract_failures(), 1u);
  answer = 0;
  node.syn.detach();
  change(*one, 0, 5);
  EXPECT_EQ(node.syn.run(), 0u);
  EXPECT_EQ(node.syn.compare().size(), 2u);
  node.syn.attach(host::CatchUp::marked);
  take_seen();
  EXPECT_EQ(node.syn.run(), 2u);
  EXPECT_TRUE(node.syn.compare().empty());
  EXPECT_EQ(take_seen()[0], "1:extract 0");
  node.syn.attach(host::CatchUp::full);
  EXPECT_EQ(take_seen(), Texts{"1:reset"});
  EXPECT_EQ(node.syn.run(), 4u);
}

TEST_F(HostSync, after_a_failover_the_other_side_is_read) {
  change(*two, 1, 9);  // a standby's own mark
  EXPECT_EQ(node.syn.run(), 0u);
  ASSERT_TRUE(node.syn.failover());
  EXPECT_TRUE(two->active);
  EXPECT_EQ(node.syn.run(), 1u);
  EXPECT_EQ(units[1][1], 9);
  EXPECT_EQ(take_seen(), (Texts{"2:extract 1", "1:restore 1"}));
}

}  // namespace
