#pragma once

#include "catalog/AppIcons.h"
#include "platform/ui/View.h"
#include "rules/InstalledApplication.h"

#include <memory>

namespace fernhop {

/// A row of the list of applications: icon, name and identifier.
[[nodiscard]] std::shared_ptr<ui::View> makeAppRuleRow(const InstalledApplication &application,
                                                       AppIcons &icons);

} // namespace fernhop
