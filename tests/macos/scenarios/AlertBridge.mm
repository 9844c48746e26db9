#include "macos/scenarios/AlertBridge.h"

#include "macos/double/Inspection.h"
#include "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace fernhop::macos {

namespace {

void expectSameTexts(NSAlert *shown, const ui::Alert &alert) {
    EXPECT_EQ(fromNSString([shown messageText]), alert.messageText);
    EXPECT_EQ(fromNSString([shown informativeText]), alert.informativeText);
    std::vector<std::string> titles;
    for (NSButton *button in [shown buttons])
        titles.push_back(fromNSString([button title]));
    EXPECT_EQ(titles, alert.buttons);
    EXPECT_EQ([shown accessoryView] != nil, alert.accessoryView != nullptr);
}

} // namespace

int AlertBridge::runModal(const ui::Alert &alert) {
    macos_double::setUser([&](NSAlert *shown) -> NSModalResponse {
        expectSameTexts(shown, alert);
        return memory.runModal(alert);
    });
    const int response = system.runModal(alert);
    macos_double::setUser(nullptr);
    return response;
}

} // namespace fernhop::macos
