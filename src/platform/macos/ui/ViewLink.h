#pragma once

#include "platform/ui/View.h"

#include <memory>
#include <utility>

namespace fernhop::macos {

/// Keeps what shows a view of the core in step with it, both ways, as long as it lives. Main thread only.
class ViewLink {
  public:
    /// From now on what the core changes in `linked` shows.
    explicit ViewLink(std::shared_ptr<ui::View> linked) : view(std::move(linked)) {
        view->didChange = [this] { show(); };
    }
    ViewLink(const ViewLink &) = delete;
    ViewLink &operator=(const ViewLink &) = delete;
    virtual ~ViewLink() { view->didChange = nullptr; }

    /// Shows what the core changed; what shows it already is left alone.
    virtual void show() = 0;
    /// Writes what the user did into the view; the core's own changes are left alone.
    virtual void take() = 0;

    /// The view, as the sender of its actions.
    [[nodiscard]] std::shared_ptr<const Object> object() const { return view; }

  private:
    const std::shared_ptr<ui::View> view;
};

} // namespace fernhop::macos
