// SPDX-License-Identifier: Apache-2.0
/// @file
/// The in-app browser: one page of the web, a toolbar, and ways to pass its address on.
#ifndef ZRCORE_ZRWEBVIEWCONTROLLER_H
#define ZRCORE_ZRWEBVIEWCONTROLLER_H

#include <ZRCore/MFMailComposeViewController.h>
#include <ZRCore/NSURL.h>
#include <ZRCore/UIToolbar.h>
#include <ZRCore/UIViewController.h>
#include <ZRCore/UIWebView.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

/// A controller that shows one page, with a toolbar below it: reload, back, forward, share. The share menu opens the
/// address in the system's browser, copies it or mails it. A spinner at the right of the navigation bar turns while a
/// page loads, and the page's title becomes the controller's.
///
/// Every navigation is allowed. A load that fails changes nothing: the spinner goes on turning and the buttons
/// stay as they are, and a screen shows the failure in its own way. User-visible texts are looked up in the host's
/// string table under their English text. Main thread.
class ZR_EXPORT ZRWebViewController : public UIViewController,
                                      public UIWebViewDelegate,
                                      public MFMailComposeViewControllerDelegate {
 public:
  /// Makes the controller, its view and all its parts on the screen of the platform in use, and starts loading `url`
  /// before it returns. Without an address nothing is loaded.
  static std::shared_ptr<ZRWebViewController> initWithUrl(std::optional<NSURL> url);
  ~ZRWebViewController() override;

  void loadView() override;
  /// Lays out the browser view below a translucent navigation bar, or from the top, and puts a new spinner, at rest,
  /// into the navigation bar: white on a black bar, grey on every other.
  void viewWillAppear(bool animated) override;

  void backPressed();
  void forwardPressed();
  void refreshPressed();
  /// Stops the load. No item of the toolbar calls it; it is for the host.
  void stopPressed();
  /// Shows the share menu.
  void actionPressed();
  /// Takes this controller off its navigation controller. No item of the toolbar calls it; it is for the host.
  void navControllerBack();

  /// The address to share: that of the current request when the browser can go back, else the one that the controller
  /// was opened with, also when that page was redirected: what is shared is what was opened. Absent when there is none.
  std::optional<std::string> getUrlString() const;
  /// Puts a text on the general pasteboard. An absent one is passed over.
  void copyToPasteBoard(const std::optional<std::string>& text);
  /// Opens the mail composer for `getUrlString`, or says that no mail can be sent. The argument is not used: the
  /// address may have changed since the menu opened.
  void emailString(const std::optional<std::string>& text);

  void webViewDidStartLoad(UIWebView& webView) override;
  void webViewDidFinishLoad(UIWebView& webView) override;
  void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) override;
  /// Takes the composer away; a mail that was saved, has failed, or of which something unknown became, is reported.
  void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& controller,
                                                     MFMailComposeResult result,
                                                     const std::optional<NSError>& error) override;

  const std::shared_ptr<UIToolbar>& toolBar() const { return toolBar_; }
  void setToolBar(std::shared_ptr<UIToolbar> toolBar) { toolBar_ = std::move(toolBar); }
  /// The address that the controller was opened with.
  const std::optional<NSURL>& url() const { return url_; }
  void setUrl(std::optional<NSURL> url) { url_ = std::move(url); }
  const std::shared_ptr<UIWebView>& webView() const { return webView_; }
  void setWebView(std::shared_ptr<UIWebView> webView) { webView_ = std::move(webView); }
  const std::shared_ptr<UIBarButtonItem>& backButton() const { return backButton_; }
  void setBackButton(std::shared_ptr<UIBarButtonItem> item) { backButton_ = std::move(item); }
  const std::shared_ptr<UIBarButtonItem>& forwardButton() const { return forwardButton_; }
  void setForwardButton(std::shared_ptr<UIBarButtonItem> item) { forwardButton_ = std::move(item); }
  const std::shared_ptr<UIBarButtonItem>& actionButton() const { return actionButton_; }
  void setActionButton(std::shared_ptr<UIBarButtonItem> item) { actionButton_ = std::move(item); }
  const std::shared_ptr<UIBarButtonItem>& refreshButton() const { return refreshButton_; }
  void setRefreshButton(std::shared_ptr<UIBarButtonItem> item) { refreshButton_ = std::move(item); }
  /// Null until the view is about to appear for the first time.
  const std::shared_ptr<UIActivityIndicatorView>& activityIndicator() const { return activityIndicator_; }
  void setActivityIndicator(std::shared_ptr<UIActivityIndicatorView> indicator) {
    activityIndicator_ = std::move(indicator);
  }

 protected:
  ZRWebViewController();
  /// The initialisation itself, for the factories of subclasses: call it once, on an object that a std::shared_ptr
  /// owns already.
  void initialiseWithUrl(std::optional<NSURL> url);

 private:
  void buildToolBar();
  void updateArrows();
  void present(const std::shared_ptr<UIViewController>& controller);
  void presentAlert(std::string message);

  std::shared_ptr<UIToolbar> toolBar_;
  std::optional<NSURL> url_;
  std::shared_ptr<UIWebView> webView_;
  std::shared_ptr<UIBarButtonItem> backButton_;
  std::shared_ptr<UIBarButtonItem> forwardButton_;
  std::shared_ptr<UIBarButtonItem> actionButton_;
  std::shared_ptr<UIBarButtonItem> refreshButton_;
  std::shared_ptr<UIActivityIndicatorView> activityIndicator_;
};

#endif
