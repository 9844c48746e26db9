#pragma once

#include "app/Controller.h"
#include "dialogs/ExpectViews.h"
#include "platform/ui/PopUpButton.h"

#include <functional>
#include <string>
#include <vector>

namespace fernhop {

/// A controller whose dialogs the test operates.
class DialogTest : public ControllerTest {
  protected:
    static constexpr int confirm = ui::alertFirstButtonReturn;
    static constexpr int cancel = ui::alertFirstButtonReturn + 1;

    DialogTest() {
        setHandlers(own);
        storeFallback("browser.b");
    }

    /// Opens a dialog by a selector; `user` operates it and returns the response. Resets the counters before.
    template <typename User>
    void open(std::string_view selector, User user, const std::string &identifier = "") {
        ui::Button sender;
        sender.identifier = identifier;
        desktop.alerts.user = [&](const ui::Alert &alert) {
            desktop.statusBar.menusSet = 0;
            desktop.launchServices.calls.clear();
            desktop.defaults.history.clear();
            desktop.sound.beeps = 0;
            return user(alert);
        };
        const auto shownBefore = desktop.alerts.shown.size();
        controller->perform(selector, {.sender = &sender});
        EXPECT_EQ(desktop.alerts.shown.size(), shownBefore + 1) << selector;
    }

    const ui::Alert &lastShown() const { return desktop.alerts.shown.back(); }

    void expectNothingWritten(int beeps) const {
        EXPECT_TRUE(desktop.defaults.history.empty());
        EXPECT_TRUE(desktop.launchServices.calls.empty());
        EXPECT_EQ(desktop.statusBar.menusSet, 0);
        EXPECT_EQ(desktop.sound.beeps, beeps);
    }

    /// Selects an item of a pop-up by its browser, as the user does.
    void pick(ui::PopUpButton &popup, const std::string &browser) {
        for (std::size_t index = 0; index < popup.items().size(); ++index)
            if (std::get<std::string>(popup.items()[index].representedObject) == browser)
                popup.selectItem(index);
        fire(popup.action, popup);
    }

    static std::string picked(const ui::PopUpButton &popup) {
        return popup.selectedItem() ? std::get<std::string>(popup.selectedItem()->representedObject) : "none";
    }

    void fire(ui::Selector action, const Object &sender) {
        const bool known = action.empty() || controller->perform(action, {.sender = &sender});
        EXPECT_TRUE(known) << action;
    }

    using Handlers = std::vector<std::pair<std::string, std::string>>;
    const Handlers routingTurnedOn{{"http", own}, {"https", own}};
};

} // namespace fernhop
