#include "app/DialogRequest.h"

#include "app/SenderText.h"

#include <algorithm>
#include <array>

namespace fernhop {

namespace {

enum class Carries { nothing, itemText, buttonIdentifier };

struct DialogAction {
    std::string_view selector;
    Carries sender; ///< how the sender names the rule or application
};

constexpr std::array<DialogAction, 6> dialogActions{{{"showAddRuleDialog", Carries::nothing},
                                                     {"showAddURLRuleDialog", Carries::nothing},
                                                     {"showFeedbackDialog", Carries::nothing},
                                                     {"editURLRule:", Carries::itemText},
                                                     {"editURLRuleFromWindow:", Carries::buttonIdentifier},
                                                     {"editRuleFromWindow:", Carries::buttonIdentifier}}};

const DialogAction *find(std::string_view selector) {
    const auto *const found = std::ranges::find(dialogActions, selector, &DialogAction::selector);
    return found == dialogActions.end() ? nullptr : found;
}

const std::string *subjectOf(const DialogAction &action, const Object *sender) {
    switch (action.sender) {
    case Carries::itemText:
        return representedTextOf(sender);
    case Carries::buttonIdentifier:
        return identifierOf(sender);
    case Carries::nothing:
        break;
    }
    return nullptr;
}

} // namespace

std::optional<DialogRequest> dialogRequest(std::string_view selector, const Object *sender) {
    const auto *action = find(selector);
    if (!action)
        return std::nullopt;
    const std::string *subject = subjectOf(*action, sender);
    return DialogRequest{std::string(selector), subject ? *subject : ""};
}

void openDialog(AppDelegate &controller, const DialogRequest &request) {
    const auto *action = find(request.selector);
    if (!action)
        return;
    ui::MenuItem item;
    item.representedObject = request.subject;
    ui::Button button;
    button.identifier = request.subject;
    const bool isButton = action->sender == Carries::buttonIdentifier;
    const Object *sender = isButton ? static_cast<const Object *>(&button) : &item;
    (void)controller.perform(request.selector, {.sender = sender});
}

} // namespace fernhop
