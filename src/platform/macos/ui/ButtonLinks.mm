#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"
#include "platform/macos/ui/ControlLinks.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/macos/ui/Menus.h"
#include "platform/macos/ui/NativeImage.h"
#include "platform/ui/Button.h"
#include "platform/ui/PopUpButton.h"

namespace fernhop::macos {

namespace {

class ButtonLink : public ViewLink {
  public:
    ButtonLink(std::shared_ptr<ui::View> view, ui::Button &pressed, FernhopButton *control)
        : ViewLink(std::move(view)), button(pressed), shown(control) {
        [control setFernhopLink:this];
        ButtonLink::show();
    }
    ~ButtonLink() override {
        [shown.get() setFernhopLink:nullptr];
        [shown.get() setTarget:nil];
    }

    void show() override {
        [shown.get() setTitle:toNSString(button.title)];
        [shown.get() setState:static_cast<NSControlStateValue>(button.state)];
    }
    void take() override {
        button.state =
            [shown.get() state] == NSControlStateValueOn ? ui::ControlState::on : ui::ControlState::off;
    }

  private:
    ui::Button &button;
    const Reference<FernhopButton> shown;
};

class PopUpLink : public ViewLink {
  public:
    PopUpLink(std::shared_ptr<ui::View> view, ui::PopUpButton &chosen, FernhopPopUpButton *control,
              const ActionTarget &actionTarget)
        : ViewLink(std::move(view)), popUp(chosen), shown(control), target(actionTarget) {
        [control setFernhopLink:this];
        PopUpLink::show();
    }
    ~PopUpLink() override {
        [shown.get() setFernhopLink:nullptr];
        [shown.get() setTarget:nil];
    }

    void show() override {
        if (isTaking)
            return;
        NSPopUpButton *button = shown.get();
        [button removeAllItems];
        // `addItemWithTitle:` would remove an earlier item with the same title.
        for (const ui::MenuItem &item : popUp.items())
            [[button menu] addItem:toNSMenuItem(item, target)];
        const auto selected = popUp.selectedIndex();
        [button selectItemAtIndex:selected ? static_cast<NSInteger>(*selected) : -1];
        [button setEnabled:popUp.enabled];
    }
    void take() override {
        const NSInteger index = [shown.get() indexOfSelectedItem];
        const auto selected = index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
        if (selected == popUp.selectedIndex())
            return;
        isTaking = true;
        popUp.selectItem(selected.value_or(popUp.items().size()));
        isTaking = false;
    }

  private:
    ui::PopUpButton &popUp;
    const Reference<FernhopPopUpButton> shown;
    const ActionTarget &target;
    bool isTaking = false; ///< applying the user's choice: the items must not be replaced
};

} // namespace

LinkedView linkButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target) {
    auto &button = dynamic_cast<ui::Button &>(*view);
    FernhopButton *shown = [FernhopButton buttonWithTitle:toNSString(button.title)
                                                   target:button.action.empty() ? nil : target.target()
                                                   action:toSelector(button.action)];
    [shown setBezelStyle:NSBezelStyleRounded];
    [shown setControlSize:static_cast<NSControlSize>(button.controlSize)];
    [shown setImage:toNSImage(button.image)];
    [shown setImagePosition:static_cast<NSCellImagePosition>(button.imagePosition)];
    if (button.alignment == ui::TextAlignment::left)
        [shown setAlignment:NSTextAlignmentLeft];
    return {std::make_unique<ButtonLink>(view, button, shown), shown};
}

LinkedView linkPopUpButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target) {
    auto &popUp = dynamic_cast<ui::PopUpButton &>(*view);
    FernhopPopUpButton *shown = [[[FernhopPopUpButton alloc] initWithFrame:NSZeroRect
                                                                 pullsDown:NO] autorelease];
    [shown setControlSize:static_cast<NSControlSize>(popUp.controlSize)];
    if (!popUp.action.empty()) {
        [shown setTarget:target.target()];
        [shown setAction:toSelector(popUp.action)];
    }
    return {std::make_unique<PopUpLink>(view, popUp, shown, target), shown};
}

} // namespace fernhop::macos
