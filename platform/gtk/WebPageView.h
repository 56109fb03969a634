// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_WEBPAGEVIEW_H
#define ZRCORE_PLATFORM_GTK_WEBPAGEVIEW_H

#include <ZRCore/UIWebView.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "FrameView.h"
#include "WebLoadReports.h"
#include "WebNavigation.h"

/// A page of the web by WebKit. "document.title" is what the page had when it finished, and what it has become since;
/// other scripts are not evaluated, because WebKit answers later and the question does not wait. A jump within the page
/// is reported as a load that ends at once. An engine that has died is reported as a failed load and shown as such;
/// reloading starts a new one.
class WebPageView final : public Shown<UIWebView> {
 public:
  /// @param schemes  of the addresses that the view shows itself, in lower case.
  /// @param session  where cookies, storage and cache are kept.
  WebPageView(const CGRect& frame, std::vector<std::string> schemes, WebKitNetworkSession* session);
  ~WebPageView() override;

  void loadRequest(const NSURLRequest& request) override;
  void reload() override;
  void stopLoading() override;
  bool canGoBack() const override;
  bool canGoForward() const override;
  void goBack() override;
  void goForward() override;
  std::optional<NSURLRequest> request() const override;
  std::optional<std::string> stringByEvaluatingJavaScriptFromString(std::string_view script) const override;
  bool isLoading() const { return reports_.isLoading(); }

 private:
  void connect();
  void loadChanged(WebKitLoadEvent event);
  void loadFailed(const char* address, const GError& error);
  void askForTitle();
  void tellOfMove();
  void engineDied(WebKitWebProcessTerminationReason reason);
  void reportFailure(const NSError& error);
  void tell(const std::function<void(UIWebViewDelegate&)>& event);
  /// @return whether the view may show it itself.
  bool follow(const policy::WebNavigation& navigation) const;
  gboolean decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  void downloadStarted(WebKitDownload* download);

  const std::vector<std::string> schemes_;
  WebKitWebView* view_;
  GtkWidget* stopped_;  ///< shown in front of the page of a dead engine
  GCancellable* titleAsked_;
  std::string title_;
  std::string failedAddress_;   ///< of a load that has failed before anything came; WebKit forgets it
  bool isWished_ = false;       ///< the host or the user has asked for what comes next; good for one download
  bool hasNewHistory_ = false;  ///< the way back or forward has changed, and no load has told of it
  policy::WebLoadReports reports_;
};

#endif
