#include "dialogs/FeedbackDialog.h"

#include "dialogs/DialogViews.h"
#include "platform/ui/Button.h"
#include "platform/ui/StackView.h"

#include <utility>
#include <vector>

namespace fernhop {

using namespace ui;

void FeedbackDialog::showFeedbackDialog() const {
    Alert alert;
    alert.messageText = "建议反馈";
    alert.informativeText = "欢迎通过以下渠道联系开发者。";
    alert.buttons = {"关闭"};
    alert.accessoryView = makeFeedbackView();
    static_cast<void>(sources.alerts.runModal(alert)); // it can only be closed
}

std::shared_ptr<View> FeedbackDialog::makeFeedbackView() const {
    std::vector<std::shared_ptr<View>> rows{
        sectionHeader("建议反馈", "遇到问题或有功能建议，可以通过邮箱或社交媒体联系开发者。", "paperplane",
                      sources.images)};
    for (const ContactChannel &channel : contactChannels())
        rows.push_back(makeRow(channel));
    return stackedRows(std::move(rows), 10, {440, 250}, LayoutRelation::lessThanOrEqual);
}

std::shared_ptr<View> FeedbackDialog::makeRow(const ContactChannel &channel) const {
    constexpr double iconSize = 18, smallestWidth = 320;
    auto button = std::make_shared<Button>();
    button->title = channel.title + "  " + channel.detail;
    button->action = "openContactFromButton:";
    button->controlSize = ControlSize::large;
    button->image = contactIcon(channel, iconSize);
    button->imagePosition = ImagePosition::leading;
    button->identifier = channel.urlString;
    button->alignment = TextAlignment::left;
    button->horizontalContentHugging = lowPriority;
    button->constraints = {atLeast(*button, LayoutAttribute::width, smallestWidth)};
    return std::make_shared<StackView>(Orientation::horizontal, StackAlignment::centerY, 0,
                                       std::vector<std::shared_ptr<View>>{button});
}

ImageReference FeedbackDialog::contactIcon(const ContactChannel &channel, double size) const {
    if (const auto resource = sources.bundles.urlForResource(channel.iconResourceName, "png"))
        return sources.images.imageWithContentsOfUrl(*resource, size);
    return sources.images.imageWithSystemSymbolName(channel.fallbackSymbolName, size);
}

void FeedbackDialog::openContactFromButton(const Object *sender) const {
    const auto *button = dynamic_cast<const Button *>(sender);
    if (button && !button->identifier.empty())
        openContact(button->identifier);
}

void FeedbackDialog::openContact(const std::string &urlString) const {
    if (const auto url = Url::parse(urlString))
        static_cast<void>(sources.workspace.openUrl(*url)); // a link that nothing opens is not reported
    else
        sources.sound.beep();
}

} // namespace fernhop
