#include "dialogs/AppRuleRow.h"

#include "platform/ui/ImageView.h"
#include "platform/ui/StackView.h"
#include "platform/ui/TextField.h"

#include <vector>

namespace fernhop {

using namespace ui;

namespace {

std::shared_ptr<View> makeIcon(const InstalledApplication &application, AppIcons &icons) {
    constexpr double requestedSize = 24, shownSide = 22; // requested larger than shown, on purpose
    auto icon = std::make_shared<ImageView>();
    icon->image = icons.appIcon(application.appURL, requestedSize);
    icon->constraints = {fixed(*icon, LayoutAttribute::width, shownSide),
                         fixed(*icon, LayoutAttribute::height, shownSide)};
    return icon;
}

std::shared_ptr<View> makeText(const InstalledApplication &application) {
    const auto name = makeWrappingLabel(application.name, {13, FontWeight::regular}, ColorRole::label);
    const auto identifier =
        makeWrappingLabel(application.bundleID, {11, FontWeight::regular}, ColorRole::tertiaryLabel);
    return std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 1,
                                       std::vector<std::shared_ptr<View>>{name, identifier});
}

} // namespace

std::shared_ptr<View> makeAppRuleRow(const InstalledApplication &application, AppIcons &icons) {
    constexpr double sideInset = 6;
    auto spacer = std::make_shared<View>();
    spacer->horizontalContentHugging = lowPriority;
    const auto row = std::make_shared<StackView>(
        Orientation::horizontal, StackAlignment::centerY, 10,
        std::vector<std::shared_ptr<View>>{makeIcon(application, icons), makeText(application), spacer});
    row->translatesAutoresizingMask = false;

    auto cell = std::make_shared<View>();
    cell->identifier = "appCell";
    cell->subviews = {row};
    cell->constraints = {aligned(*row, *cell, LayoutAttribute::leading, sideInset),
                         aligned(*row, *cell, LayoutAttribute::trailing, -sideInset),
                         aligned(*row, *cell, LayoutAttribute::centerY)};
    return cell;
}

} // namespace fernhop
