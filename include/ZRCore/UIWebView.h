// SPDX-License-Identifier: Apache-2.0
/// @file
/// The view that shows a page of the web.
#ifndef ZRCORE_UIWEBVIEW_H
#define ZRCORE_UIWEBVIEW_H

#include <ZRCore/NSError.h>
#include <ZRCore/NSURL.h>
#include <ZRCore/UIView.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// What a web view is asked to load.
struct NSURLRequest {
  static NSURLRequest requestWithURL(std::optional<NSURL> url) { return {std::move(url)}; }

  std::optional<NSURL> URL;
};

class UIWebView;

/// Hears what becomes of a page. Held weakly.
class ZR_EXPORT UIWebViewDelegate {
 public:
  virtual ~UIWebViewDelegate();
  virtual void webViewDidStartLoad(UIWebView& webView) = 0;
  virtual void webViewDidFinishLoad(UIWebView& webView) = 0;
  virtual void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) = 0;
};

/// A browser without a frame around it. Each load that starts is reported once more, as finished or as failed, but for
/// those that a later one overtakes. A load may be reported from inside the call that starts it. Main thread.
class ZR_EXPORT UIWebView : public UIView {
 public:
  explicit UIWebView(const CGRect& frame) : UIView(frame) {}
  ~UIWebView() override;

  std::shared_ptr<UIWebViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<UIWebViewDelegate> delegate) { delegate_ = std::move(delegate); }
  /// Whether a page is made to fit the view's width. A screen that always does so ignores it.
  bool scalesPageToFit() const { return scalesPageToFit_; }
  void setScalesPageToFit(bool scales) { scalesPageToFit_ = scales; }

  /// Loads the request's address; nothing when it has none.
  virtual void loadRequest(const NSURLRequest& request) = 0;
  virtual void reload() = 0;
  virtual void stopLoading() = 0;
  virtual bool canGoBack() const = 0;
  virtual bool canGoForward() const = 0;
  virtual void goBack() = 0;
  virtual void goForward() = 0;
  /// What is shown, or on its way; absent before the first load.
  virtual std::optional<NSURLRequest> request() const = 0;
  /// What `script` gives in the page, as a text. A screen that cannot wait for a page's scripts answers at least
  /// "document.title", from what it remembers. @return absent for what it cannot tell.
  virtual std::optional<std::string> stringByEvaluatingJavaScriptFromString(std::string_view script) const = 0;

 private:
  std::weak_ptr<UIWebViewDelegate> delegate_;
  bool scalesPageToFit_ = false;
};

#endif
