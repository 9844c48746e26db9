#pragma once

#include <QPushButton>

namespace fernhop::freedesktop {

/// A push button of the style whose icon and text stand at its left end. A style sheet would do so too, and
/// paint the look of the focused button beside its edge.
class LeftAlignedButton : public QPushButton {
  public:
    using QPushButton::QPushButton;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace fernhop::freedesktop
