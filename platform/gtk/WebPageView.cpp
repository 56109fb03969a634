// SPDX-License-Identifier: Apache-2.0
#include "WebPageView.h"

#include <ZRCore/ZRPlatform.h>
#include <adwaita.h>

#include <utility>

#include <policy/web/WebText.h>
#include "GtkText.h"
#include "OutsidePrograms.h"

namespace {

/// A world of scripts in which the page's own cannot reach: what it has made of `document` is not seen there.
constexpr const char* kScriptWorld = "ZRCore";

WebKitWebView* makeView(WebKitNetworkSession* session) {
  // The settings stay WebKit's. Swiping back and forward would make it keep a picture of each page: 85 MB in 200 pages.
  return WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session, nullptr));
}

NSError errorOf(const GError& error) {
  return {g_quark_to_string(error.domain), error.code, {{NSLocalizedDescriptionKey, utf8Text(error.message)}}};
}

}  // namespace

WebPageView::WebPageView(const CGRect& frame, policy::WebSchemes schemes, WebKitNetworkSession* session)
    : Shown(gtk_overlay_new(), frame),
      schemes_(std::move(schemes)),
      view_(makeView(session)),
      notice_({.retry = [this] { reload(); }, .leave = [this] { leaveNotice(); }}),
      reports_({[this] { tell([this](UIWebViewDelegate& listener) { listener.webViewDidStartLoad(*this); }); },
                [this] { tell([this](UIWebViewDelegate& listener) { listener.webViewDidFinishLoad(*this); }); },
                [this] { askForTitle(); }}) {
  gtk_overlay_set_child(GTK_OVERLAY(widget()), GTK_WIDGET(view_));
  gtk_overlay_add_overlay(GTK_OVERLAY(widget()), notice_.widget());
  connect();
}

WebPageView::~WebPageView() {
  g_cancellable_cancel(titleAsked_.get());
  g_signal_handlers_disconnect_by_data(view_, this);
  g_signal_handlers_disconnect_by_data(webkit_web_view_get_back_forward_list(view_), this);
  g_signal_handlers_disconnect_by_data(webkit_web_view_get_network_session(view_), this);
  webkit_web_view_stop_loading(view_);
  // The widget may be kept by an animation for a moment.
  gtk_overlay_remove_overlay(GTK_OVERLAY(widget()), notice_.widget());
  gtk_overlay_set_child(GTK_OVERLAY(widget()), nullptr);
}

void WebPageView::connect() {
  g_signal_connect_swapped(
      view_, "load-changed",
      G_CALLBACK(+[](WebPageView* self, WebKitLoadEvent event, WebKitWebView*) { self->loadChanged(event); }), this);
  // TRUE keeps WebKit's own error pages away: they would be loads of their own.
  g_signal_connect_swapped(view_, "load-failed",
                           G_CALLBACK(+[](WebPageView* self, WebKitLoadEvent, const char* address, GError* error,
                                          WebKitWebView*) -> gboolean {
                             self->loadFailed(address, *error);
                             return TRUE;
                           }),
                           this);
  g_signal_connect_swapped(view_, "web-process-terminated",
                           G_CALLBACK(+[](WebPageView* self, WebKitWebProcessTerminationReason reason, WebKitWebView*) {
                             self->engineDied(reason);
                           }),
                           this);
  g_signal_connect_swapped(
      view_, "decide-policy",
      G_CALLBACK(+[](WebPageView* self, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                     WebKitWebView*) -> gboolean { return self->decidePolicy(decision, type); }),
      this);
  g_signal_connect_swapped(webkit_web_view_get_network_session(view_), "download-started",
                           G_CALLBACK(+[](WebPageView* self, WebKitDownload* download, WebKitNetworkSession*) {
                             self->downloadStarted(download);
                           }),
                           this);
  g_signal_connect_swapped(webkit_web_view_get_back_forward_list(view_), "changed", G_CALLBACK(+[](WebPageView* self) {
                             self->hasNewHistory_ = true;
                             self->tellOfMove();
                           }),
                           this);
  g_signal_connect_swapped(view_, "notify::is-loading", G_CALLBACK(+[](WebPageView* self) { self->tellOfMove(); }),
                           this);
  g_signal_connect(view_, "map", G_CALLBACK(gtk_widget_grab_focus), nullptr);  // keys scroll the page
  g_signal_connect_swapped(view_, "map", G_CALLBACK(+[](WebPageView* self) {
                             if (const auto say = std::exchange(self->waiting_, nullptr)) self->whenShown(say);
                           }),
                           this);
  g_signal_connect_swapped(view_, "unmap", G_CALLBACK(+[](WebPageView* self) {
                             if (DialogLayer* const layer = DialogLayer::around(self->widget())) layer->dismiss(self);
                           }),
                           this);
  g_signal_connect_swapped(view_, "notify::title", G_CALLBACK(+[](WebPageView* self) {
                             const char* const title = webkit_web_view_get_title(self->view_);
                             self->title_ = title ? title : "";
                           }),
                           this);
}

