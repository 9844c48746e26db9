#include "platform/macos/ui/SystemStatusBar.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"
#include "platform/macos/ui/Menus.h"
#include "platform/macos/ui/NativeImage.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

namespace {

NSAppearanceName nameOf(ui::AppearanceName name) {
    return name == ui::AppearanceName::darkAqua ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
}

/// The appearance of the bar around a status item's button, read at each call.
class ButtonAppearance : public ui::Appearance {
  public:
    explicit ButtonAppearance(Reference<NSStatusItem> statusItem) : item(std::move(statusItem)) {}

    [[nodiscard]] std::optional<ui::AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &names) const override {
        NSMutableArray *wanted = [NSMutableArray arrayWithCapacity:names.size()];
        for (const ui::AppearanceName name : names)
            [wanted addObject:nameOf(name)];
        NSString *match =
            [[[item.get() button] effectiveAppearance] bestMatchFromAppearancesWithNames:wanted];
        for (const ui::AppearanceName name : names)
            if ([match isEqualToString:nameOf(name)])
                return name;
        return std::nullopt;
    }

  private:
    Reference<NSStatusItem> item;
};

class SystemStatusItem : public ui::StatusItem {
  public:
    SystemStatusItem(Reference<NSStatusItem> statusItem, const ActionTarget &actionTarget)
        : item(std::move(statusItem)), appearance(item), target(actionTarget) {}
    SystemStatusItem(const SystemStatusItem &) = delete;
    SystemStatusItem &operator=(const SystemStatusItem &) = delete;
    ~SystemStatusItem() override { [[NSStatusBar systemStatusBar] removeStatusItem:item.get()]; }

    [[nodiscard]] bool hasButton() const override { return button() != nil; }
    [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return appearance; }
    void setToolTip(const std::string &text) override {
        [button() setToolTip:text.empty() ? nil : toNSString(text)];
    }
    void setTitle(const std::string &title) override { [button() setTitle:toNSString(title)]; }
    void setImagePosition(ui::ImagePosition position) override {
        [button() setImagePosition:static_cast<NSCellImagePosition>(position)];
    }
    void setImage(ui::ImageReference image) override { [button() setImage:toNSImage(image)]; }
    void setMenu(std::shared_ptr<const ui::Menu> menu) override {
        // The new items have new represented objects, so the menu is replaced even if it looks the same. An
        // open menu stays on the screen unchanged.
        @autoreleasepool {
            [item.get() setMenu:menu ? toNSMenu(*menu, target) : nil];
        }
    }

  private:
    [[nodiscard]] NSStatusBarButton *button() const { return [item.get() button]; }

    const Reference<NSStatusItem> item;
    const ButtonAppearance appearance;
    const ActionTarget &target;
};

} // namespace

std::unique_ptr<ui::StatusItem> SystemStatusBar::statusItemWithLength(double length) {
    // The bar does not retain its items.
    return std::make_unique<SystemStatusItem>(
        Reference([[NSStatusBar systemStatusBar] statusItemWithLength:length]), target);
}

} // namespace fernhop::macos
