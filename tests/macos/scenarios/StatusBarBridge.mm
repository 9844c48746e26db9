#include "macos/scenarios/StatusBarBridge.h"

#include "macos/double/Inspection.h"
#include "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <set>

namespace fernhop::macos {

namespace {

/// The text, kept until the process ends, since the models have views of it.
std::string_view lasting(const std::string &text) {
    static std::set<std::string> texts;
    return *texts.insert(text).first;
}

/// A menu of the system as the core's model. The sources of images come from the model that was shown.
class MenuReader {
  public:
    explicit MenuReader(const ActionTarget &actionTarget) : target(actionTarget) {}

    [[nodiscard]] ui::Menu read(NSMenu *shown, const ui::Menu &model) const {
        ui::Menu menu;
        EXPECT_EQ([[shown itemArray] count], model.items.size());
        std::size_t index = 0;
        for (NSMenuItem *item in [shown itemArray])
            menu.items.push_back(read(item, model.items.at(index++)));
        return menu;
    }

  private:
    [[nodiscard]] ui::MenuItem read(NSMenuItem *shown, const ui::MenuItem &model) const {
        if ([shown isSeparatorItem])
            return ui::MenuItem::separator();
        ui::MenuItem item(fromNSString([shown title]), selectorOf(shown));
        item.representedObject = target.representedObject([shown representedObject]);
        item.state = static_cast<ui::ControlState>([shown state]);
        item.enabled = [shown isEnabled];
        item.keyEquivalent = lasting(fromNSString([shown keyEquivalent]));
        EXPECT_EQ([shown image] != nil, model.image != nullptr) << item.title;
        item.image = [shown image] ? model.image : nullptr;
        if ([shown submenu] && model.submenu)
            item.submenu = read([shown submenu], *model.submenu);
        EXPECT_EQ([shown submenu] != nil, model.submenu.has_value()) << item.title;
        return item;
    }

    [[nodiscard]] ui::Selector selectorOf(NSMenuItem *item) const {
        if (![item action])
            return {};
        EXPECT_EQ([item target], target.target());
        return lasting(fromNSString(NSStringFromSelector([item action])));
    }

    const ActionTarget &target;
};

/// Gives the system the fake's appearance, and reads it from the system.
class AppearanceBridge : public ui::Appearance {
  public:
    AppearanceBridge(const fakes::FakeAppearance &inMemory, const ui::Appearance &shown)
        : memory(inMemory), system(shown) {}

    std::optional<ui::AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &names) const override {
        if (!memory.name)
            return memory.bestMatchFromAppearancesWithNames(names);
        macos_double::setSystemAppearance(
            *memory.name == ui::AppearanceName::darkAqua ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua);
        return system.bestMatchFromAppearancesWithNames(names);
    }

  private:
    const fakes::FakeAppearance &memory;
    const ui::Appearance &system;
};

class ItemBridge : public ui::StatusItem {
  public:
    ItemBridge(fakes::FakeStatusBar &bar, std::unique_ptr<ui::StatusItem> itemInMemory,
               std::unique_ptr<ui::StatusItem> itemOfSystem, const ActionTarget &actionTarget)
        : memory(std::move(itemInMemory)), system(std::move(itemOfSystem)),
          appearance(bar.appearance, system->effectiveAppearance()), reader(actionTarget) {}

    bool hasButton() const override { return memory->hasButton(); }
    const ui::Appearance &effectiveAppearance() const override { return appearance; }
    void setToolTip(const std::string &text) override {
        system->setToolTip(text);
        memory->setToolTip(fromNSString([button() toolTip]));
    }
    void setTitle(const std::string &title) override {
        system->setTitle(title);
        memory->setTitle(fromNSString([button() title]));
    }
    void setImagePosition(ui::ImagePosition position) override {
        system->setImagePosition(position);
        memory->setImagePosition(static_cast<ui::ImagePosition>([button() imagePosition]));
    }
    void setImage(ui::ImageReference image) override {
        system->setImage(image);
        // The files of the fake desktop are not on disk.
        if (!image || !std::holds_alternative<ui::ImageFile>(image->source))
            EXPECT_EQ([button() image] != nil, image != nullptr);
        memory->setImage(std::move(image));
    }
    void setMenu(std::shared_ptr<const ui::Menu> menu) override {
        system->setMenu(menu);
        memory->setMenu(std::make_shared<const ui::Menu>(reader.read([item() menu], *menu)));
    }

  private:
    static NSStatusItem *item() { return macos_double::statusItems().back(); }
    static NSStatusBarButton *button() { return [item() button]; }

    const std::unique_ptr<ui::StatusItem> memory;
    const std::unique_ptr<ui::StatusItem> system;
    const AppearanceBridge appearance;
    const MenuReader reader;
};

} // namespace

std::unique_ptr<ui::StatusItem> StatusBarBridge::statusItemWithLength(double length) {
    return std::make_unique<ItemBridge>(memory, memory.statusItemWithLength(length),
                                        system.statusItemWithLength(length), target);
}

} // namespace fernhop::macos
