// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRApplicationKey.h>
#include <ZRCore/ZRTrackingIdentity.h>
#include <gmock/gmock.h>

#include "TrackingIdentity.h"
#include "WithFakePlatform.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::Pair;

namespace {

constexpr const char* kKey = "currentZRTrackingVendorIdentifier";
const std::string kAd = "AD000000-0000-4000-8000-00000000000A";
const std::string kVendor = "BE000000-0000-4000-8000-00000000000B";
const std::string kOther = "CE000000-0000-4000-8000-00000000000C";

class IdentityTest : public testing::Test {
 protected:
  std::optional<std::string> vendorId() { return identity.vendorId(platform); }

  ZRFakePlatform fake;
  ZRPlatform platform = fake.platform();
  TrackingIdentity identity;
};

TEST_F(IdentityTest, TheKindFollowsWhatIsAllowedAndKnown) {
  struct Row {
    bool tracking, use;
    std::optional<std::string> ad, vendor;
    unsigned kind;
    std::string text;
  };
  const std::optional<std::string> none;
  const Row rows[] = {{true, true, kAd, kVendor, 0, kAd},       {true, true, kAd, none, 0, kAd},
                      {true, false, kAd, kVendor, 1, kVendor},  {false, true, kAd, kVendor, 1, kVendor},
                      {false, false, kAd, kVendor, 1, kVendor}, {true, true, none, kVendor, 1, kVendor},
                      {true, true, none, none, 2, "0"},         {true, false, kAd, none, 2, "0"},
                      {false, true, kAd, none, 2, "0"}};
  for (const Row& row : rows) {
    fake.device->tracking = row.tracking;
    fake.device->advertising = row.ad;
    fake.device->vendor = row.vendor;
    fake.userDefaults->values.clear();
    TrackingIdentity fresh;
    fresh.setUseAdvertiserID(row.use);
    const auto id = fresh.deviceId(platform);
    EXPECT_EQ(static_cast<unsigned>(id.kind), row.kind);
    EXPECT_EQ(id.text, row.text);
  }
}

TEST_F(IdentityTest, WhileTheAdvertisingIdentifierServesTheVendorsIsNotTouched) {
  fake.device->tracking = true;
  fake.device->advertising = "ad000000-0000-4000-8000-00000000000a";
  fake.device->vendor = kVendor;
  EXPECT_EQ(identity.deviceId(platform).text, kAd);
  EXPECT_EQ(fake.userDefaults->reads, 0);
  EXPECT_THAT(fake.userDefaults->values, IsEmpty());
  EXPECT_EQ(identity.staticVendorId(), std::nullopt);
}

TEST_F(IdentityTest, ANewVendorIdentifierIsStoredAtOnceAndStays) {
  fake.userDefaults->values[kKey] = kOther;
  fake.device->vendor = "be000000-0000-4000-8000-00000000000b";
  EXPECT_THAT(vendorId(), Optional(kVendor));
  EXPECT_THAT(fake.userDefaults->stored, ElementsAre(Pair(kKey, kVendor)));
  fake.device->vendor = kOther;
  EXPECT_THAT(vendorId(), Optional(kVendor));
  identity.setStaticVendorId(std::nullopt);
  EXPECT_THAT(vendorId(), Optional(kOther)) << "worked out again";
}

TEST_F(IdentityTest, WithoutAVendorIdentifierTheStoredOneServesAndNothingIsWritten) {
  EXPECT_EQ(vendorId(), std::nullopt);
  fake.userDefaults->values[kKey] = kOther;
  EXPECT_THAT(vendorId(), Optional(kOther)) << "an absent one is looked for again";
  EXPECT_THAT(fake.userDefaults->stored, IsEmpty());
}

TEST_F(IdentityTest, TheSameVendorIdentifierIsNotWrittenAgain) {
  fake.userDefaults->values[kKey] = kVendor;
  fake.device->vendor = kVendor;
  EXPECT_THAT(vendorId(), Optional(kVendor));
  EXPECT_THAT(fake.userDefaults->stored, IsEmpty());
}

class ProcessIdentityTest : public WithFakePlatform {};

TEST_F(ProcessIdentityTest, TheClassOperationsTellOfTheDeviceAndTheApplication) {
  EXPECT_EQ(ZRTrackingIdentity::deviceIdType(), 2U);
  EXPECT_EQ(ZRTrackingIdentity::deviceIdTypeName(), "unknown");
  EXPECT_EQ(ZRTrackingIdentity::uniqueDeviceID(), "0");
  EXPECT_EQ(ZRTrackingIdentity::applicationID(), std::nullopt);
  EXPECT_EQ(ZRTrackingIdentity::applicationVersion(), "0");
  EXPECT_EQ(ZRTrackingIdentity::deviceName(), std::nullopt);
  EXPECT_EQ(ZRTrackingIdentity::osVersion(), "unknown");

  fake.device->version = "10.2";
  fake.device->machine = "Box1,2";
  fake.bundle->identifier = "com.example.maps";
  fake.bundle->infoStrings["CFBundleVersion"] = "42";
  fake.device->vendor = kVendor;
  EXPECT_EQ(ZRTrackingIdentity::deviceIdTypeName(), "vendor");
  EXPECT_THAT(ZRTrackingIdentity::staticVendorId(), Optional(kVendor));
  EXPECT_THAT(ZRTrackingIdentity::applicationID(), Optional(std::string("com.example.maps")));
  EXPECT_EQ(ZRTrackingIdentity::applicationVersion(), "42");
  EXPECT_THAT(ZRTrackingIdentity::deviceName(), Optional(std::string("Box1,2")));
  EXPECT_EQ(ZRTrackingIdentity::osVersion(), "i10.2");

  fake.device->tracking = true;
  fake.device->advertising = kAd;
  EXPECT_EQ(ZRTrackingIdentity::deviceIdTypeName(), "ad");
  ZRTrackingIdentity::setUseAdvertiserID(false);
  EXPECT_EQ(ZRTrackingIdentity::uniqueDeviceID(), kVendor);
  EXPECT_THAT(ZRTrackingIdentity::adId(), Optional(kAd)) << "told whether or not it may be used";
  ZRTrackingIdentity::setStaticVendorId(kOther);
  EXPECT_THAT(ZRTrackingIdentity::vendorId(), Optional(kOther));
}

class ApplicationKeyTest : public WithFakePlatform {};

TEST_F(ApplicationKeyTest, AKeyIsHandedOutAndAMissingOneRaised) {
  fake.bundle->infoStrings["ZRApplicationKey"] = " ";
  EXPECT_EQ(ZRApplicationKey::key(), " ");
  fake.bundle->infoStrings["ZRApplicationKey"] = "";
  EXPECT_THROW(ZRApplicationKey::key(), ZRMissingApplicationKeyException);
  fake.bundle->infoStrings.clear();
  fake.bundle->infoKeys = {"ZRApplicationKey"};  // a number, say
  try {
    ZRApplicationKey::key();
    FAIL();
  } catch (const ZRMissingApplicationKeyException& exception) {
    EXPECT_STREQ(exception.name(), "Missing Velmaris application key");
    EXPECT_STREQ(
        exception.reason(),
        "You must have a Velmaris application key to use this SDK. Please add ZRApplicationKey : <Your Key> to "
        "your application's Info.plist file.");
  }
}

}  // namespace
