#pragma once

#include "platform/ui/View.h"

#include <memory>
#include <utility>

namespace fernhop::macos {

/// Synchronises a view of the core and the view that shows it in both directions. Main thread only.
class ViewLink {
  public:
    /// From now on, the core's changes of `linked` are shown.
    explicit ViewLink(std::shared_ptr<ui::View> linked) : view(std::move(linked)) {
        view->didChange = [this] { show(); };
    }
    ViewLink(const ViewLink &) = delete;
    ViewLink &operator=(const ViewLink &) = delete;
    virtual ~ViewLink() { view->didChange = nullptr; }

    /// Shows the core's changes; attributes that are already shown are not set again.
    virtual void show() = 0;
    /// Writes the user's changes into the core's view, and not those of the core.
    virtual void take() = 0;

    /// The core's view, as the sender of its actions.
    [[nodiscard]] std::shared_ptr<const Object> object() const { return view; }

  private:
    const std::shared_ptr<ui::View> view;
};

} // namespace fernhop::macos
