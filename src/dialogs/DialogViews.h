#pragma once

#include "platform/ui/Images.h"
#include "platform/ui/StackView.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop {

/// A dialog's header: a symbol in a tinted badge beside a title and a subtitle of at most two lines. Without
/// the symbol the badge is empty.
[[nodiscard]] std::shared_ptr<ui::StackView> sectionHeader(const std::string &title,
                                                           const std::string &subtitle,
                                                           const std::string &symbolName,
                                                           const ui::Images &images);

/// A view of this size that holds `rows` under each other, `spacing` points apart. They hang from its top and
/// are no wider than it is; `endAtBottom` says how their lower end stands to its own.
[[nodiscard]] std::shared_ptr<ui::View> stackedRows(std::vector<std::shared_ptr<ui::View>> rows,
                                                    double spacing, ui::Size size,
                                                    ui::LayoutRelation endAtBottom);

/// A tinted box around `wrapped`, which it takes as its only subview.
[[nodiscard]] std::shared_ptr<ui::View> noteView(const std::shared_ptr<ui::View> &wrapped);

} // namespace fernhop
