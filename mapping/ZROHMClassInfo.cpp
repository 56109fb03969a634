// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZROHMClassInfo.h>

#include <utility>

namespace {

constexpr const char* kRootName = "NSObject";

}  // namespace

const std::string& ZROHMProperty::declaredClassName() const {
  return declaredClass != nullptr ? declaredClass().name() : foundationClassName;
}

ZROHMClassInfo::Snapshot::~Snapshot() = default;

ZROHMClassInfo::ZROHMClassInfo(ZROHMClassParts parts) : parts_(std::move(parts)) {
  for (std::size_t i = 0; i < parts_.properties.size(); ++i) {
    ZROHMProperty& property = parts_.properties.valueAt(i);
    propertyNames_.push_back((parts_.properties.begin() + static_cast<std::ptrdiff_t>(i))->first);
    allProperties_.set(propertyNames_.back(), &property);
  }
  if (parts_.name == kRootName) propertyNames_.clear();
  if (parts_.superclass == nullptr) return;
  const ZROHMClassInfo& super = *parts_.superclass;
  propertyNames_.insert(propertyNames_.end(), super.propertyNames_.begin(), super.propertyNames_.end());
  for (const auto& [name, property] : super.allProperties_) {
    if (!allProperties_.contains(name)) allProperties_.set(name, property);
  }
}

ZROHMClassInfo::~ZROHMClassInfo() {
  const auto deleteAll = [](const Snapshot* snapshot) {
    while (snapshot != nullptr) delete std::exchange(snapshot, snapshot->older);
  };
  deleteAll(plan_.load(std::memory_order_acquire));
  for (const auto& slot : slots_) deleteAll(slot.load(std::memory_order_acquire));
}

const ZROHMProperty* ZROHMClassInfo::propertyNamed(std::string_view name) const {
  const ZROHMProperty* const* const found = allProperties_.find(name);
  return found != nullptr ? *found : nullptr;
}

bool ZROHMClassInfo::isSubtypeOf(const ZROHMClassInfo& other) const {
  const ZROHMClassInfo* type = this;
  while (type != nullptr && type != &other) type = type->superclass();
  return type != nullptr;
}

bool ZROHMClassInfo::conformsToMappable() const {
  const ZROHMClassInfo* type = this;
  while (type != nullptr && !type->mappable_.load(std::memory_order_acquire)) type = type->superclass();
  return type != nullptr;
}
