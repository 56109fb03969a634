// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <cmath>

#include "GpsdPeer.h"
#include "positioning/AutoSource.h"
#include "positioning/LinuxLocationManager.h"
#include "positioning/StreamSource.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class GpsdSource : public WithGpsdPeer {};

TEST_F(GpsdSource, AReportIsToldAfterAQuietMomentAndTheReceiversOwnSpeedReplacesTheDerived) {
  begin();
  greet();
  peer.say(report(1, ",\"track\":10,\"speed\":93.3") + report(1));
  runUntil([&] { return fixesOf(*client) == 1; });
  const ZRPositionFix& full = client->batches[0][0]->fix();
  EXPECT_EQ(full.horizontalAccuracy, 19.0);
  EXPECT_EQ(full.verticalAccuracy, 25.5);
  EXPECT_EQ(full.course, 90.0);
  EXPECT_EQ(full.speed, 13.9);
  peer.say(report(2, ""));  // a receiver that stands still reports no course, and perhaps no speed
  runUntil([&] { return fixesOf(*client) == 2; });
  const ZRPositionFix& thin = client->batches[1][0]->fix();
  EXPECT_EQ(thin.course, -1.0);
  EXPECT_EQ(thin.speed, -1.0);
  peer.say(report(2, ",\"speed\":1") + report(3));  // what comes of a reported instant is not a second fix
  runUntil([&] { return fixesOf(*client) == 3; });
  EXPECT_EQ(client->batches[2][0]->timestamp().secondsSince1970, full.timestamp.secondsSince1970 + 2.0);
  EXPECT_THAT(client->errors, IsEmpty());
  EXPECT_THAT(log, testing::Contains(HasSubstr("positions come from gpsd")));
}

TEST_F(GpsdSource, AutoPassesOverAHostThatNeverAnswersAndWhatItChoosesNeedsNoPermission) {
  struct NeverConnects final : Connector {
    void connect(Done) override {}
  };
  const auto makeSource = [this](std::unique_ptr<Connector> connector, double greetingSeconds) {
    return std::make_shared<StreamSource>(*loop, std::move(connector),
                                          StreamSource::Options{.greets = true, .greetingSeconds = greetingSeconds});
  };
  policy::PositioningSource place;
  place.path = folder.at("gpsd");
  const std::vector<AutoSource::Make> candidates{[&] { return makeSource(std::make_unique<NeverConnects>(), 0.01); },
                                                 [&] { return makeSource(makeSocketConnector(place, context), 10.0); }};
  const auto authorization = std::make_shared<Authorization>();
  AskingLocationManager manager(
      {[&](auto) { return std::make_shared<AutoSource>(*loop, candidates); }, authorization, [](auto&) {}});
  manager.startUpdatingLocation();
  greet();
  runUntil([&] { return authorization->status != CLAuthorizationStatus::notDetermined; });
  EXPECT_EQ(authorization->status, CLAuthorizationStatus::authorizedAlways);
}

TEST_F(GpsdSource, ADaemonThatGoesAndComesIsOneErrorForEachClient) {
  begin();
  const auto second = startClient();
  greet();
  peer.say(report(1));
  runUntil([&] { return fixesOf(*client) == 1; });
  peer.disappear();
  peer.hangUp();
  runUntil([&] { return !client->errors.empty(); });
  peer.listen();  // the attempts in between were refused, and nobody was told again
  greet(2);
  peer.say(report(1) + report(2));  // the instant that was reported before the loss is not reported again
  runUntil([&] { return fixesOf(*client) == 2; });
  EXPECT_THAT(faultsOf(*client), ElementsAre("lost"));
  EXPECT_THAT(faultsOf(*second), ElementsAre("lost"));
  EXPECT_EQ(fixesOf(*second), 2u);
  EXPECT_THAT(log.back(), HasSubstr("again"));
}

TEST_F(GpsdSource, AReceiverThatIsMissingOrSilentIsAnErrorOnce) {
  begin(0.05);
  runUntil([&] { return peer.connections == 1; });
  peer.say("{\"class\":\"VERSION\",\"release\":\"3.22\"}\n{\"class\":\"DEVICES\",\"devices\":[]}\n");
  runUntil([&] { return client->errors.size() == 1; });
  peer.say("{\"class\":\"DEVICE\",\"path\":\"/dev/pts/0\",\"activated\":\"2026-05-09T09:00:00Z\"}\n" + report(1));
  runUntil([&] { return fixesOf(*client) == 1; });
  runUntil([&] { return client->errors.size() == 2; });
  // The last report before the receiver is unplugged is reported, and does not pass for its return.
  peer.say(report(2, "") + "{\"class\":\"DEVICE\",\"path\":\"/dev/pts/0\",\"activated\":0}\n");
  runUntil([&] { return client->errors.size() == 3; });
  EXPECT_EQ(fixesOf(*client), 2u);
  EXPECT_THAT(log.back(), HasSubstr("no receiver"));
  EXPECT_THAT(faultsOf(*client), ElementsAre("noDevice", "noFix", "noDevice"));
  EXPECT_EQ(client->errors[0].domain, kCLErrorDomain);
  EXPECT_THAT(client->errors[0].localizedDescription(), HasSubstr("gpsd at"));
}

TEST_F(GpsdSource, AStoppedSourceHoldsNothingAndAStartIsANewRun) {
  begin();
  greet();
  peer.say(report(1, ""));  // half an instant: a timer waits for the rest
  runWhatIsReady();
  EXPECT_GE(wakeUps().first, 2);
  stopClients();
  EXPECT_EQ(wakeUps(), std::pair(1, false)) << "what is left is the peer's own descriptor";
  EXPECT_TRUE(peer.isLeft());
  managers[0]->startUpdatingLocation();
  greet(2);
  peer.say(report(2));
  runUntil([&] { return fixesOf(*client) >= 1; });
  stopClients();
  peer.disappear();
  managers[0]->startUpdatingLocation();
  runUntil([&] { return !client->errors.empty(); });
  EXPECT_TRUE(wakeUps().second) << "it looks for the daemon again";
  stopClients();
  EXPECT_EQ(wakeUps(), std::pair(0, false));
}

TEST_F(GpsdSource, HeadingsComeFromACompassAndOnlyWhileTheyAreWanted) {
  begin();
  greet();
  const std::string attitude = "{\"class\":\"ATT\",\"time\":\"2026-05-09T09:00:00Z\",\"heading\":123.5}\n";
  peer.say(attitude + report(1));
  runUntil([&] { return fixesOf(*client) == 1; });
  EXPECT_THAT(client->headings, IsEmpty());
  managers[0]->startUpdatingHeading();
  for (int second = 2; second < 30; ++second) peer.say(report(second));
  runUntil([&] { return fixesOf(*client) == 29; });
  EXPECT_EQ(std::count_if(log.begin(), log.end(), [](auto& line) { return line.find("no compass") != line.npos; }), 1);
  peer.say(attitude);
  runUntil([&] { return client->headings.size() == 1; });
  EXPECT_EQ(client->headings[0].trueHeading, 123.5);
  EXPECT_LT(client->headings[0].magneticHeading, 0.0);
  EXPECT_GE(client->headings[0].headingAccuracy, 0.0);
  stopClients();
  EXPECT_FALSE(peer.isLeft()) << "headings are still wanted";
  managers[0]->stopUpdatingHeading();
  EXPECT_TRUE(peer.isLeft());
}

}  // namespace
