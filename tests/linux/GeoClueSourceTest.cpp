// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "GeoClueStandIn.h"
#include "LivePositioning.h"
#include "PrivateBus.h"
#include "StreamPeer.h"
#include "positioning/AutoSource.h"
#include "positioning/GeoClueSource.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Answer = GeoClueStandIn::Answer;

class GeoClue : public LivePositioning {
 protected:
  void SetUp() override {
    if (!PrivateBus::isInstalled()) GTEST_SKIP() << "dbus-daemon is not installed";
    bus = std::make_unique<PrivateBus>(folder);
  }
  ~GeoClue() override {
    stopClients();
    service.reset();
    // The bus library ends what it has begun, on our loop; leaks would be its.
    auto last = loop->after(0.05, [this] { isDrained = true; });
    while (!isDrained) g_main_context_iteration(context, TRUE);
  }

  void startService(Answer answer = Answer::yes) {
    GDBusConnection* connection = nullptr;
    std::unique_ptr<Loop::Wait> again;
    runUntil([&] {
      again = loop->after(0.02, [] {});
      const ContextScope scope(context);
      connection = bus->connect();
      return connection != nullptr;
    });
    service = std::make_unique<GeoClueStandIn>(context, connection);
    service->setAnswer(answer);
  }

  void begin(const std::string& source = "geoclue", double answerSeconds = 5) {
    install({.source = source,
             .desktopId = "org.example.Maps",
             .systemBusAddress = bus->address(),
             .silenceSeconds = answerSeconds});
    client = startClient();
  }

  std::unique_ptr<PrivateBus> bus;
  std::unique_ptr<GeoClueStandIn> service;
  std::shared_ptr<Client> client;
  bool isDrained = false;
};

TEST_F(GeoClue, APermittedClientGetsFixesAndItsStatusIsKnown) {
  startService();
  begin();
  EXPECT_EQ(CLLocationManager::authorizationStatus(), CLAuthorizationStatus::notDetermined);
  runUntil([&] { return service->starts == 1; });
  service->say({{"Latitude", 52.5}, {"Longitude", 13.4}, {"Accuracy", 25.0}});
  runUntil([&] { return fixesOf(*client) == 1; });
  EXPECT_EQ(service->desktopId, "org.example.Maps");
  EXPECT_EQ(service->accuracyLevel, 8u) << "exact";
  EXPECT_EQ(CLLocationManager::authorizationStatus(), CLAuthorizationStatus::authorizedWhenInUse);
  EXPECT_TRUE(CLLocationManager_ZR::locationIsAuthorized());
  const ZRPositionFix& fix = client->batches[0][0]->fix();
  EXPECT_EQ(fix.coordinate.latitude, 52.5);
  EXPECT_EQ(fix.horizontalAccuracy, 25.0);
  EXPECT_EQ(fix.verticalAccuracy, -1.0);
  EXPECT_EQ(fix.speed, -1.0);
  EXPECT_EQ(fix.course, -1.0);
  EXPECT_EQ(fix.timestamp, NSDate{1778319000.5});
  managers[0]->startUpdatingHeading();
  managers[0]->stopUpdatingHeading();
  managers[0]->startUpdatingHeading();
  EXPECT_EQ(std::count_if(log.begin(), log.end(), [](auto& line) { return line.find("no compass") != line.npos; }), 1);
  managers[0]->stopUpdatingHeading();
  stopClients();
  service->say({{"Latitude", 52.6}, {"Longitude", 13.4}});
  runWhatIsReady();
  EXPECT_EQ(fixesOf(*client), 1u);
}

TEST_F(GeoClue, AFloodOfLocationsIsAskedForOneAtATime) {
  startService();
  begin();
  runUntil([&] { return service->starts == 1; });
  for (int i = 1; i <= 50; ++i) service->say({{"Latitude", i}, {"Longitude", 13.4}, {"Accuracy", 25.0}});
  runUntil([&] { return !client->batches.empty() && client->batches.back()[0]->fix().coordinate.latitude == 50.0; });
  EXPECT_LT(service->askedForLocations, 10);
}

TEST_F(GeoClue, ARefusalIsAnErrorAndAStatus) {
  startService(Answer::denied);
  begin();
  runUntil([&] { return !client->errors.empty(); });
  EXPECT_EQ(client->errors[0].code, static_cast<long>(CLErrorCode::denied));
  EXPECT_EQ(CLLocationManager::authorizationStatus(), CLAuthorizationStatus::denied);
  service.reset();  // it ends when it has nothing to do, which is nothing new
  startService();
  runUntil([&] { return service->starts == 1; });
  EXPECT_THAT(faultsOf(*client), ElementsAre("denied"));
}

TEST_F(GeoClue, AMissingAgentIsAnErrorAndALatePermissionIsStillGood) {
  startService(Answer::never);
  begin("geoclue", 0.2);
  runUntil([&] { return !client->errors.empty(); });
  EXPECT_THAT(faultsOf(*client), ElementsAre("noAgent"));
  EXPECT_EQ(CLLocationManager::authorizationStatus(), CLAuthorizationStatus::notDetermined);
  service->answerHeld();
  service->say({{"Latitude", 52.5}, {"Longitude", 13.4}});
  runUntil([&] { return fixesOf(*client) == 1; });
  EXPECT_EQ(client->errors.size(), 1u);
}

