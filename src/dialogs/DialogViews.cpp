#include "dialogs/DialogViews.h"

#include "platform/ui/ImageView.h"
#include "platform/ui/TextField.h"

#include <utility>

namespace fernhop {

using namespace ui;

namespace {

Layer tintedLayer(double alpha, double cornerRadius) {
    Layer layer;
    layer.backgroundColor = Color{ColorRole::controlAccent, alpha};
    layer.cornerRadius = cornerRadius;
    return layer;
}

std::shared_ptr<View> makeBadge(const std::string &symbolName, const Images &images) {
    constexpr double badgeSide = 30, symbolSide = 16;
    auto symbol = std::make_shared<ImageView>();
    symbol->image = images.imageWithSystemSymbolName(symbolName, 0);
    symbol->contentTintColor = Color{ColorRole::controlAccent, 1};
    symbol->translatesAutoresizingMask = false;

    auto badge = std::make_shared<View>();
    badge->layer = tintedLayer(0.12, 9);
    badge->translatesAutoresizingMask = false;
    badge->subviews = {symbol};
    badge->constraints = {fixed(*badge, LayoutAttribute::width, badgeSide),
                          fixed(*badge, LayoutAttribute::height, badgeSide),
                          aligned(*symbol, *badge, LayoutAttribute::centerX),
                          aligned(*symbol, *badge, LayoutAttribute::centerY),
                          fixed(*symbol, LayoutAttribute::width, symbolSide),
                          fixed(*symbol, LayoutAttribute::height, symbolSide)};
    return badge;
}

} // namespace

std::shared_ptr<StackView> sectionHeader(const std::string &title, const std::string &subtitle,
                                         const std::string &symbolName, const Images &images) {
    const auto titleLabel = makeWrappingLabel(title, {17, FontWeight::semibold}, ColorRole::label);
    const auto subtitleLabel =
        makeWrappingLabel(subtitle, {12, FontWeight::regular}, ColorRole::secondaryLabel, 2);
    const auto text =
        std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 3,
                                    std::vector<std::shared_ptr<View>>{titleLabel, subtitleLabel});
    return std::make_shared<StackView>(
        Orientation::horizontal, StackAlignment::centerY, 10,
        std::vector<std::shared_ptr<View>>{makeBadge(symbolName, images), text});
}

std::shared_ptr<View> stackedRows(std::vector<std::shared_ptr<View>> rows, double spacing, Size size,
                                  LayoutRelation endAtBottom) {
    const auto stack =
        std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, spacing, std::move(rows));
    stack->translatesAutoresizingMask = false;
    auto container = std::make_shared<View>();
    container->frameSize = size;
    container->subviews = {stack};
    auto end = aligned(*stack, *container, LayoutAttribute::bottom);
    end.relation = endAtBottom;
    container->constraints = {aligned(*stack, *container, LayoutAttribute::leading),
                              aligned(*stack, *container, LayoutAttribute::trailing),
                              aligned(*stack, *container, LayoutAttribute::top), end};
    return container;
}

std::shared_ptr<View> noteView(const std::shared_ptr<View> &wrapped) {
    constexpr double acrossInset = 12, downInset = 10;
    auto container = std::make_shared<View>();
    container->layer = tintedLayer(0.08, 10);
    container->translatesAutoresizingMask = false;
    wrapped->translatesAutoresizingMask = false;
    container->subviews = {wrapped};
    container->constraints = {aligned(*wrapped, *container, LayoutAttribute::leading, acrossInset),
                              aligned(*wrapped, *container, LayoutAttribute::trailing, -acrossInset),
                              aligned(*wrapped, *container, LayoutAttribute::top, downInset),
                              aligned(*wrapped, *container, LayoutAttribute::bottom, -downInset)};
    return container;
}

} // namespace fernhop
