// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_WEBPAGEVIEW_H
#define ZRCORE_PLATFORM_GTK_WEBPAGEVIEW_H

#include <ZRCore/UIWebView.h>
#include <owners/GLib.h>
#include <platform/Callback.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

#include <policy/web/WebLoadReports.h>
#include <policy/web/WebNavigation.h>
#include "DialogLayer.h"
#include "FrameView.h"
#include "PageNotice.h"

/// A page of the web by WebKit. "document.title" is what the page had when it finished, and what it has become since;
/// other scripts are not evaluated, because WebKit answers later and the question does not wait. A jump within the page
/// is reported as a load that ends at once. A load that has failed and an engine that has died are shown as such, with
/// a button that tries again; an engine's death is reported as a failed load.
class WebPageView final : public Shown<UIWebView> {
 public:
  /// @param session  where cookies, storage and cache are kept.
  WebPageView(const CGRect& frame, policy::WebSchemes schemes, WebKitNetworkSession* session);
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

  /// Whose page is in view, for people; empty before the first. It changes no earlier than the page does.
  const std::string& host() const { return host_; }
  /// Called when the host may have changed, and when a load has failed.
  void setChangeHandler(Callback<> handler) { changed_ = std::move(handler); }

 private:
  void connect();
  void load(const std::string& address);
  void loadChanged(WebKitLoadEvent event);
  void loadFailed(const char* address, const GError& error);
  void askForTitle();
  void tellOfMove();
  void engineDied(WebKitWebProcessTerminationReason reason);
  void reportFailure(const NSError& error);
  void tell(const std::function<void(UIWebViewDelegate&)>& event);
  /// @return whether the view may show it itself.
  bool follow(const policy::WebNavigation& navigation);
  void whenShown(std::function<void(DialogLayer&)> say);
  void nameWhatIsNotLoaded(const std::string& asked);
  void showNotice(const PageNotice::Words& words);
  void hideNotice();
  void leaveNotice();
  void tellChange() const;
  gboolean decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  void downloadStarted(WebKitDownload* download);

  const policy::WebSchemes schemes_;
  WebKitWebView* view_;
  PageNotice notice_;
  owners::Ref<GCancellable> titleAsked_{g_cancellable_new()};
  std::string title_;
  std::string host_;
  std::string asked_;           ///< by the host or the user; empty when something of it has come
  std::string failedAddress_;   ///< of a load that has failed before anything came; WebKit forgets it
  bool hasCome_ = false;        ///< something of the page of the current load
  bool isWished_ = false;       ///< the host or the user has asked for what comes next; good for one download
  bool hasNewHistory_ = false;  ///< the way back or forward has changed, and no load has told of it
  Callback<> changed_;
  std::function<void(DialogLayer&)> waiting_;  ///< to be said when the view is shown
  policy::WebLoadReports reports_;
};

#endif
