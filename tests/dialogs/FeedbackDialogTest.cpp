#include "dialogs/FeedbackDialog.h"

#include "dialogs/DialogTest.h"
#include "platform/ui/ImageView.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

class FeedbackTest : public DialogTest {
  protected:
    FeedbackTest() { launch(); }

    /// Opens the dialog and passes its container to `work`.
    template <typename Work>
    void lookAt(Work work) {
        open("showFeedbackDialog", [&](const Alert &alert) {
            work(*alert.accessoryView);
            return confirm;
        });
    }

    static std::shared_ptr<Button> button(const View &container, std::size_t channel) {
        return subview<Button>(*subview<StackView>(*subview<StackView>(container, 0), channel + 1), 0);
    }

    std::string resource(const std::string &name) {
        return desktop.applications.resources + "/" + name + ".png";
    }
};

TEST_F(FeedbackTest, ChannelsAreTheFourInTheirOrder) {
    const auto &channels = contactChannels();
    const std::array<const char *, 4> titles{"Email", "X", "Discord", "小红书"},
        icons{"ContactEmail", "X", "discord", "redbook"},
        symbols{"envelope", "bubble.left", "person.2", "book.closed"};
    for (std::size_t index = 0; index < channels.size(); ++index) {
        EXPECT_EQ(channels[index].title, titles[index]);
        EXPECT_EQ(channels[index].iconResourceName, icons[index]);
        EXPECT_EQ(channels[index].fallbackSymbolName, symbols[index]);
        EXPECT_TRUE(Url::parse(channels[index].urlString)) << channels[index].urlString;
    }
    EXPECT_EQ(channels[0].urlString, "mailto:" + channels[0].detail + "?subject=Fernhop%20Feedback");
    EXPECT_TRUE(channels[1].detail.starts_with("@"));
    EXPECT_TRUE(channels[1].urlString.starts_with("https://"));
    EXPECT_EQ(channels[2].urlString, "https://" + channels[2].detail);
    EXPECT_EQ(channels[3].urlString, "https://" + channels[3].detail);
}

TEST_F(FeedbackTest, AlertHasItsTexts) {
    lookAt([](const View &) {});
    EXPECT_EQ(lastShown().messageText, "建议反馈");
    EXPECT_EQ(lastShown().informativeText, "欢迎通过以下渠道联系开发者。");
    EXPECT_EQ(lastShown().buttons, std::vector<std::string>{"关闭"});
    expectNothingWritten(0);
}

TEST_F(FeedbackTest, HeaderAndRowsBeginAtTheTop) {
    lookAt([](const View &container) {
        EXPECT_EQ(container.frameSize, (Size{440, 250}));
        EXPECT_EQ(container.subviews.size(), 1u);
        const auto stack = subview<StackView>(container, 0);
        expectStack(*stack, Orientation::vertical, StackAlignment::leading, 10, 5);
        EXPECT_FALSE(stack->translatesAutoresizingMask);
        EXPECT_EQ(container.constraints,
                  (std::vector{aligned(*stack, container, leading), aligned(*stack, container, trailing),
                               aligned(*stack, container, top), atMost(*stack, container, bottom)}));
        const auto header = subview<StackView>(*stack, 0);
        const auto text = subview<StackView>(*header, 1);
        EXPECT_EQ(subview<TextField>(*text, 0)->stringValue(), "建议反馈");
        EXPECT_EQ(subview<TextField>(*text, 1)->stringValue(),
                  "遇到问题或有功能建议，可以通过邮箱或社交媒体联系开发者。");
        EXPECT_EQ(subview<ImageView>(*subview<View>(*header, 0), 0)->image->source,
                  Image::Source(SystemSymbol{"paperplane"}));
    });
}

TEST_F(FeedbackTest, EachChannelIsALargeButton) {
    lookAt([](const View &container) {
        for (std::size_t index = 0; index < 4; ++index) {
            const ContactChannel &channel = contactChannels()[index];
            expectStack(*subview<StackView>(*subview<StackView>(container, 0), index + 1),
                        Orientation::horizontal, StackAlignment::centerY, 0, 1);
            const auto row = button(container, index);
            EXPECT_EQ(row->title, channel.title + "  " + channel.detail);
            EXPECT_EQ(row->action, "openContactFromButton:");
            EXPECT_EQ(row->identifier, channel.urlString);
            EXPECT_EQ(row->controlSize, ControlSize::large);
            EXPECT_EQ(row->imagePosition, ImagePosition::leading);
            EXPECT_EQ(row->alignment, TextAlignment::left);
            EXPECT_EQ(row->horizontalContentHugging, 250);
            EXPECT_EQ(row->constraints, (std::vector{atLeast(*row, width, 320)}));
        }
    });
}

TEST_F(FeedbackTest, IconIsTheResourceOrElseTheSymbol) {
    desktop.applications.addPath(resource("discord"));
    desktop.applications.addPath(resource("redbook"));
    desktop.images.unreadableFiles = {resource("redbook")};
    desktop.images.missingSymbols = {"bubble.left"};
    lookAt([this](const View &container) {
        ASSERT_TRUE(button(container, 0)->image);
        EXPECT_EQ(*button(container, 0)->image, Image(SystemSymbol{"envelope"}, 18, true));
        EXPECT_EQ(button(container, 1)->image, nullptr);
        ASSERT_TRUE(button(container, 2)->image);
        EXPECT_EQ(*button(container, 2)->image, Image(ImageFile{resource("discord")}, 18, false));
        EXPECT_EQ(button(container, 3)->image, nullptr); // unreadable: the symbol does not replace it
    });
}

TEST_F(FeedbackTest, PressingChannelsOpensThemAndLeavesTheDialogOpen) {
    lookAt([this](const View &container) {
        for (std::size_t index = 0; index < 4; ++index)
            fire("openContactFromButton:", *button(container, index));
        ASSERT_EQ(desktop.workspace.openedByDefault.size(), 4u);
        for (std::size_t index = 0; index < 4; ++index)
            EXPECT_EQ(desktop.workspace.openedByDefault[index].absoluteString(),
                      contactChannels()[index].urlString);
    });
    EXPECT_EQ(desktop.alerts.shown.size(), 1u);
    expectNothingWritten(0);
}

TEST_F(FeedbackTest, LinkWithoutAHandlerIsNotReported) {
    desktop.workspace.opensByDefault = false;
    Button sender;
    sender.identifier = contactChannels()[0].urlString;
    controller->perform("openContactFromButton:", {.sender = &sender});
    EXPECT_EQ(desktop.workspace.openedByDefault.size(), 1u);
    EXPECT_EQ(desktop.sound.beeps, 0);
    EXPECT_TRUE(desktop.log.lines.empty());
}

TEST_F(FeedbackTest, InvalidLinkBeeps) {
    Button sender;
    controller->perform("openContactFromButton:", {.sender = &sender});
    EXPECT_EQ(desktop.sound.beeps, 0);
    sender.identifier = "http://host:port/";
    controller->perform("openContactFromButton:", {.sender = &sender});
    EXPECT_EQ(desktop.sound.beeps, 1);
    EXPECT_TRUE(desktop.workspace.openedByDefault.empty());
}

} // namespace
} // namespace fernhop
