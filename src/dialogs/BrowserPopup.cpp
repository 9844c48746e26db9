#include "dialogs/BrowserPopup.h"

#include <algorithm>
#include <utility>

namespace fernhop {

namespace {

constexpr double popupIconSize = 18;

ui::MenuItem itemFor(const Browser &browser, AppIcons &icons) {
    ui::MenuItem item(browser.name, "");
    item.representedObject = browser.bundleID;
    item.image = icons.appIcon(browser.appURL, popupIconSize);
    return item;
}

} // namespace

std::optional<std::string> selectedBrowserID(const ui::PopUpButton *popup) {
    const std::string *text = ui::representedText(popup ? popup->selectedItem() : nullptr);
    return text ? std::optional(*text) : std::nullopt;
}

void updateBrowserPopup(ui::PopUpButton *popup, const std::optional<std::string> &selectedBundleID,
                        const std::vector<Browser> &installedBrowsers, AppIcons &icons) {
    if (!popup)
        return;
    const auto toSelect = selectedBundleID ? selectedBundleID : selectedBrowserID(popup);
    std::vector<ui::MenuItem> items;
    for (const Browser &browser : installedBrowsers)
        items.push_back(itemFor(browser, icons));
    popup->enabled = !installedBrowsers.empty(); // first, since only `setItems` notifies the renderer
    popup->setItems(std::move(items));
    if (toSelect) {
        const auto found = std::ranges::find(installedBrowsers, *toSelect, &Browser::bundleID);
        if (found != installedBrowsers.end())
            popup->selectItem(static_cast<std::size_t>(found - installedBrowsers.begin()));
    }
}

} // namespace fernhop
