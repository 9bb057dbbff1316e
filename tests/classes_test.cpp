// PTPs as an object class of the capability and attribute services.
#include "live_pm.hpp"

namespace {
constexpr u16 ptp = 17, odd_ptp = 18, absent = 19;
constexpr u32 absent_code = PM_ERR_PTP_NOT_EXIST, reserved = 0xFFFFFFFF;

struct Classes : test::LivePm {
  void SetUp() override {
    up();
    put_type(0, 7, 70);
    put_type(2, 40, 72);
    put(ptp, test::port_record(0, 1, 7));
    put(odd_ptp, test::port_record(0, 2, 8));
    settle();
  }
};

TEST_F(Classes, BothServicesGetTheTypeFunctionAndTheirClassValue) {
  node.faults.fail_nth(Fn::CAP_LibRegCapMngtProc, 1, 0x77);
  node.faults.fail_nth(Fn::ATTR_LibRegClassMngtProc, 1, 0x78);
  expect({PM_LibRegCapClassMngt(), PM_LibRegAttrClassMngt()}, {0x77, 0x78}, {0x77, 0x78});
  expect({PM_LibRegCapClassMngt(), PM_LibRegAttrClassMngt(), PM_AttrDbFunc()}, Values(3, PM_OK),
         {});
  for (const auto *classes :
       {&node.classes.capability_classes(), &node.classes.attribute_classes()}) {
    const bool capability = classes == &node.classes.capability_classes();
    const auto &[function, module, class_value] = classes->at(3);
    EXPECT_EQ(std::tuple(function, module, class_value),
              std::tuple(&PM_LibGetPtpTypeForAttm, 54, capability ? 32 : 0x2345));
  }
}

TEST_F(Classes, QuestionsAboutAPtpReachTheServicesUnchanged) {
  trace(PM_SWITCH_FUNCTION);
  u8 room[4];
  node.faults.fail_always(Fn::CAP_LibGetCapability, 5);
  node.faults.fail_always(Fn::ATTR_LibGetAttribute, 6);
  const Lines asked = host_calls({Fn::CAP_LibGetCapability, Fn::ATTR_LibGetAttribute}, [&] {
    expect({PM_LibGetPtpCapability(absent, reserved), PM_LibGetPtpCapability(absent, 9),
            PM_LibGetPtpCapability(ptp, reserved - 1),
            PM_LibGetPtpAttributeCluster(absent, 9, 4, room),
            PM_LibGetPtpAttributeCluster(ptp, 9, 1, room)},
           {PM_ERR_DATA_INVALID, absent_code, 5, absent_code, 6}, {absent, reserved});
  });
  EXPECT_EQ(asked, (Lines{"CAP_LibGetCapability(3, 17, 0xFFFFFFFE) = 0x5 [fault]",
                          "ATTR_LibGetAttribute(3, 17, 9, 1) = 0x6 [fault]"}));
  const std::string refused = "PM_LibGetPtpAttributeCluster fail, input pointer is null, ",
                    value = "usPtpID = 17, ulPtpAttributeValue = ";
  expect({PM_LibGetPtpAttributeCluster(ptp, reserved, 4, room),
          PM_LibGetPtpAttributeCluster(ptp, 9, 0, room),
          PM_LibGetPtpAttributeCluster(ptp, 9, 4, nullptr)},
         Values(3, PM_ERR_DATA_INVALID), {ptp, reserved, ptp, 9, ptp, 9},
         {refused + value + "4294967295", refused + value + "9", refused + value + "9"});
}

TEST_F(Classes, AValueUpToTheHighestPortTypeIsAPortTypeAndAnyOtherSelectsThatOfThePtp) {
  u16 cap = 0, type = 0;
  expect({PM_LibGetPtpCapType(40, absent, &cap), PM_LibGetPtpTypeForAttm(40, absent, &type)},
         {PM_OK, PM_OK}, {});
  EXPECT_EQ(std::tuple(cap, type), std::tuple(72, 40));
  expect({PM_LibGetPtpCapType(41, ptp, &cap), PM_LibGetPtpTypeForAttm(41, ptp, &type),
          PM_LibGetPtpCapType(0x10007, odd_ptp, &cap), PM_LibGetPtpCapType(41, absent, &cap),
          PM_LibGetPtpTypeForAttm(reserved, absent, &type), PM_LibGetPtpCapType(41, ptp, nullptr),
          PM_LibGetPtpTypeForAttm(40, ptp, nullptr)},
         {PM_OK, PM_OK, PM_ERR_PTPTYPE_INVALID, absent_code, absent_code, PM_ERR_DATA_INVALID,
          PM_ERR_DATA_INVALID},
         {8, PM_ERR_PTPTYPE_INVALID, absent_code, absent});
  EXPECT_EQ(std::tuple(cap, type), std::tuple(70, 7));
}
}  // namespace
