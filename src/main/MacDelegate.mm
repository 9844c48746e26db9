#include "main/MacDelegate.h"

#include "app/AppDelegate.h"
#include "main/MacDesktop.h"
#include "main/MacSelections.h"
#include "platform/macos/AppleEventConversions.h"
#include "platform/macos/Conversions.h"

namespace fernhop::macos {

/// The controller with its desktop, and the delegate as the target of actions.
class Controller : public ActionTarget {
  public:
    explicit Controller(id delegate) : receiver(delegate), desktop(*this), controller(desktop.platform()) {}

    [[nodiscard]] id target() const override { return receiver; }
    [[nodiscard]] id attachment(const ui::RepresentedObject &value) const override {
        return attachmentFor(value);
    }
    [[nodiscard]] ui::RepresentedObject representedObject(id attachment) const override {
        return valueOfAttachment(attachment);
    }

    /// Performs the operation of a selector.
    ActionResult perform(SEL selector, const ActionArguments &arguments = {}) {
        return controller.perform(fromNSString(NSStringFromSelector(selector)), arguments)
            .value_or(ActionResult());
    }

    /// Performs the operation of an action sent by `sender`.
    void perform(SEL selector, id sender) {
        const auto object = objectForSender(sender, *this);
        perform(selector, {.sender = object.get()});
    }

    /// Routes the file at `path` as a link.
    void open(NSString *path) {
        const auto link = LinkEventDescriptor::getUrl(Url::fileUrl(fromNSString(path)).absoluteString());
        perform(@selector(handleGetURLEvent:withReplyEvent:), {.event = &link});
    }

    /// The result of the operation; the default value when it has another type.
    template <typename Answer>
    [[nodiscard]] Answer answer(SEL selector, const ActionArguments &arguments = {}) {
        const ActionResult result = perform(selector, arguments);
        const Answer *given = std::get_if<Answer>(&result);
        return given ? *given : Answer();
    }

  private:
    id receiver; ///< owns this object
    MacDesktop desktop;
    AppDelegate controller;
};

} // namespace fernhop::macos

@implementation FernhopAppDelegate

- (instancetype)init {
    self = [super init];
    if (self)
        _controller = new fernhop::macos::Controller(self);
    return self;
}

- (void)dealloc {
    delete _controller;
    [super dealloc];
}

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
    _controller->perform(_cmd);
}

// The default web browser also receives web documents.
- (void)application:(NSApplication *)sender openFiles:(NSArray<NSString *> *)filenames {
    for (NSString *filename in filenames)
        _controller->open(filename);
    [sender replyToOpenOrPrint:NSApplicationDelegateReplySuccess];
}

- (BOOL)applicationShouldHandleReopen:(NSApplication *)sender hasVisibleWindows:(BOOL)hasVisibleWindows {
    return _controller->answer<bool>(_cmd);
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)sender {
    return _controller->answer<bool>(_cmd);
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication *)sender {
    return static_cast<NSApplicationTerminateReply>(_controller->answer<fernhop::TerminateReply>(_cmd));
}

- (void)systemAppearanceDidChange {
    _controller->perform(_cmd);
}

- (void)activeApplicationDidChange:(NSNotification *)notification {
    const auto told = fernhop::macos::fromNSNotification(notification);
    _controller->perform(_cmd, {.notification = &told});
}

- (void)showAddURLRuleDialog {
    _controller->perform(_cmd);
}

- (void)showAddRuleDialog {
    _controller->perform(_cmd);
}

- (void)filterRuleDialogApplications:(id)sender {
    _controller->perform(_cmd, sender);
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView {
    return static_cast<NSInteger>(_controller->answer<std::size_t>(_cmd));
}

- (NSView *)tableView:(NSTableView *)tableView
    viewForTableColumn:(NSTableColumn *)tableColumn
                   row:(NSInteger)row {
    const auto view = _controller->answer<std::shared_ptr<fernhop::Object>>(_cmd, {.row = row});
    return fernhop::macos::viewShowing(std::dynamic_pointer_cast<fernhop::ui::View>(view), *_controller);
}

- (void)tableViewSelectionDidChange:(NSNotification *)notification {
    _controller->perform(_cmd);
}

- (void)updateRuleDialogHint {
    _controller->perform(_cmd);
}

- (void)enableAppRouting {
    _controller->perform(_cmd);
}

- (void)switchSystemDefaultBrowser:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)setBrowserForSelectedApp:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)clearRule:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)setBrowserForURLRule:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)editURLRule:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)clearURLRule:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)updateDefaultBrowserFromWindow:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)toggleRestoreDefaultBrowserOnQuit:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)showFeedbackDialog {
    _controller->perform(_cmd);
}

- (void)openContactFromButton:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)editRuleFromWindow:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)editURLRuleFromWindow:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)clearURLRuleFromWindow:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)clearRuleFromWindow:(id)sender {
    _controller->perform(_cmd, sender);
}

- (void)refreshApplicationList {
    _controller->perform(_cmd);
}

- (void)quit {
    _controller->perform(_cmd);
}

- (void)handleGetURLEvent:(NSAppleEventDescriptor *)event
           withReplyEvent:(NSAppleEventDescriptor *)replyEvent {
    const auto link = fernhop::macos::fromAppleEvent(event);
    _controller->perform(_cmd, {.event = &link});
}

@end
