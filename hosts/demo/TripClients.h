// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TRIPCLIENTS_H
#define ZRCORE_HOSTS_DEMO_TRIPCLIENTS_H

#include <ZRCore/ZRLocationManager.h>
#include <trip/replay/ReplayedRoute.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace demo {

/// The demonstration's clients of the location service, each with a manager of its own.
class TripClients {
 public:
  enum Which : std::size_t { plain, snapped, halfWay };
  static constexpr std::size_t kCount = 3;

  /// A row of the table.
  struct Row {
    std::string name;
    std::string explanation;
    bool isListening = false;
    std::uint64_t fixes = 0;  ///< delivered to it
  };

  /// Called with what the plain client is given.
  struct Handlers {
    std::function<void(const ZRLocation&)> fix;
    std::function<void(const NSError&)> failure;
  };

  /// Starts the plain and the snapping client.
  explicit TripClients(Handlers handlers);
  TripClients(const TripClients&) = delete;
  TripClients& operator=(const TripClients&) = delete;
  ~TripClients();  // stops all of them

  void setListening(Which client, bool listens);
  bool isListening(Which client) const { return clients_[client].manager->shouldUpdateLocation(); }

  std::array<Row, kCount> rows() const;
  /// What the snapping client got last; null before its first fix.
  const std::shared_ptr<ZRLocation>& lastSnapped() const { return clients_[snapped].delegate->latest; }

  /// A new trip: the counts start from 0, and what was snapped to is forgotten.
  void reset();
  /// The trip goes on from another place: what was snapped to is forgotten.
  void forgetRoute() { route_ = {}; }

 private:
  class Delegate : public ZRDidUpdateLocations {
   public:
    void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) override;

    std::shared_ptr<ZRLocation> latest;
    std::uint64_t fixes = 0;
  };

  class ReportingDelegate final : public Delegate, public ZRDidFailWithError {
   public:
    explicit ReportingDelegate(Handlers handlers) : handlers_(std::move(handlers)) {}
    void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) override;
    void locationManagerDidFailWithError(ZRLocationManager& manager, const NSError& error) override;

   private:
    Handlers handlers_;
  };

  struct Client {
    std::shared_ptr<Delegate> delegate;
    std::shared_ptr<ZRLocationManager> manager;
  };

  std::shared_ptr<ZRLocation> snap(const std::shared_ptr<ZRLocation>& location);

  trip::ReplayedRoute route_;
  std::array<Client, kCount> clients_;
};

}  // namespace demo

#endif
