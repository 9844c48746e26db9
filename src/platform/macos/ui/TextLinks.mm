#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"
#include "platform/macos/ui/ControlLinks.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/macos/ui/Menus.h"
#include "platform/macos/ui/Styles.h"
#include "platform/ui/TextField.h"

/// Reports the user's typing to a link.
@interface FernhopTextObserver : NSObject <NSSearchFieldDelegate> {
    fernhop::macos::ViewLink *link;
}
- (instancetype)initWithLink:(fernhop::macos::ViewLink *)observer;
@end

@implementation FernhopTextObserver

- (instancetype)initWithLink:(fernhop::macos::ViewLink *)observer {
    if ((self = [super init]))
        link = observer;
    return self;
}

- (void)controlTextDidChange:(NSNotification *)notification {
    link->take();
}

@end

namespace fernhop::macos {

namespace {

/// Shows the core's text unless it is already shown, since the user may be typing it.
void showText(NSTextField *shown, const ui::TextField &field) {
    NSString *text = toNSString(field.stringValue());
    if (![[shown stringValue] isEqualToString:text])
        [shown setStringValue:text];
}

class LabelLink : public ViewLink {
  public:
    LabelLink(std::shared_ptr<ui::View> view, const ui::TextField &label, NSTextField *control)
        : ViewLink(std::move(view)), field(label), shown(control) {}

    void show() override { showText(shown.get(), field); }
    void take() override {}

  private:
    const ui::TextField &field;
    const Reference<NSTextField> shown;
};

class FieldLink : public ViewLink {
  public:
    FieldLink(std::shared_ptr<ui::View> view, ui::TextField &edited, NSTextField *control)
        : ViewLink(std::move(view)), field(edited), shown(control),
          observer(
              Reference<FernhopTextObserver>::adopting([[FernhopTextObserver alloc] initWithLink:this])) {
        NSView *linked = control;
        [linked setFernhopLink:this];
        [control setDelegate:observer.get()];
        FieldLink::show();
    }
    ~FieldLink() override {
        NSView *linked = shown.get();
        [linked setFernhopLink:nullptr];
        [shown.get() setDelegate:nil];
        [shown.get() setTarget:nil];
    }

    void show() override { showText(shown.get(), field); }
    void take() override {
        // The shown text differs from the core's if that is not valid UTF-8; the core's is kept then.
        NSString *text = [shown.get() stringValue];
        if (![text isEqualToString:toNSString(field.stringValue())])
            field.setStringValue(fromNSString(text));
    }

  private:
    ui::TextField &field;
    const Reference<NSTextField> shown;
    const Reference<FernhopTextObserver> observer;
};

NSTextField *makeField(const ui::TextField &field) {
    const auto *search = dynamic_cast<const ui::SearchField *>(&field);
    if (!search) {
        FernhopTextField *shown = [[[FernhopTextField alloc] initWithFrame:NSZeroRect] autorelease];
        [[shown cell] setScrollable:YES]; // a long text would otherwise wrap into an invisible second line
        return shown;
    }
    FernhopSearchField *shown = [[[FernhopSearchField alloc] initWithFrame:NSZeroRect] autorelease];
    NSCell *cell = [shown cell];
    if ([cell isKindOfClass:[NSSearchFieldCell class]]) {
        auto *searching = static_cast<NSSearchFieldCell *>(cell);
        [searching setSendsSearchStringImmediately:search->sendsSearchStringImmediately];
        [searching setSendsWholeSearchString:search->sendsWholeSearchString];
    }
    return shown;
}

} // namespace

LinkedView linkLabel(const std::shared_ptr<ui::View> &view) {
    const auto &field = dynamic_cast<const ui::TextField &>(*view);
    NSTextField *label = [NSTextField labelWithString:toNSString(field.stringValue())];
    [label setFont:toNSFont(field.font)];
    [label setTextColor:toNSColor(field.textColor)];
    if (field.wrapsByWord)
        [label setLineBreakMode:NSLineBreakByWordWrapping];
    if (field.maximumLines > 0)
        [label setMaximumNumberOfLines:field.maximumLines];
    return {std::make_unique<LabelLink>(view, field, label), label};
}

LinkedView linkField(const std::shared_ptr<ui::View> &view, const ActionTarget &target) {
    auto &field = dynamic_cast<ui::TextField &>(*view);
    NSTextField *shown = makeField(field);
    [shown setPlaceholderString:toNSString(field.placeholder)];
    [shown setControlSize:static_cast<NSControlSize>(field.controlSize)];
    if (!field.action.empty()) {
        [shown setTarget:target.target()];
        [shown setAction:toSelector(field.action)];
    }
    return {std::make_unique<FieldLink>(view, field, shown), shown};
}

} // namespace fernhop::macos
