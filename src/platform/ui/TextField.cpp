#include "platform/ui/TextField.h"

namespace fernhop::ui {

std::shared_ptr<TextField> makeWrappingLabel(std::string text, Font font, ColorRole color, int maximumLines) {
    auto label = std::make_shared<TextField>();
    label->setStringValue(std::move(text));
    label->font = font;
    label->textColor = {color, 1};
    label->wrapsByWord = true;
    label->maximumLines = maximumLines;
    label->horizontalCompressionResistance = lowPriority;
    return label;
}

} // namespace fernhop::ui
