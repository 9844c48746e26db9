#pragma once

#include "platform/ui/Color.h"

#include <QLabel>

namespace fernhop::freedesktop {

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
    Look look;
};

} // namespace fernhop::freedesktop
