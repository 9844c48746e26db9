#pragma once

#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/ui/Color.h"
#include "platform/ui/View.h"

#include <QLabel>
#include <QPalette>
#include <QPushButton>
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

/// A push button of the style whose icon and text stand at its left end. A style sheet would do so too, and
/// paint the look of the focused button beside its edge.
class LeftAlignedButton : public QPushButton {
  public:
    using QPushButton::QPushButton;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A label whose text never reaches beyond it: what has no room ends in an ellipsis, and shows whole while
/// the pointer rests on it. Its colour follows the palette.
class TextLabel : public QLabel {
  public:
    /// What a label looks like.
    struct Look {
        QFont font;
        ui::Color color;
        int maximumLines; ///< 0: as many as it has room for
    };

    TextLabel(const QString &text, Look look, QWidget *parent);

    /// As wide as its text, up to a limit, and as high as the lines then are.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    /// The text in the lines that it has room for.
    [[nodiscard]] TextLines shownLines() const;

    Look look;
};

} // namespace fernhop::freedesktop
