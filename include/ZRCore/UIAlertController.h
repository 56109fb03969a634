// SPDX-License-Identifier: Apache-2.0
/// @file
/// Dialogues: a sentence, and what can be done about it.
#ifndef ZRCORE_UIALERTCONTROLLER_H
#define ZRCORE_UIALERTCONTROLLER_H

#include <ZRCore/UIViewController.h>
#include <ZRCore/ZRExport.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

enum class UIAlertControllerStyle : int { actionSheet = 0, alert = 1 };
enum class UIAlertActionStyle : int { standard = 0, cancel = 1, destructive = 2 };

/// One choice of a dialogue.
struct UIAlertAction {
  static UIAlertAction actionWithTitleStyleHandler(std::string title, UIAlertActionStyle style,
                                                   std::function<void()> handler) {
    return {std::move(title), style, std::move(handler)};
  }

  std::string title;
  UIAlertActionStyle style = UIAlertActionStyle::standard;
  /// Called, if there is one, after the dialogue has closed.
  std::function<void()> handler;
};

/// A dialogue. A screen closes it by itself when a choice is made; leaving it without a choice is the cancel action.
class ZR_EXPORT UIAlertController : public UIViewController {
 public:
  static std::shared_ptr<UIAlertController> alertControllerWithTitleMessagePreferredStyle(
      std::optional<std::string> title, std::optional<std::string> message, UIAlertControllerStyle style);
  ~UIAlertController() override;

  const std::optional<std::string>& message() const { return message_; }
  UIAlertControllerStyle preferredStyle() const { return style_; }
  /// In the order in which they are offered.
  const std::vector<UIAlertAction>& actions() const { return actions_; }
  void addAction(UIAlertAction action) { actions_.push_back(std::move(action)); }

 private:
  UIAlertController(std::optional<std::string> message, UIAlertControllerStyle style)
      : message_(std::move(message)), style_(style) {}

  std::optional<std::string> message_;
  UIAlertControllerStyle style_;
  std::vector<UIAlertAction> actions_;
};

#endif
