#pragma once

#include "widgets/Forms.h"

#include <QStackedWidget>

#include <functional>
#include <map>
#include <utility>

namespace corvel {

// A stack with a page for every site that was looked at, and in front of them an empty one. A page is made
// when it is first in sight: most of many sites are never looked at. Page: a pointer to a widget, or a record
// with one as its member widget.
template <typename Page>
class SitePages : public QStackedWidget {
  public:
    // make: makes the page of a site as the site is by then; the stack owns its widget.
    explicit SitePages(std::function<Page(int site)> make) : make_(std::move(make)) {
        addWidget(new QWidget);
    }

    // Brings the site's page to the front, once the stack itself is in sight; 0: the empty one.
    void showSite(int site) {
        site_ = site;
        if (isVisible()) {
            bringToFront();
        }
    }

    // The site's page; null while there is none, so that nothing in it can be out of date.
    Page* find(int site) {
        const auto found = pages_.find(site);
        return found == pages_.end() ? nullptr : &found->second;
    }

    // The site's page, made now if need be. site: from 1.
    Page& at(int site) {
        if (Page* const page = find(site)) {
            return *page;
        }
        Page& made = pages_.emplace(site, make_(site)).first->second;
        addWidget(widgetOf(made));
        setTabOrderBehind(*this, *widgetOf(made));
        return made;
    }

    // Ends the site's page. Not at once: an event for it may be under way.
    void drop(int site) {
        if (Page* const page = find(site)) {
            removeWidget(widgetOf(*page));
            widgetOf(*page)->deleteLater();
            pages_.erase(site);
        }
    }

  protected:
    void showEvent(QShowEvent* event) override {
        bringToFront();
        QStackedWidget::showEvent(event);
    }

  private:
    void bringToFront() { setCurrentWidget(site_ == 0 ? widget(0) : widgetOf(at(site_))); }

    static QWidget* widgetOf(const Page& page) {
        if constexpr (requires { page.widget; }) {
            return page.widget;
        } else {
            return page;
        }
    }

    std::function<Page(int site)> make_;
    std::map<int, Page> pages_;
    int site_ = 0; // whose page is wanted in front
};

} // namespace corvel
