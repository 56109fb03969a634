// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>
#include <doctor/Probes.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <thread>

#include "GeoClueStandIn.h"
#include "PrivateBus.h"
#include "TemporaryFolder.h"

namespace doctor {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A socket that answers each caller with a text, in a thread of its own.
class Talker {
 public:
  Talker(const std::string& path, std::string text) : text_(std::move(text)) {
    socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(socket_, 4), 0);
    thread_ = std::thread([this] {
      for (int caller = 0; (caller = ::accept(socket_, nullptr, nullptr)) >= 0; ::close(caller)) {
        ::send(caller, text_.data(), text_.size(), MSG_NOSIGNAL);
        char byte = 0;
        while (::recv(caller, &byte, 1, 0) > 0) {
        }
      }
    });
  }
  ~Talker() {
    ::shutdown(socket_, SHUT_RDWR);
    thread_.join();
    ::close(socket_);
  }

 private:
  std::string text_;
  int socket_ = -1;
  std::thread thread_;
};

class Doctor : public testing::Test {
 protected:
  void expectFinding(Probe& probe, State state, const std::string& detail) {
    const Finding finding = probe.look();
    EXPECT_STREQ(nameOf(finding.state), nameOf(state)) << finding.detail;
    EXPECT_THAT(finding.detail, HasSubstr(detail));
    EXPECT_EQ(finding.remedy.empty(), state == State::usable) << "what cannot be used has a remedy: " << finding.remedy;
  }

  std::string program(const std::string& name, const std::string& script) {
    std::ofstream(folder.at(name)) << "#!/bin/sh\n" << script << '\n';
    ::chmod(folder.at(name).c_str(), 0700);
    return folder.at(name);
  }

  TemporaryFolder folder;
};

TEST_F(Doctor, GpsdMustAnswerAsOneAndHaveAReceiver) {
  const std::string greeting = "{\"class\":\"VERSION\",\"release\":\"3.22\"}\n";
  const auto look = [&](const char* name, const std::string& text, State state, const char* detail) {
    SCOPED_TRACE(name);
    const Talker daemon(folder.at(name), text);
    GpsdProbe probe(std::get<policy::PositioningSource>(policy::parsePositioningSource("gpsd:" + folder.at(name))),
                    0.3);
    expectFinding(probe, state, detail);
  };
  look("whole", greeting + "{\"class\":\"DEVICES\",\"devices\":[{\"path\":\"/dev/ttyUSB0\"}]}\n", State::usable,
       "3.22");
  look("rolledOver",
       greeting +
           "{\"class\":\"DEVICES\",\"devices\":[{\"path\":\"/dev/ttyUSB0\"}]}\n"
           "{\"class\":\"TPV\",\"mode\":3,\"time\":\"2006-09-23T09:00:00Z\",\"lat\":52.5,\"lon\":13.4}\n",
       State::usable, "2006-09-23, lies more than ten years back");
  look("bare", greeting + "{\"class\":\"DEVICES\",\"devices\":[]}\n", State::broken, "no receiver");
  look("other", "HTTP/1.1 400 Bad Request\r\n\r\n", State::broken, "no gpsd");
  look("silent", "", State::broken, "no gpsd");
  GpsdProbe nobody(std::get<policy::PositioningSource>(policy::parsePositioningSource("gpsd:" + folder.at("none"))));
  expectFinding(nobody, State::missing, "none");
}

TEST_F(Doctor, ReceiversMustBeReadable) {
  ReceiversProbe probe(folder.at(""));
  expectFinding(probe, State::missing, "no serial device");
  std::ofstream(folder.at("ttyS0")) << "";  // every machine has those
  expectFinding(probe, State::missing, "no serial device");
  // For the superuser everything is readable, but not what leads nowhere.
  ASSERT_EQ(::symlink("/nowhere", folder.at("ttyACM1").c_str()), 0);
  expectFinding(probe, State::broken, "ttyACM1");
  std::ofstream(folder.at("ttyUSB0")) << "";
  expectFinding(probe, State::usable, "ttyUSB0");
  ReceiversProbe noFolder(folder.at("none"));
  expectFinding(noFolder, State::missing, "none");
}

