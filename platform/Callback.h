// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_CALLBACK_H
#define ZRCORE_PLATFORM_CALLBACK_H

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

/// A function that whoever it calls may end, together with the object that holds it. A call copies the function before
/// it runs and, where the function is an object's own, holds that object until it returns. Nothing is called once the
/// object is gone, nor by an empty callback.
template <class... Arguments>
class Callback {
 public:
  Callback() = default;

  template <class Function>
  requires(std::invocable<Function&, Arguments...> && !std::same_as<std::remove_cvref_t<Function>, Callback>)
      Callback(Function function)
      : call_(std::move(function)) {}

  /// @param owner     held by a `shared_ptr`, weakly by the callback
  /// @param function  a member function of the owner's, or a function that uses the owner
  template <class Owner, class Function>
  Callback(Owner* owner, Function function)
      : call_([weak = owner->weak_from_this(), owner, function = std::move(function)](Arguments... arguments) {
          const auto held = weak.lock();
          if (!held) return;
          [[maybe_unused]] Owner* const self = owner;  // of which a plain function has no need
          if constexpr (std::is_member_function_pointer_v<Function>) {
            (self->*function)(std::forward<Arguments>(arguments)...);
          } else {
            function(std::forward<Arguments>(arguments)...);
          }
        }) {}

  void operator()(Arguments... arguments) const {
    if (const auto call = call_) call(std::forward<Arguments>(arguments)...);
  }

 private:
  std::function<void(Arguments...)> call_;
};

template <class Owner, class Class, class... Arguments>
Callback(Owner*, void (Class::*)(Arguments...)) -> Callback<Arguments...>;
template <class Owner, class Function>
Callback(Owner*, Function) -> Callback<>;

#endif
