#include "platform/linux/dialogs-qt/ViewLayout.h"

#include "platform/ui/StackView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace fernhop::freedesktop {
namespace {

using namespace ui;
using enum LayoutAttribute;

/// Views with contents of known sizes; a long one becomes higher where it is narrow.
class ViewLayoutTest : public testing::Test {
  protected:
    std::map<const View *, Size> contents;

    std::shared_ptr<View> content(double wide, double high) {
        auto view = std::make_shared<View>();
        contents[view.get()] = {wide, high};
        return view;
    }

    static std::shared_ptr<View> container(std::vector<std::shared_ptr<View>> children) {
        auto view = std::make_shared<View>();
        view->subviews = std::move(children);
        return view;
    }

    Frames solve(const View &root, Size size) const {
        return layOut(root, size,
                      {[this](const View &view) { return widthOf(view); },
                       [this](const View &view, double width) { return heightOf(view, width); }});
    }

  private:
    std::optional<double> widthOf(const View &view) const {
        const auto found = contents.find(&view);
        return found == contents.end() ? std::nullopt : std::optional(found->second.width);
    }

    std::optional<ContentHeight> heightOf(const View &view, double width) const {
        const auto found = contents.find(&view);
        if (found == contents.end())
            return std::nullopt;
        const double line = found->second.height;
        return ContentHeight{std::max(std::ceil(found->second.width / width), 1.0) * line, line};
    }
};

TEST_F(ViewLayoutTest, HorizontalStackPlacesItsViewsInARow) {
    const auto first = content(30, 30), second = content(40, 20);
    const auto stack = std::make_shared<StackView>(Orientation::horizontal, StackAlignment::centerY, 10,
                                                   std::vector{first, second});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading), aligned(*stack, *root, top)};
    const Frames frames = solve(*root, {200, 100});
    EXPECT_EQ(frames.at(first.get()), (Frame{0, 0, 30, 30}));
    EXPECT_EQ(frames.at(second.get()), (Frame{40, 5, 40, 20}));
    EXPECT_EQ(frames.at(stack.get()), (Frame{0, 0, 80, 30}));
}

TEST_F(ViewLayoutTest, ViewThatHugsLeastFillsTheRow) {
    const auto first = content(30, 10), spacer = std::make_shared<View>();
    spacer->horizontalContentHugging = lowPriority;
    const auto stack = std::make_shared<StackView>(Orientation::horizontal, StackAlignment::centerY, 10,
                                                   std::vector{first, spacer});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading, 6), aligned(*stack, *root, trailing, -6),
                         aligned(*stack, *root, centerY)};
    const Frames frames = solve(*root, {112, 40});
    EXPECT_EQ(frames.at(stack.get()), (Frame{6, 15, 100, 10}));
    EXPECT_EQ(frames.at(first.get()).width, 30);
    EXPECT_EQ(frames.at(spacer.get()).x, 46);
    EXPECT_EQ(frames.at(spacer.get()).width, 60);
}

TEST_F(ViewLayoutTest, VerticalStackHangsFromItsTop) {
    const auto first = content(50, 20), second = content(80, 30);
    const auto stack = std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 10,
                                                   std::vector{first, second});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading), aligned(*stack, *root, trailing),
                         aligned(*stack, *root, top), atMost(*stack, *root, bottom)};
    const Frames frames = solve(*root, {300, 200});
    EXPECT_EQ(frames.at(first.get()), (Frame{0, 0, 50, 20}));
    EXPECT_EQ(frames.at(second.get()), (Frame{0, 30, 80, 30}));
    EXPECT_EQ(frames.at(stack.get()), (Frame{0, 0, 300, 60}));
}

TEST_F(ViewLayoutTest, LabelThatGivesWayWrapsWithinItsStack) {
    const auto label = content(500, 15);
    label->horizontalCompressionResistance = lowPriority;
    const auto next = content(20, 20);
    const auto stack = std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 10,
                                                   std::vector{label, next});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading), aligned(*stack, *root, trailing),
                         aligned(*stack, *root, top)};
    const Frames frames = solve(*root, {300, 200});
    EXPECT_EQ(frames.at(label.get()), (Frame{0, 0, 300, 30}));
    EXPECT_EQ(frames.at(next.get()).y, 40);
}

