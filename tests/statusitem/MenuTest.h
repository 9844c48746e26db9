#pragma once

#include "app/Controller.h"
#include "statusitem/MenuText.h"

#include <stdexcept>
#include <string>

namespace fernhop {

/// A controller whose menu is tested. Starts with "browser.a" as the system's default and the application
/// "com.example.Mail" beside the two browsers.
class MenuTest : public ControllerTest {
  protected:
    MenuTest() {
        desktop.installApplication("com.example.Mail");
        setHandlers("browser.a");
    }

    /// Replaces the installed browsers and applications by ones whose names differ from their identifiers and
    /// files, also in their order.
    void installNamedApplications() {
        desktop.applications.remove("/Applications");
        desktop.applications.installApplication("/Applications/One.app", "browser.a", "Zebra",
                                                {"http", "https"});
        desktop.applications.installApplication("/Applications/Two.app", "browser.b", "Apple",
                                                {"http", "https"});
        desktop.applications.installApplication("/Applications/Three.app", "com.example.Notes", "Notes");
    }

    const ui::Menu &menu() const { return *desktop.statusBar.menu; }

    /// The first row with this title; throws when there is none.
    const ui::MenuItem &item(const std::string &title) const {
        for (const auto &candidate : menu().items)
            if (candidate.title == title)
                return candidate;
        throw std::runtime_error("no item " + title);
    }

    /// The second row, which shows the mode or the system's default browser.
    const std::string &headline() const { return menu().items.at(1).title; }

    std::string text() const { return asText(menu()); }
    std::string submenu(const std::string &title) const { return asText(item(title).submenu.value()); }

    void press(const ui::MenuItem &pressed) { controller->perform(pressed.action, {.sender = &pressed}); }
};

} // namespace fernhop
