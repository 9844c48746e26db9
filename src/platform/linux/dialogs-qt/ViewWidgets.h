#pragma once

#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/ViewLayout.h"
#include "platform/ui/View.h"

#include <QLabel>
#include <QWidget>
#include <memory>
#include <unordered_map>

namespace fernhop::freedesktop {

/// The widgets of a view tree, in a widget of the root's fixed size. What the user does is written into the
/// views and their actions are fired; what the core changes shows. Destroyed before its views are.
class ViewWidgets : public QWidget {
  public:
    /// `context` outlives this widget.
    ViewWidgets(std::shared_ptr<ui::View> tree, const ViewContext &viewContext, QWidget *parent = nullptr);
    ~ViewWidgets() override;

    /// The widget that shows a view; null for one that shows nothing itself.
    [[nodiscard]] QWidget *widgetOf(const ui::View &view) const;

    /// Where a view stands in this widget.
    [[nodiscard]] Frame frameOf(const ui::View &view) const { return frames.at(&view); }

    /// Gives the keyboard to the first field or pop-up that takes it; false when none does.
    bool focusFirstInput();

  private:
    void build(ui::View &view);
    [[nodiscard]] QWidget *makeWidget(ui::View &view);
    void place();
    void follow(ui::View &view, std::function<void()> show);
    void nameControl(QWidget &widget, const ui::View &control);
    [[nodiscard]] ContentMeasures measures() const;
    [[nodiscard]] std::optional<double> contentWidth(const ui::View &view) const;
    [[nodiscard]] std::optional<ContentHeight> contentHeight(const ui::View &view, double width) const;

    [[nodiscard]] QWidget *makeLabel(ui::View &view);
    [[nodiscard]] QWidget *makeField(ui::View &view);
    [[nodiscard]] QWidget *makePopUp(ui::View &view);
    [[nodiscard]] QWidget *makeButton(ui::View &view);
    [[nodiscard]] QWidget *makeImage(ui::View &view);
    [[nodiscard]] QWidget *makeScroll(ui::View &view);

    std::shared_ptr<ui::View> root;
    const ViewContext &context;
    std::unordered_map<const ui::View *, QWidget *> widgets;
    std::vector<ui::View *> followed;
    std::vector<QWidget *> inputs; ///< fields and pop-ups, in their order
    QLabel *lastLabel = nullptr;   ///< what is read last before a control, and so names it
    Frames frames;
};

} // namespace fernhop::freedesktop
