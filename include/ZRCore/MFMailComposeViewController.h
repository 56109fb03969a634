// SPDX-License-Identifier: Apache-2.0
/// @file
/// Writing mail.
#ifndef ZRCORE_MFMAILCOMPOSEVIEWCONTROLLER_H
#define ZRCORE_MFMAILCOMPOSEVIEWCONTROLLER_H

#include <ZRCore/NSError.h>
#include <ZRCore/UIViewController.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

/// What became of a mail; a newer system may report other numbers.
enum class MFMailComposeResult : int { cancelled = 0, saved = 1, sent = 2, failed = 3 };

class MFMailComposeViewController;

/// Hears what became of a mail. Held weakly.
class ZR_EXPORT MFMailComposeViewControllerDelegate {
 public:
  virtual ~MFMailComposeViewControllerDelegate();
  virtual void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& controller,
                                                             MFMailComposeResult result,
                                                             const std::optional<NSError>& error) = 0;
};

/// A mail to be written by the user: what stands in it when it is presented. Main thread.
class ZR_EXPORT MFMailComposeViewController : public UIViewController {
 public:
  /// Whether the platform in use can send mail.
  static bool canSendMail();
  static std::shared_ptr<MFMailComposeViewController> init();
  ~MFMailComposeViewController() override;

  std::shared_ptr<MFMailComposeViewControllerDelegate> mailComposeDelegate() const { return delegate_.lock(); }
  void setMailComposeDelegate(std::weak_ptr<MFMailComposeViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }
  const std::string& subject() const { return subject_; }
  void setSubject(std::string subject) { subject_ = std::move(subject); }
  const std::string& messageBody() const { return messageBody_; }
  bool isMessageBodyHTML() const { return isHTML_; }
  void setMessageBodyIsHTML(std::string body, bool isHTML) {
    messageBody_ = std::move(body);
    isHTML_ = isHTML;
  }

 private:
  MFMailComposeViewController();

  std::weak_ptr<MFMailComposeViewControllerDelegate> delegate_;
  std::string subject_;
  std::string messageBody_;
  bool isHTML_ = false;
};

/// The system's mail program. Main thread.
class ZR_EXPORT ZRMail {
 public:
  virtual ~ZRMail();
  virtual bool canSendMail() const = 0;
  /// Lets the user write and send the mail, and calls the delegate once with what became of it, never from inside this
  /// call. A screen calls it when it is to present a composer. A system that hears nothing of the outcome reports
  /// "cancelled".
  virtual void compose(const std::shared_ptr<MFMailComposeViewController>& composer) = 0;
};

#endif