TEST_F(ViewLayoutTest, ContentThatResistsIsKeptToItsLeastWidth) {
    const auto button = content(100, 30);
    button->horizontalContentHugging = lowPriority;
    button->constraints = {atLeast(*button, width, 320)};
    const auto row = std::make_shared<StackView>(Orientation::horizontal, StackAlignment::centerY, 0,
                                                 std::vector<std::shared_ptr<View>>{button});
    const auto root = container({row});
    root->constraints = {aligned(*row, *root, leading), aligned(*row, *root, top)};
    EXPECT_EQ(solve(*root, {440, 250}).at(button.get()), (Frame{0, 0, 320, 30}));
    contents[button.get()].width = 400;
    EXPECT_EQ(solve(*root, {440, 250}).at(button.get()), (Frame{0, 0, 400, 30}));
}

TEST_F(ViewLayoutTest, BoxFollowsItsContentWithInsets) {
    const auto label = content(100, 15);
    const auto box = container({label});
    box->constraints = {aligned(*label, *box, leading, 12), aligned(*label, *box, trailing, -12),
                        aligned(*label, *box, top, 10), aligned(*label, *box, bottom, -10)};
    const auto root = container({box});
    root->constraints = {aligned(*box, *root, leading), aligned(*box, *root, trailing),
                         aligned(*box, *root, top, 7)};
    const Frames frames = solve(*root, {500, 468});
    EXPECT_EQ(frames.at(box.get()), (Frame{0, 7, 500, 35}));
    EXPECT_EQ(frames.at(label.get()), (Frame{12, 17, 476, 15}));
}

TEST_F(ViewLayoutTest, WhereThereIsNoRoomTextsLoseLinesAndControlsNothing) {
    const auto name = content(1000, 16), popup = content(100, 28), note = content(100, 16);
    name->horizontalCompressionResistance = lowPriority;
    note->horizontalCompressionResistance = lowPriority;
    const auto stack = std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 12,
                                                   std::vector{name, popup, note});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading), aligned(*stack, *root, trailing),
                         aligned(*stack, *root, top), atMost(*stack, *root, bottom)};
    const Frames frames = solve(*root, {100, 92});
    EXPECT_EQ(frames.at(name.get()), (Frame{0, 0, 100, 24}));
    EXPECT_EQ(frames.at(popup.get()), (Frame{0, 36, 100, 28}));
    EXPECT_EQ(frames.at(note.get()), (Frame{0, 76, 100, 16}));
}

TEST_F(ViewLayoutTest, WhereThereIsNoRoomNothingBecomesNegative) {
    const auto label = content(1000, 10), spacer = std::make_shared<View>();
    label->horizontalCompressionResistance = lowPriority;
    spacer->horizontalContentHugging = lowPriority;
    const auto stack = std::make_shared<StackView>(Orientation::horizontal, StackAlignment::centerY, 10,
                                                   std::vector<std::shared_ptr<View>>{label, spacer});
    const auto root = container({stack});
    root->constraints = {aligned(*stack, *root, leading), aligned(*stack, *root, trailing)};
    const Frames frames = solve(*root, {100, 40});
    EXPECT_EQ(frames.at(label.get()).width, 90);
    EXPECT_EQ(frames.at(spacer.get()).width, 0);
}

TEST_F(ViewLayoutTest, ConstraintsOfOtherTreesAreLeftAside) {
    const auto view = content(10, 10);
    const View stranger;
    const auto root = container({view});
    root->constraints = {fixed(stranger, width, 5), aligned(*view, stranger, leading),
                         aligned(*view, *root, leading), aligned(*view, *root, top)};
    EXPECT_EQ(solve(*root, {100, 100}).at(view.get()), (Frame{0, 0, 10, 10}));
}

} // namespace
} // namespace fernhop::freedesktop