void WebPageView::loadRequest(const NSURLRequest& request) {
  if (!request.URL) return;
  const std::string address = request.URL->absoluteString();
  // For WebKit it is not the user's wish, and what goes outside would be refused.
  if (!follow({address, policy::WebNavigation::Purpose::page, true})) return;
  isWished_ = true;
  load(address);
}

void WebPageView::load(const std::string& address) {
  asked_ = address;
  webkit_web_view_load_uri(view_, address.c_str());
}

void WebPageView::reload() {
  if (!failedAddress_.empty()) {
    load(std::string(failedAddress_));
  } else if (webkit_web_view_get_uri(view_)) {
    webkit_web_view_reload(view_);
  }
}

void WebPageView::stopLoading() { webkit_web_view_stop_loading(view_); }

bool WebPageView::canGoBack() const { return webkit_web_view_can_go_back(view_) != FALSE; }

bool WebPageView::canGoForward() const { return webkit_web_view_can_go_forward(view_) != FALSE; }

void WebPageView::goBack() { webkit_web_view_go_back(view_); }

void WebPageView::goForward() { webkit_web_view_go_forward(view_); }

std::optional<NSURLRequest> WebPageView::request() const {
  const char* const address = webkit_web_view_get_uri(view_);
  if (!address || !*address) return std::nullopt;
  return NSURLRequest::requestWithURL(NSURL::URLWithString(address));
}

std::optional<std::string> WebPageView::stringByEvaluatingJavaScriptFromString(std::string_view script) const {
  return script == "document.title" ? std::optional(title_) : std::nullopt;
}

void WebPageView::loadChanged(WebKitLoadEvent event) {
  hasNewHistory_ = false;
  if (event == WEBKIT_LOAD_STARTED) {
    failedAddress_.clear();
    hasCome_ = false;
    hideNotice();
    reports_.started();
  } else if (event == WEBKIT_LOAD_COMMITTED) {
    isWished_ = false;
    hasCome_ = true;
    const char* const address = webkit_web_view_get_uri(view_);
    host_ = policy::shownHost(address ? address : "");
    nameWhatIsNotLoaded(std::exchange(asked_, ""));
    tellChange();
  } else if (event == WEBKIT_LOAD_FINISHED) {
    reports_.finished();
  }
}

void WebPageView::loadFailed(const char* address, const GError& error) {
  // An address that was opened in another program: the page stays as it was.
  const bool isGoneOutside = g_error_matches(&error, WEBKIT_POLICY_ERROR,
                                             WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE) != FALSE;
  failedAddress_ = address && !isGoneOutside ? address : "";
  asked_.clear();
  const bool isStopped = g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) != FALSE;
  const bool leavesPage = isGoneOutside || (isStopped && !host_.empty());
  if (!leavesPage) {
    const char* const title = isStopped  ? "Loading was stopped"
                              : hasCome_ ? "The rest of this page did not load"
                                         : "This page did not load";
    const char* const leave = hasCome_ ? "Close" : "Back to the page";
    showNotice({hostText(title), failedAddress_, isStopped ? "" : loadFailureSentence(error), hostText("Try again"),
                host_.empty() ? "" : hostText(leave)});
  }
  reports_.failed([this, &error] { reportFailure(errorOf(error)); });
  tellChange();
}

/// WebKit opens a blank page in place of addresses that it does not load (those with the port of another service).
void WebPageView::nameWhatIsNotLoaded(const std::string& asked) {
  if (host_ != "about:blank" || asked.empty() || asked.starts_with("about:")) return;
  failedAddress_ = asked;
  hasCome_ = false;
  showNotice({hostText("This address is not opened"), asked, "", "", ""});
}

/// Over the page, or above what has come of it.
void WebPageView::showNotice(const PageNotice::Words& words) {
  hasCome_ ? notice_.showAbovePage(words) : notice_.show(words);
  GtkRoot* const root = gtk_widget_get_root(widget());
  GtkWidget* const focus = root ? gtk_root_get_focus(root) : nullptr;
  if (focus && gtk_widget_is_ancestor(focus, widget())) gtk_widget_child_focus(notice_.widget(), GTK_DIR_TAB_FORWARD);
}

void WebPageView::hideNotice() {
  const bool hadFocus = gtk_widget_get_focus_child(notice_.widget()) != nullptr;
  notice_.hide();
  if (hadFocus) gtk_widget_grab_focus(GTK_WIDGET(view_));
}

