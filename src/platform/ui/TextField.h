#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/Font.h"
#include "platform/ui/Selector.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>
#include <utility>

namespace fernhop::ui {

/// A label or an editable field.
class TextField : public View {
  public:
    [[nodiscard]] const std::string &stringValue() const { return text; }

    /// Changes the text. The renderer calls this too, with what the user typed.
    void setStringValue(std::string value) {
        if (value == text)
            return;
        text = std::move(value);
        changed();
    }

    bool editable = false;
    std::string placeholder;
    Font font;
    Color textColor;
    bool wrapsByWord = false;
    int maximumLines = 0; ///< 0: no limit
    ControlSize controlSize = ControlSize::regular;
    Selector action; ///< sent while the user types in a search field, else at Return

  private:
    std::string text;
};

/// A field for searching a list.
class SearchField : public TextField {
  public:
    bool sendsSearchStringImmediately = false;
    bool sendsWholeSearchString = true;
};

/// A label in this font and colour that wraps by word and may be compressed horizontally.
[[nodiscard]] std::shared_ptr<TextField> makeWrappingLabel(std::string text, Font font, ColorRole color,
                                                           int maximumLines = 0);

} // namespace fernhop::ui
