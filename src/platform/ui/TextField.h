#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/Font.h"
#include "platform/ui/Selector.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>
#include <utility>

namespace fernhop::ui {

/// A label, or a field to type in.
class TextField : public View {
  public:
    [[nodiscard]] const std::string &stringValue() const { return text; }

    /// Changes the text and shows it; a desktop writes what the user typed by the same call.
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
    Selector action; ///< fired while the user types in a search field, else at Return

  private:
    std::string text;
};

/// A field that a list is searched with.
class SearchField : public TextField {
  public:
    bool sendsSearchStringImmediately = false;
    bool sendsWholeSearchString = true;
};

/// A label in this font and colour that wraps by word and gives way across.
[[nodiscard]] std::shared_ptr<TextField> makeWrappingLabel(std::string text, Font font, ColorRole color,
                                                           int maximumLines = 0);

} // namespace fernhop::ui