/// The page that was there before, or what has come, is there again, and a reload is its own.
void WebPageView::leaveNotice() {
  failedAddress_.clear();
  hideNotice();
}

void WebPageView::tellChange() const { changed_(); }

void WebPageView::askForTitle() {
  struct Question {
    WebPageView* asker;
    unsigned load;
  };
  const auto answered = [](GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Question> question(static_cast<Question*>(data));
    g_autoptr(GError) error = nullptr;
    g_autoptr(JSCValue) value = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error);
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;  // the asker is gone
    if (value && question->load == question->asker->reports_.load()) {
      g_autofree char* title = jsc_value_to_string(value);
      question->asker->title_ = title;
    }
    question->asker->reports_.titleIsKnown(question->load);
  };
  webkit_web_view_evaluate_javascript(view_, "document.title", -1, kScriptWorld, nullptr, titleAsked_.get(), answered,
                                      new Question{this, reports_.load()});
}

/// While a way back or forward is being taken, WebKit calls itself loading even if it leads within the page.
void WebPageView::tellOfMove() {
  if (hasNewHistory_ && !webkit_web_view_is_loading(view_)) {
    hasNewHistory_ = false;
    reports_.movedWithinPage();
  }
}

void WebPageView::engineDied(WebKitWebProcessTerminationReason reason) {
  hasCome_ = false;
  const char* const address = webkit_web_view_get_uri(view_);
  showNotice({hostText("This page has stopped working"), address ? address : "", "", hostText("Reload"), ""});
  reports_.died([this, reason] {
    reportFailure({"WebKitWebProcessTermination",
                   reason,
                   {{NSLocalizedDescriptionKey, reason == WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT
                                                    ? "The page has used too much memory."
                                                    : "The page's process has ended."}}});
  });
  tellChange();
}

void WebPageView::reportFailure(const NSError& error) {
  tell([&](UIWebViewDelegate& listener) { listener.webViewDidFailLoadWithError(*this, error); });
}

void WebPageView::tell(const std::function<void(UIWebViewDelegate&)>& event) {
  const auto listener = delegate();
  if (!listener) return;
  event(*listener);
  runLater([listener] {});  // it may own this view, and its owner may have let go: it lives until the event is over
}

bool WebPageView::follow(const policy::WebNavigation& navigation) {
  const std::string address(navigation.address);
  const auto present = [&](auto dialogue) {
    whenShown([this, dialogue, address](DialogLayer& layer) { dialogue(layer, this, address); });
  };
  switch (policy::decide(navigation, schemes_)) {
    case policy::WebNavigationDecision::load:
      return true;
    case policy::WebNavigationDecision::openOutside: {
      const auto url = NSURL::URLWithString(address);
      if (!url || !UIApplication::sharedApplication()->openURL(*url)) present(sayThatNoProgramOpens);
      return false;
    }
    case policy::WebNavigationDecision::askFirst:
      present(askToOpenOutside);
      return false;
    case policy::WebNavigationDecision::refuse:
      if (navigation.isUsersWish) present(sayThatNothingOpens);
      return false;
  }
  return false;
}

/// One dialogue at a time: a page cannot pile them up.
void WebPageView::whenShown(std::function<void(DialogLayer&)> say) {
  DialogLayer* const layer = DialogLayer::around(widget());
  if (!layer) {
    waiting_ = std::move(say);
  } else if (!layer->hasDialog()) {
    say(*layer);
  }
}

gboolean WebPageView::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  using Purpose = policy::WebNavigation::Purpose;
  policy::WebNavigation navigation;
  WebKitURIRequest* request = nullptr;
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
    auto* const response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
    if (webkit_response_policy_decision_is_mime_type_supported(response)) return FALSE;
    request = webkit_response_policy_decision_get_request(response);
    navigation.purpose = Purpose::download;
    navigation.isUsersWish = std::exchange(isWished_, false);
  } else {
    WebKitNavigationAction* const action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    request = webkit_navigation_action_get_request(action);
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) navigation.purpose = Purpose::window;
    navigation.isUsersWish = webkit_navigation_action_is_user_gesture(action) != FALSE;
    isWished_ = isWished_ || navigation.isUsersWish;
  }
  const char* const address = webkit_uri_request_get_uri(request);
  navigation.address = address ? address : "";
  if (follow(navigation)) {
    webkit_policy_decision_use(decision);
  } else {
    webkit_policy_decision_ignore(decision);
  }
  return TRUE;
}

void WebPageView::downloadStarted(WebKitDownload* download) {
  if (webkit_download_get_web_view(download) != view_) return;  // the session may be shared
  const char* const address = webkit_uri_request_get_uri(webkit_download_get_request(download));
  follow({address ? address : "", policy::WebNavigation::Purpose::download, std::exchange(isWished_, false)});
  webkit_download_cancel(download);
}
