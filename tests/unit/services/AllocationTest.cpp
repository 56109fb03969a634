// SPDX-License-Identifier: Apache-2.0
// Addresses are built and dates read per item of a service's answer: nothing but the result may be allocated.
#include <ZRCore/NSDate_ZR.h>
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURL_ZR.h>
#include <gtest/gtest.h>

#include "AllocationCounter.h"

namespace {

template <class Work>
long allocationsOf(Work work) {
  const long before = allocationsSoFar();
  const auto result = work();
  EXPECT_TRUE(result);
  return allocationsSoFar() - before;
}

TEST(ServicesAllocationTest, OnlyTheResultIsAllocated) {
  const std::string address = "Größe 12, 10115 Berlin & Umgebung; a long address";
  const ZROHMDictionary parameters = {{"q", address}, {"limit", 10}, {"zoom", 12.5}, {"exact", true}, {"key", "a/b+c"}};
  EXPECT_EQ(allocationsOf([&] { return NSString_ZR::urlQueryParameterEscaped(address); }), 1);
  const std::string page(4096, '/');
  EXPECT_EQ(allocationsOf([&] { return NSString_ZR::urlQueryParameterEscaped(page); }), 1);
  EXPECT_EQ(allocationsOf([&] { return NSString_ZR::urlQueryParameterKeyEscaped("key"); }), 0);
  EXPECT_EQ(allocationsOf([&] {
              return NSURL_ZR::urlWithBaseUrlStringPathParameters("https://geocode.example/", "search", parameters);
            }),
            1);
  EXPECT_EQ(allocationsOf([] { return NSDate_ZR::dateWithISO8601String("2016-03-01T12:00:00Z"); }), 0);
  EXPECT_EQ(allocationsOf([] { return NSDate_ZR::dateFromIntervalSince1970FromStringDividedBy("1456833600000", 1e3); }),
            0);
  EXPECT_EQ(allocationsOf([] { return NSDate_ZR::monthDayYear({1456833600.0}); }), 0);
}

}  // namespace