TEST_F(Doctor, CertificatesMustBeThereAndBeSome) {
  const std::string file = folder.at("authorities.crt");
  CertificatesProbe probe(file);
  expectFinding(probe, State::missing, file);
  EXPECT_THAT(probe.look().remedy, HasSubstr("install ca-certificates"));
  std::ofstream(file) << "nonsense\n";
  expectFinding(probe, State::broken, "no certificate");
  const char* const one = "-----BEGIN CERTIFICATE-----\nMA==\n-----END CERTIFICATE-----\n";
  std::ofstream(file) << one << one;
  expectFinding(probe, State::usable, "2 certificates");
}

TEST_F(Doctor, VoicesMustBeListedInTime) {
  const auto look = [&](const std::string& name, State state, const char* detail) {
    SCOPED_TRACE(name);
    VoicesProbe probe(name, 0.3);
    expectFinding(probe, state, detail);
  };
  look(program("good", "echo Heading; echo en; echo de"), State::usable, "2 voices");
  look(program("mute", "echo Heading"), State::broken, "no voices");
  look(program("failing", "echo a; echo b; echo c; exit 1"), State::broken, "no voices");
  look(program("stuck", "exec sleep 60"), State::broken, "does not answer");
  look(program("endless", "exec yes"), State::broken, "");
  look(folder.at("none"), State::missing, "not installed");
}

TEST_F(Doctor, TheSoundServerMustListen) {
  const auto look = [&](const std::string& server, State state, const char* detail) {
    SCOPED_TRACE(server);
    SoundProbe probe(server);
    expectFinding(probe, state, detail);
  };
  look("unix:" + folder.at("none"), State::missing, "not running");
  std::ofstream(folder.at("stale")) << "";
  look(folder.at("stale"), State::broken, "refused");
  const Talker server(folder.at("pulse"), "");
  look("unix:" + folder.at("pulse"), State::usable, "pulse");

  GSocketListener* const remote = g_socket_listener_new();
  const std::string place =
      "127.0.0.1:" + std::to_string(g_socket_listener_add_any_inet_port(remote, nullptr, nullptr));
  look("tcp:" + place, State::usable, place.c_str());
  g_socket_listener_close(remote);
  g_object_unref(remote);
  look("tcp:" + place, State::broken, "refused");
  look("tcp:[::1", State::broken, "[::1");
}

TEST_F(Doctor, GeoClueMustAnswerAndBeSwitchedOn) {
  if (!PrivateBus::isInstalled()) GTEST_SKIP() << "dbus-daemon is not installed";
  const std::string address = "unix:path=" + folder.at("bus");
  const auto look = [&](State state, const char* detail) {
    GeoClueProbe probe(address, 1.0);
    expectFinding(probe, state, detail);
  };
  look(State::missing, "no message bus");

  PrivateBus bus(folder);
  GMainContext* const context = g_main_context_new();
  GDBusConnection* connection = nullptr;
  const auto start = std::chrono::steady_clock::now();
  while (connection == nullptr && std::chrono::steady_clock::now() - start < std::chrono::seconds(20)) {
    const ContextScope scope(context);
    connection = bus.connect();
  }
  ASSERT_NE(connection, nullptr);
  look(State::missing, "not installed");
  {
    GeoClueStandIn service(context, connection);
    std::atomic<bool> isOver = false;
    std::thread thread([&] {
      while (!isOver) g_main_context_iteration(context, TRUE);
    });
    look(State::usable, "8");
    service.availableAccuracyLevel = 0;
    look(State::broken, "switched off");
    isOver = true;
    g_main_context_wakeup(context);
    thread.join();
    look(State::broken, "does not answer");  // it is on the bus, and nobody iterates its loop
  }
  g_main_context_unref(context);
}

TEST_F(Doctor, AdaptersThatTheBuildLacksOrThatCantReadAreNamed) {
  struct Blind final : ZRImages {
    std::shared_ptr<const UIImage> imageWithData(std::string_view) const override { return nullptr; }
  };
  AdaptersProbe nothing(ZRPlatform{});
  expectFinding(nothing, State::missing, "positioning");
  ZRPlatform platform = makeLinuxPlatform();
  AdaptersProbe all(platform);
  expectFinding(all, State::usable, "positioning");
  platform.images = std::make_shared<Blind>();
  AdaptersProbe blind(platform);
  expectFinding(blind, State::broken, "document: images");
}

}  // namespace
}  // namespace doctor