TEST_F(GeoClue, AServiceThatFindsNoPlaceForLongIsToldOf) {
  struct Told final : PositionSourceListener {
    void sourceFails(policy::PositioningFault fault, const std::string&) override { faults.push_back(fault); }
    std::vector<policy::PositioningFault> faults;
  } told;
  startService();
  const auto source = std::make_shared<GeoClueSource>(
      *loop, GeoClueSource::Options{.busAddress = bus->address(), .silenceSeconds = 0.05});
  source->start(told);
  runUntil([&] { return !told.faults.empty(); });
  EXPECT_THAT(told.faults, ElementsAre(policy::PositioningFault::noFix));
  source->start(told);
  runUntil([&] { return service->starts == 2; });
  source->stop();
  EXPECT_FALSE(wakeUps().second) << "nothing is waited for any more";
}

TEST_F(GeoClue, ABusThatEndsBeforeTheAnswerIsOneError) {
  startService(Answer::never);
  begin();
  runUntil([&] { return service->isHolding(); });
  bus->stop();
  runUntil([&] { return !client->errors.empty(); });
  bus->start();
  startService();
  runUntil([&] { return service->starts == 1; });
  EXPECT_THAT(faultsOf(*client), ElementsAre("lost"));
}

TEST_F(GeoClue, TheServiceVanishesAndReturns) {
  startService();
  begin();
  runUntil([&] { return service->starts == 1; });
  service->say({{"Latitude", 52.5}, {"Longitude", 13.4}});
  runUntil([&] { return fixesOf(*client) == 1; });
  service.reset();
  runUntil([&] { return !client->errors.empty(); });
  startService();
  runUntil([&] { return service->starts == 1; });
  service->say({{"Latitude", 91.0}, {"Longitude", 13.4}});  // nowhere
  service->say({{"Latitude", 52.6}, {"Longitude", 13.4}});
  runUntil([&] { return fixesOf(*client) == 2; });
  bus->stop();
  runUntil([&] { return client->errors.size() == 2; });
  bus->start();
  startService();
  runUntil([&] { return service->starts == 1; });
  service->say({{"Latitude", 52.7}, {"Longitude", 13.4}});
  runUntil([&] { return fixesOf(*client) == 3; });
  EXPECT_THAT(faultsOf(*client), ElementsAre("lost", "lost"));
}

TEST_F(GeoClue, AServiceThatDoesNotComeUpIsAnErrorOnceAndIsStartedAgain) {
  std::ofstream(folder.at("services/geoclue.service"))
      << "[D-BUS Service]\nName=org.freedesktop.GeoClue2\nExec=/usr/bin/touch " << folder.at("starts")
      << " /nowhere/fails\n";
  begin();
  runUntil([&] { return std::filesystem::exists(folder.at("starts")) && !client->errors.empty(); });
  std::filesystem::remove(folder.at("starts"));
  std::unique_ptr<Loop::Wait> again;
  runUntil([&] {
    again = loop->after(0.02, [] {});
    return std::filesystem::exists(folder.at("starts"));
  });
  EXPECT_THAT(faultsOf(*client), ElementsAre("noDaemon"));
}

TEST_F(GeoClue, TheFirstSourceThatAnswersIsTheOneOfTheRunEvenIfItGoes) {
  /// Leads the choice by hand: what `auto` stands on.
  struct Told final : PositionSourceListener {
    void sourceAnswers() override { events.push_back("answers"); }
    void sourceFixes(const std::vector<ZRPositionFix>&) override { events.push_back("fix"); }
    void sourceHeading(const CLHeading&) override {}
    void sourceFails(policy::PositioningFault fault, const std::string& detail) override {
      events.push_back(fault == policy::PositioningFault::noDaemon ? "none: " + detail : "fault");
    }
    void sourceAuthorization(CLAuthorizationStatus) override {}
    void sourceSays(const std::string&) override {}
    std::vector<std::string> events;
  };
  struct Candidate final : PositionSource {
    explicit Candidate(std::string name) : name_(std::move(name)) {}
    std::string name() const override { return name_; }
    void start(PositionSourceListener& heard) override { listener = &heard; }
    void stop() override { listener = nullptr; }
    PositionSourceListener* listener = nullptr;
    std::string name_;
  };
  std::vector<std::shared_ptr<Candidate>> made;
  const auto make = [&](const char* name) {
    return [&made, name] {
      made.push_back(std::make_shared<Candidate>(name));
      return made.back();
    };
  };
  const auto chooser = std::make_shared<AutoSource>(*loop, std::vector<AutoSource::Make>{make("A"), make("B")});
  Told told;
  chooser->start(told);
  made[0]->listener->sourceFails(policy::PositioningFault::noDaemon, "off");
  runUntil([&] { return made.size() == 2; });
  EXPECT_EQ(made[0]->listener, nullptr) << "the one that does not answer is stopped";
  made[1]->listener->sourceFails(policy::PositioningFault::noDaemon, "out");
  EXPECT_THAT(told.events, ElementsAre("none: A: off; B: out"));
  runUntil([&] { return made.size() == 3; });  // from the first again, after a while
  made[2]->listener->sourceAnswers();
  made[2]->listener->sourceFixes({{}});
  made[2]->listener->sourceFails(policy::PositioningFault::lost, "");
  made[2]->listener->sourceFails(policy::PositioningFault::noDaemon, "still off");
  runWhatIsReady();
  EXPECT_EQ(made.size(), 3u) << "positions of two sources are never mixed";
  EXPECT_EQ(chooser->name(), "A");
  chooser->stop();
  EXPECT_EQ(made[2]->listener, nullptr);
  EXPECT_EQ(wakeUps(), std::pair(0, false));
}

}  // namespace
