#pragma once

#include "platform/ui/Images.h"
#include "platform/ui/StackView.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop {

/// A dialog's header: a symbol in a tinted badge beside a title and a subtitle of at most two lines. If the
/// symbol does not exist, the badge is empty.
[[nodiscard]] std::shared_ptr<ui::StackView> sectionHeader(const std::string &title,
                                                           const std::string &subtitle,
                                                           const std::string &symbolName,
                                                           const ui::Images &images);

/// A view of this size with `rows` one below the other, `spacing` points apart. They begin at its top and
/// have its width; `endAtBottom` relates the bottom of the last row to the bottom of the view.
[[nodiscard]] std::shared_ptr<ui::View> stackedRows(std::vector<std::shared_ptr<ui::View>> rows,
                                                    double spacing, ui::Size size,
                                                    ui::LayoutRelation endAtBottom);

/// A tinted box whose only subview is `wrapped`.
[[nodiscard]] std::shared_ptr<ui::View> noteView(const std::shared_ptr<ui::View> &wrapped);

} // namespace fernhop
