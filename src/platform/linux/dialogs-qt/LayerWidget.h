#pragma once

#include "platform/ui/View.h"

#include <QPalette>
#include <QWidget>
#include <optional>

namespace fernhop::freedesktop {

/// Paints a view's layer: a rounded box with a border.
class LayerWidget : public QWidget {
  public:
    LayerWidget(const ui::Layer &shown, QWidget *parent) : QWidget(parent), layer(shown) {}

    /// Fills the box with a colour of the palette below the layer's own.
    void fillWith(QPalette::ColorRole role) { background = role; }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    ui::Layer layer;
    std::optional<QPalette::ColorRole> background;
};

} // namespace fernhop::freedesktop
