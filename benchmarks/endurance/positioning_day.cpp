// SPDX-License-Identifier: Apache-2.0
// A day of a receiver's reports as fast as they are read, a stream cut at every byte, a thousand clients.
#include <gmock/gmock.h>

#include <cstdio>

#include "GpsdPeer.h"

using testing::IsEmpty;

namespace {

class PositioningEndurance : public WithGpsdPeer {};

long residentKilobytes() {
  long size = 0, resident = 0;
  std::FILE* const file = std::fopen("/proc/self/statm", "r");
  if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
  std::fclose(file);
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

TEST_F(PositioningEndurance, ADayAtFullSpeedLeavesNothingBehind) {
  begin();
  greet();
  struct Counter final : ZRDidUpdateLocations {
    void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override {
      count += locations.size();
    }
    std::size_t count = 0;
  };
  const auto counter = std::make_shared<Counter>();
  managers[0]->setDelegate(counter);
  constexpr int kSeconds = 86400;
  long early = 0;
  std::string waiting;
  for (int second = 0; second < kSeconds || !waiting.empty();) {
    for (; waiting.size() < 60000 && second < kSeconds; ++second) waiting += report(second, "") + report(second);
    waiting.erase(0, peer.saySome(waiting));
    runWhatIsReady();
    if (early == 0 && second > kSeconds / 10) early = residentKilobytes();
  }
  runUntil([&] { return counter->count == kSeconds; });
  const long late = residentKilobytes();
  RecordProperty("kilobytesAfterATenth", static_cast<int>(early));
  RecordProperty("kilobytesAtTheEnd", static_cast<int>(late));
  EXPECT_LE(late - early, 256) << early << " kB after a tenth of the day, " << late << " kB at its end";
}

TEST_F(PositioningEndurance, NoFixIsLostWhereverTheBytesAreCutAndRubbishCostsOnlyItself) {
  begin();
  greet();
  std::string stream = report(1) + "HTTP/1.1 400 Bad Request\r\n" + report(2) + std::string(200000, 'x') + "\n" +
                       report(3) + "{\"class\":\"TPV\",\"mode\":3,\"lat\":NaN,\"lon\":1e999}\n" + report(4) +
                       std::string("{\"\0\":[[[[\n", 10) + report(5);
  for (std::size_t at = 0, step = 1; at < stream.size(); step = step % 97 + 1) {
    at += peer.saySome(std::string_view(stream).substr(at, at > 300 && at < 200000 ? 20000 : step));
    runWhatIsReady();
  }
  runUntil([&] { return fixesOf(*client) == 5; });
  EXPECT_THAT(client->errors, IsEmpty());
}

TEST_F(PositioningEndurance, AThousandClientsMayStartAndStopInsideADelegate) {
  begin();
  greet();
  std::vector<std::shared_ptr<Client>> others;
  client->onLocations = [&] {
    if (others.empty()) {
      for (int i = 0; i < 1000; ++i) others.push_back(startClient());
    } else {
      stopClients();  // the receiver is stopped from inside its own report
      managers[0]->startUpdatingLocation();
    }
  };
  peer.say(report(1));
  runUntil([&] { return others.size() == 1000; });
  peer.say(report(2) + report(3) + report(4));
  runUntil([&] { return peer.connections == 2; });
  for (const auto& other : others) EXPECT_LE(fixesOf(*other), 3u);
  EXPECT_EQ(managers[0]->countInstancesGettingLocationUpdates(), 1);
  client->onLocations = nullptr;
  peer.say(kGreeting + report(5));
  const std::size_t before = fixesOf(*client);
  runUntil([&] { return fixesOf(*client) == before + 1; });
  EXPECT_THAT(client->errors, IsEmpty());
}

}  // namespace
