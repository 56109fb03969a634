// SPDX-License-Identifier: Apache-2.0
#include "MachineCheck.h"

#include <doctor/Probes.h>
#include <gio/gio.h>

#include <utility>

namespace demo {

namespace {

struct Check {
  std::weak_ptr<MachineCheck::Tell> tell;
  Services found;
};

bool isUsable(doctor::Probe&& probe) { return probe.look().state == doctor::State::usable; }

void look(GTask* task, gpointer, gpointer check, GCancellable*) {
  Services& found = static_cast<Check*>(check)->found;
  policy::PositioningSource gpsd;
  gpsd.kind = policy::PositioningSource::Kind::gpsd;
  found.hasReceiver = isUsable(doctor::GpsdProbe(gpsd)) || isUsable(doctor::GeoClueProbe());
  found.hasSound = isUsable(doctor::SoundProbe(doctor::soundServerOfThisUser()));
  g_task_return_boolean(task, TRUE);
}

void tell(GObject*, GAsyncResult* task, gpointer) {
  const auto& check = *static_cast<const Check*>(g_task_get_task_data(G_TASK(task)));
  if (const auto listener = check.tell.lock()) (*listener)(check.found);
}

}  // namespace

MachineCheck::MachineCheck(Tell listener) : tell_(std::make_shared<Tell>(std::move(listener))) {
  GTask* const task = g_task_new(nullptr, nullptr, tell, nullptr);
  g_task_set_task_data(task, new Check{tell_, {}}, [](gpointer check) { delete static_cast<Check*>(check); });
  g_task_run_in_thread(task, look);
  g_object_unref(task);
}

}  // namespace demo
