#pragma once

#include "platform/linux/dialogs-qt/ViewLayout.h"
#include "platform/ui/TextField.h"

#include <QFont>
#include <QString>
#include <QTextLayout>

namespace fernhop::freedesktop {

/// A text of the core, which is UTF-8, as the toolkit has it.
[[nodiscard]] QString toText(const std::string &text);

/// A text as tooltips show it: letter for letter, and in lines that end between its words.
[[nodiscard]] QString toToolTip(const QString &text);

/// The user's font at the size and weight of `font`; points are the screen's own, whatever its density.
[[nodiscard]] QFont toFont(const ui::Font &font);

/// How wide a text is in one line.
[[nodiscard]] double textWidth(const QString &text, const QFont &font);

/// How wide a label is in one line, and how high in lines of this width, its limit of lines kept; of the
/// lines it may lose all but the first.
[[nodiscard]] double labelWidth(const ui::TextField &label);
[[nodiscard]] ContentHeight labelHeight(const ui::TextField &label, double width);

/// Where a text may go.
struct TextSpace {
    double width;     ///< of each line, in points
    double height;    ///< of all lines; the first one is kept in any case
    int maximumLines; ///< 0: as many as fit
};

/// A text in lines. It breaks between words, and within one that is wider than a line. Where the space ends
/// before the text, the last line ends in an ellipsis.
class TextLines {
  public:
    TextLines(const QString &text, const QFont &font, const TextSpace &space);

    [[nodiscard]] double height() const { return reached; }
    [[nodiscard]] bool isCut() const { return cut; }
    /// Draws the lines in the painter's pen.
    void draw(QPainter &painter, QPointF topLeft) const;

  private:
    /// Breaks the text; how long the piece of it is that has room.
    [[nodiscard]] qsizetype breakLines(const TextSpace &space);

    QTextLayout lines;
    int shown = 0; ///< of the lines that were broken
    double reached = 0;
    bool cut = false;
};

} // namespace fernhop::freedesktop
